// Element names the writer takes from tables rather than from the model: scalar values by
// kind and method parameters by type code. Item and attribute names are the model's keywords.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/value_kind.hpp"

namespace edd {

// "string", "integer", "float", "identifier", "data_item_mask"; any other kind throws
// std::logic_error.
std::string_view type_to_xname(ValueKind kind);
// "char" ... "DD_ITEM" for codes 0 to 9 (C spellings with '_' for blanks); empty otherwise.
std::string_view parameter_element_name(std::uint32_t type);

}  // namespace edd
