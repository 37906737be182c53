#include "model/parameter_value.hpp"

#include <iterator>
#include <string_view>

namespace edd {

namespace {
constexpr std::string_view type_names[] = {
    "char", "unsigned char", "int", "unsigned int", "long", "unsigned long", "float", "double", "DD_STRING", "DD_ITEM",
};
}  // namespace

std::string parameter_type_name(std::uint32_t type) {
    return type < std::size(type_names) ? std::string(type_names[type]) : std::to_string(type);
}

std::string ParameterValue::to_string() const {
    return parameter_type_name(type_) + (mode_ == 1 ? "& " : " ") + std::string(name_);
}

}  // namespace edd
