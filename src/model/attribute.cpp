// SPDX-License-Identifier: Apache-2.0
#include "model/attribute.hpp"

#include <algorithm>
#include <stdexcept>

#include "diagnostics/messages.hpp"

namespace edd {

void AttributeList::set_name(std::string_view name, ValuePtr value, bool lasting) {
    auto it = std::ranges::find(entries_, name, &Attribute::name);
    if (it != entries_.end()) {
        it->value = value;
        return;
    }
    entries_.push_back({lasting ? name : copy_word(*entries_.get_allocator().resource(), name), value});
}

const Attribute& AttributeList::get(std::string_view name) const {
    auto it = std::ranges::find(entries_, name, &Attribute::name);
    if (it == entries_.end()) throw std::invalid_argument(std::string(messages::not_in_attribute_list));
    return *it;
}

bool AttributeList::contains(std::string_view name) const {
    return std::ranges::find(entries_, name, &Attribute::name) != entries_.end();
}

}  // namespace edd
