#include "model/attribute.hpp"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "model/simple_value.hpp"

namespace edd {

namespace {

constexpr const char* not_in_list = "AttributeList: Type not in list.";

// The names the grammar gives attributes, in byte order. A description has hundreds of
// thousands of attributes with these few names.
constexpr std::string_view common_names[] = {
    "DEFAULT_VALUE", "DISPLAY_FORMAT", "EDIT_FORMAT", "INITIAL_VALUE", "MAX_VALUE", "MIN_VALUE", "NULL",
    "NUMBER_OF_POINTS", "REPLY", "REQUEST", "RESPONSE_CODES", "X_INCREMENT", "X_INITIAL", "X_VALUES", "Y_VALUES",
    "action", "data_item_reference", "description", "element_index", "element_reference", "function", "help",
    "item_reference", "mask", "member_identifier", "member_reference", "number", "qualifiers", "status_class", "type",
    "value",
};
static_assert(std::ranges::is_sorted(common_names));

const std::string* common_name(std::string_view name) {
    static const auto strings = [] {
        std::array<std::string, std::size(common_names)> held;
        std::ranges::copy(common_names, held.begin());
        return held;
    }();
    auto it = std::ranges::lower_bound(common_names, name);
    if (it == std::end(common_names) || *it != name) return nullptr;
    return &strings[static_cast<std::size_t>(it - std::begin(common_names))];
}

}  // namespace

void Attribute::set_name(std::string name) {
    if (const std::string* common = common_name(name)) {
        name_ = common;
        own_name_.reset();
        return;
    }
    own_name_ = std::make_unique<std::string>(std::move(name));
    name_ = own_name_.get();
}

Attribute::Attribute() : name_(common_name("NULL")), value_(make_value<NullValue>()) {}

Attribute::Attribute(std::string name, ValuePtr value) : value_(take_or_clone(std::move(value))) {
    set_name(std::move(name));
}

Attribute::Attribute(std::string name, const Value& value) : value_(value.clone()) { set_name(std::move(name)); }

Attribute::Attribute(const Attribute& other)
    : name_(other.name_),
      own_name_(other.own_name_ ? std::make_unique<std::string>(*other.own_name_) : nullptr),
      value_(clone_of(other.value_)) {
    if (own_name_) name_ = own_name_.get();
}

Attribute& Attribute::operator=(const Attribute& other) {
    if (this == &other) return *this;
    set_name(other.name());
    value_ = clone_of(other.value_);
    return *this;
}

// A moved-from attribute is named "NULL" rather than pointing at a name it gave away.
Attribute::Attribute(Attribute&& other) noexcept
    : name_(std::exchange(other.name_, common_name("NULL"))),
      own_name_(std::move(other.own_name_)),
      value_(std::move(other.value_)) {}

Attribute& Attribute::operator=(Attribute&& other) noexcept {
    if (this == &other) return *this;
    name_ = std::exchange(other.name_, common_name("NULL"));
    own_name_ = std::move(other.own_name_);
    value_ = std::move(other.value_);
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
