#include "model/value_list.hpp"

#include <stdexcept>

namespace edd {

namespace {
constexpr const char* invalid_index = "ValueList: invalid index";
}

ValueList::ValueList(const ValueList& other) : ValueOf(other), name_(other.name_) {
    items_.reserve(other.items_.size());
    for (const ValuePtr& item : other.items_) items_.push_back(clone_of(item));
}

bool ValueList::equals(const Value& other) const {
    if (other.kind() != ValueKind::VALUE_LIST) return false;
    const auto* list = dynamic_cast<const ValueList*>(&other);
    if (list == nullptr || list->items_.size() != items_.size()) return false;
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (items_[i].get() != list->items_[i].get()) return false;
    return true;
}

std::string ValueList::to_string() const {
    std::string text;
    for (std::size_t i = 0; i < items_.size(); ++i) {
        if (i != 0) text += ", ";
        text += items_[i]->to_string();
    }
    return text;
}

void ValueList::print_to(std::ostream& out) const { out << to_string(); }

void ValueList::collect_dictionary_keys(KeySet& keys) const {
    for (const ValuePtr& item : items_) item->collect_dictionary_keys(keys);
}

const ValuePtr& ValueList::get(std::size_t index) const {
    if (index >= items_.size()) throw std::invalid_argument(invalid_index);
    return items_[index];
}

void ValueList::set(std::size_t index, ValuePtr value) {
    if (index >= items_.size()) throw std::invalid_argument(invalid_index);
    items_[index] = take_or_clone(std::move(value));
}

}  // namespace edd
