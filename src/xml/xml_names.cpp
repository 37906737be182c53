// The element names of method parameters.
#include "xml/xml_names.hpp"

#include <iterator>

namespace edd {

namespace {

constexpr std::string_view parameter_names[] = {
    "char", "unsigned_char", "int", "unsigned_int", "long", "unsigned_long", "float", "double", "DD_STRING", "DD_ITEM",
};

}  // namespace

std::string_view parameter_element_name(std::uint32_t type) {
    return type < std::size(parameter_names) ? parameter_names[type] : std::string_view();
}

}  // namespace edd
