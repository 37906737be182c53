// SPDX-License-Identifier: Apache-2.0
#include "model/type_value.hpp"

#include <algorithm>

namespace edd {

ValuePtr TypeValue::clone(Arena& arena) const {
    auto* copy = arena.make<TypeValue>(name_, size_);
    for (const Attribute& attribute : attributes_) copy->set_attribute(attribute.name, clone_of(attribute.value, arena));
    for (const ValuePtr& value : values_) copy->add_value(value);
    return copy;
}

std::string TypeValue::to_string() const {
    std::string text = std::string(name_) + '(' + std::to_string(size_) + ")\n{\n";
    for (const Attribute& attribute : attributes_)
        text += std::string(attribute.name) + ' ' + attribute.value->to_string() + "\n        ";
    for (const ValuePtr& value : values_) text += value->to_string() + "\n        ";
    text += "\n}";
    return text;
}

void TypeValue::collect_dictionary_keys(KeySet& keys) const {
    for (const Attribute& attribute : attributes_) collect_keys(attribute.value, keys);
    for (const ValuePtr& value : values_) collect_keys(value, keys);
}

void TypeValue::put_attribute(std::string_view name, ValuePtr value, bool copy) {
    take_keys_of(value);
    auto it = std::ranges::lower_bound(attributes_, name, {}, &Attribute::name);
    if (it != attributes_.end() && it->name == name) {
        it->value = value;
        return;
    }
    attributes_.insert(it, {copy ? copy_word(*attributes_.get_allocator().resource(), name) : name, value});
}

}  // namespace edd
