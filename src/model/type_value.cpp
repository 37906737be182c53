#include "model/type_value.hpp"

#include <stdexcept>
#include <typeinfo>

namespace edd {

bool TypeValue::equals(const Value& other) const {
    if (other.kind() != ValueKind::TYPE || typeid(other) != typeid(*this)) return false;
    const auto& type = static_cast<const TypeValue&>(other);
    if (name_ != type.name_ || size_ != type.size_ || attributes_.size() != type.attributes_.size()) return false;
    for (auto a = attributes_.begin(), b = type.attributes_.begin(); a != attributes_.end(); ++a, ++b)
        if (!(a->second == b->second)) return false;
    return true;
}

std::string TypeValue::to_string() const {
    std::string text = name_ + '(' + std::to_string(size_) + ")\n{\n";
    for (const auto& [name, attribute] : attributes_)
        text += attribute.name() + ' ' + attribute.value()->to_string() + "\n        ";
    for (const ValuePtr& value : values_) text += value->to_string() + "\n        ";
    text += "\n}";
    return text;
}

void TypeValue::collect_dictionary_keys(KeySet& keys) const {
    for (const auto& [name, attribute] : attributes_) attribute.value()->collect_dictionary_keys(keys);
    for (const ValuePtr& value : values_) value->collect_dictionary_keys(keys);
}

void TypeValue::set_attribute(const Attribute& attribute) {
    auto [it, inserted] = attributes_.try_emplace(attribute.name(), attribute);
    if (!inserted) it->second = attribute;
}

void TypeValue::set_attribute(Attribute&& attribute) {
    auto it = attributes_.find(attribute.name());
    if (it != attributes_.end()) {
        it->second = std::move(attribute);
        return;
    }
    std::string name = attribute.name();
    attributes_.emplace(std::move(name), std::move(attribute));
}

const ValuePtr& TypeValue::get_attribute(std::string_view name) const {
    auto it = attributes_.find(name);
    if (it == attributes_.end()) throw std::logic_error("edd::TypeValue::get_attribute");
    return it->second.value();
}

std::vector<Attribute> TypeValue::attributes() const {
    std::vector<Attribute> result;
    result.reserve(attributes_.size());
    for (const auto& [name, attribute] : attributes_) result.push_back(attribute);
    return result;
}

}  // namespace edd
