// Element names the writer takes from a table rather than from the model: method parameters
// by type code. Item and attribute names are the model's keywords.
#pragma once

#include <cstdint>
#include <string_view>


namespace edd {

// "char" ... "DD_ITEM" for codes 0 to 9 (C spellings with '_' for blanks); empty otherwise.
std::string_view parameter_element_name(std::uint32_t type);

}  // namespace edd
