#include "model/attribute.hpp"

#include <algorithm>
#include <stdexcept>

#include "model/simple_value.hpp"

namespace edd {

namespace {
constexpr const char* not_in_list = "AttributeList: Type not in list.";
}

Attribute::Attribute() : value_(make_value<NullValue>()) {}

Attribute::Attribute(std::string name, ValuePtr value)
    : name_(std::move(name)), value_(take_or_clone(std::move(value))) {}

Attribute::Attribute(const Attribute& other) : name_(other.name_), value_(clone_of(other.value_)) {}

Attribute& Attribute::operator=(const Attribute& other) {
    if (this == &other) return *this;
    name_ = other.name_;
    value_ = clone_of(other.value_);
    return *this;
}

const std::string& Attribute::extra_text() const {
    static const std::string none;
    return none;
}

void AttributeList::set(const Attribute& attribute) {
    auto it = std::ranges::find(entries_, attribute.name(), &Attribute::name);
    if (it != entries_.end()) *it = attribute;
    else entries_.push_back(attribute);
}

void AttributeList::set(Attribute&& attribute) {
    auto it = std::ranges::find(entries_, attribute.name(), &Attribute::name);
    if (it != entries_.end()) *it = std::move(attribute);
    else entries_.push_back(std::move(attribute));
}

const Attribute& AttributeList::get(std::string_view name) const {
    auto it = std::ranges::find(entries_, name, &Attribute::name);
    if (it == entries_.end()) throw std::invalid_argument(not_in_list);
    return *it;
}

void AttributeList::remove(std::string_view name) {
    auto it = std::ranges::find(entries_, name, &Attribute::name);
    if (it == entries_.end()) throw std::invalid_argument(not_in_list);
    entries_.erase(it);
}

bool AttributeList::contains(std::string_view name) const {
    return std::ranges::find(entries_, name, &Attribute::name) != entries_.end();
}

}  // namespace edd
