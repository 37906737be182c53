#include "model/value_list.hpp"

#include <stdexcept>

namespace edd {

namespace {
constexpr const char* invalid_index = "ValueList: invalid index";
}

ValuePtr ValueList::clone(Arena& arena) const {
    auto* copy = arena.make<ValueList>(name_);
    copy->items_.reserve(items_.size());
    for (const ValuePtr& item : items_) copy->add(clone_of(item, arena));
    return copy;
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

void ValueList::collect_dictionary_keys(KeySet& keys) const {
    for (const ValuePtr& item : items_) collect_keys(item, keys);
}

const ValuePtr& ValueList::get(std::size_t index) const {
    if (index >= items_.size()) throw std::invalid_argument(invalid_index);
    return items_[index];
}

void ValueList::set(std::size_t index, ValuePtr value) {
    if (index >= items_.size()) throw std::invalid_argument(invalid_index);
    take_keys_of(value);
    items_[index] = value;
}

}  // namespace edd
