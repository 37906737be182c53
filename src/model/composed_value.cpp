// SPDX-License-Identifier: Apache-2.0
#include "model/composed_value.hpp"

namespace edd {

ValuePtr ComposedValue::clone(Arena& arena) const {
    auto* copy = arena.make<ComposedValue>(name_, attributes_.all().size());
    for (const Attribute& attribute : attributes_.all()) copy->set(attribute.name, clone_of(attribute.value, arena));
    return copy;
}

std::string ComposedValue::to_string() const {
    std::string text = "{";
    bool first = true;
    for (const Attribute& attribute : attributes_.all()) {
        if (!first) text += ", ";
        first = false;
        text += attribute.value->to_string();
    }
    text += '}';
    return text;
}

void ComposedValue::collect_dictionary_keys(KeySet& keys) const {
    for (const Attribute& attribute : attributes_.all()) collect_keys(attribute.value, keys);
}

}  // namespace edd
