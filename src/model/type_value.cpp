#include "model/type_value.hpp"

#include <algorithm>
#include <stdexcept>
#include <typeinfo>

namespace edd {

ValuePtr TypeValue::clone(Arena& arena) const {
    auto* copy = arena.make<TypeValue>(name_, size_);
    for (const Attribute& attribute : attributes_) copy->set_attribute(attribute.name, clone_of(attribute.value, arena));
    for (const ValuePtr& value : values_) copy->add_value(value);
    return copy;
}

bool TypeValue::equals(const Value& other) const {
    if (other.kind() != ValueKind::TYPE || typeid(other) != typeid(*this)) return false;
    const auto& type = static_cast<const TypeValue&>(other);
    return name_ == type.name_ && size_ == type.size_ && std::ranges::equal(attributes_, type.attributes_);
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

void TypeValue::set_attribute(std::string_view name, ValuePtr value) {
    take_keys_of(value);
    auto it = std::ranges::lower_bound(attributes_, name, {}, &Attribute::name);
    if (it != attributes_.end() && it->name == name) {
        it->value = value;
        return;
    }
    attributes_.insert(it, {copy_word(*attributes_.get_allocator().resource(), name), value});
}

const ValuePtr& TypeValue::get_attribute(std::string_view name) const {
    auto it = std::ranges::lower_bound(attributes_, name, {}, &Attribute::name);
    if (it == attributes_.end() || it->name != name) throw std::logic_error("edd::TypeValue::get_attribute");
    return it->value;
}

}  // namespace edd
