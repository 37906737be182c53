// SPDX-License-Identifier: Apache-2.0
#include "model/composed_value.hpp"

#include <algorithm>
#include <stdexcept>

#include "diagnostics/messages.hpp"

namespace edd {


ComposedValue::ComposedValue(Arena& arena, std::string_view name, std::span<const Attribute> attributes)
    : Value(ValueKind::COMPOSED),
      count_(static_cast<std::uint32_t>(attributes.size())),
      name_(name),
      attributes_(attributes.empty() ? nullptr : arena.copy_array(attributes, attributes.size())) {
    for (const Attribute& attribute : attributes) take_keys_of(attribute.value);
}

void ComposedValue::set(Arena& arena, std::string_view name, ValuePtr value) {
    take_keys_of(value);
    if (const Attribute* found = find(name)) {
        attributes_[found - attributes_].value = value;
        return;
    }
    Attribute* grown = arena.copy_array(attributes(), count_ + 1);
    ::new (grown + count_) Attribute{arena.word(name), value};
    attributes_ = grown;
    ++count_;
}

const Attribute* ComposedValue::find(std::string_view name) const {
    const auto found = std::ranges::find(attributes(), name, &Attribute::name);
    return found == attributes().end() ? nullptr : &*found;
}

const ValuePtr& ComposedValue::value(std::string_view name) const {
    const Attribute* found = find(name);
    if (found == nullptr) throw std::invalid_argument(std::string(messages::not_in_attribute_list));
    return found->value;
}

ValuePtr ComposedValue::clone(Arena& arena) const {
    auto* copy = arena.make<ComposedValue>(name_, attributes());
    for (std::uint32_t i = 0; i < count_; ++i) copy->attributes_[i].value = clone_of(attributes_[i].value, arena);
    return copy;
}

std::string ComposedValue::to_string() const {
    std::string text = "{";
    bool first = true;
    for (const Attribute& attribute : attributes()) {
        if (!first) text += ", ";
        first = false;
        text += attribute.value->to_string();
    }
    text += '}';
    return text;
}

void ComposedValue::collect_dictionary_keys(KeySet& keys) const {
    for (const Attribute& attribute : attributes()) collect_keys(attribute.value, keys);
}

}  // namespace edd
