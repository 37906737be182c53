// SPDX-License-Identifier: Apache-2.0
// The kinds of model values, by their fixed codes.
#pragma once

#include <cstdint>

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

}  // namespace edd
