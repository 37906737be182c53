// SPDX-License-Identifier: Apache-2.0
#include "model/value_list.hpp"

#include <algorithm>

namespace edd {


ValueList::ValueList(Arena& arena, std::string_view name, std::span<const ValuePtr> items) : ValueList(arena, name) {
    if (items.empty()) return;
    items_ = arena.copy_array(items, items.size());
    count_ = room_ = static_cast<std::uint32_t>(items.size());
    for (const ValuePtr& item : items) take_keys_of(item);
}

void ValueList::add(Arena& arena, ValuePtr value) {
    take_keys_of(value);
    if (count_ == room_) {
        room_ = std::max<std::uint32_t>(4, 2 * room_);
        items_ = arena.copy_array(items(), room_);
    }
    ::new (items_ + count_) ValuePtr(value);
    ++count_;
}

ValuePtr ValueList::clone(Arena& arena) const {
    auto* copy = arena.make<ValueList>(name(), items());
    for (std::uint32_t i = 0; i < count_; ++i) copy->items_[i] = clone_of(items_[i], arena);
    return copy;
}

std::string ValueList::to_string() const {
    std::string text;
    for (std::uint32_t i = 0; i < count_; ++i) {
        if (i != 0) text += ", ";
        text += items_[i]->to_string();
    }
    return text;
}

void ValueList::collect_dictionary_keys(KeySet& keys) const {
    for (const ValuePtr& item : items()) collect_keys(item, keys);
}

}  // namespace edd
