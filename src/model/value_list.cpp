// SPDX-License-Identifier: Apache-2.0
#include "model/value_list.hpp"

namespace edd {

ValuePtr ValueList::clone(Arena& arena) const {
    auto* copy = arena.make<ValueList>(name_);
    copy->items_.reserve(items_.size());
    for (const ValuePtr& item : items_) copy->add(clone_of(item, arena));
    return copy;
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

}  // namespace edd
