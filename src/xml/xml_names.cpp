// The name tables behind type_to_xname and the parameter elements.
#include "xml/xml_names.hpp"

#include <iterator>
#include <stdexcept>
#include <string>

#include "diagnostics/messages.hpp"

namespace edd {

namespace {

// Indexed by kind code; an empty entry is a kind that is never written as a scalar.
constexpr std::string_view scalar_names[] = {
    "", "string", "", "integer", "float", "", "", "", "identifier", "", "", "", "", "", "", "", "", "data_item_mask",
};
static_assert(std::size(scalar_names) == static_cast<std::size_t>(ValueKind::DATA_MASK) + 1);

constexpr std::string_view parameter_names[] = {
    "char", "unsigned_char", "int", "unsigned_int", "long", "unsigned_long", "float", "double", "DD_STRING", "DD_ITEM",
};

}  // namespace

std::string_view type_to_xname(ValueKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    if (index >= std::size(scalar_names) || scalar_names[index].empty())
        throw std::logic_error(std::string(messages::unknown_xml_type));
    return scalar_names[index];
}

std::string_view parameter_element_name(std::uint32_t type) {
    return type < std::size(parameter_names) ? parameter_names[type] : std::string_view();
}

}  // namespace edd
