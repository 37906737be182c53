// The kinds of model values. Codes 0 to 16 have printed names; 17 to 19 print as numbers
// because the name table stops at 16.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace edd {

enum class ValueKind : std::uint32_t {
    UNDEFINED = 0,
    STRING = 1,
    DICTIONARY_REFERENCE = 2,
    INTEGER = 3,
    FLOAT = 4,
    KEYWORD = 5,
    TYPE = 6,
    VALUE_LIST = 7,
    IDENTIFIER = 8,
    CODE = 9,
    IF_CONDITIONAL = 10,
    SELECT_CONDITIONAL = 11,
    OPERATOR = 12,
    EXPRESSION = 13,
    COMPOSED = 14,
    REFERENCE = 15,
    METHOD_CALL = 16,
    DATA_MASK = 17,  // the integer mask of a data item, written as <integer>
    PARAMETER = 18,
    CASE = 19,
};

// The printed name for codes 0 to 16, the decimal number for any other code.
std::string to_string(ValueKind kind);
std::ostream& operator<<(std::ostream& out, ValueKind kind);

}  // namespace edd
