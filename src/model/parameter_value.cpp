#include "model/parameter_value.hpp"

#include <iterator>
#include <string_view>

namespace edd {

namespace {
constexpr std::string_view type_names[] = {
    "char", "unsigned char", "int", "unsigned int", "long", "unsigned long", "float", "double", "DD_STRING", "DD_ITEM",
};
constexpr std::string_view mode_names[] = {"CALL_BY_VALUE", "CALL_BY_REFERENCE"};
}  // namespace

std::string parameter_type_name(std::uint32_t type) {
    return type < std::size(type_names) ? std::string(type_names[type]) : std::to_string(type);
}

std::string parameter_mode_name(std::uint32_t mode) {
    return mode < std::size(mode_names) ? std::string(mode_names[mode]) : std::to_string(mode);
}

bool ParameterValue::equals(const Value& other) const {
    if (other.kind() != ValueKind::PARAMETER) return false;
    const auto* parameter = dynamic_cast<const ParameterValue*>(&other);
    return parameter != nullptr && type_ == parameter->type_ && mode_ == parameter->mode_ && name_ == parameter->name_;
}

std::string ParameterValue::to_string() const {
    return parameter_type_name(type_) + (mode_ == 1 ? "& " : " ") + std::string(name_);
}

}  // namespace edd
