// SPDX-License-Identifier: Apache-2.0
// A named value: a field of a structured entry or a type.
#pragma once

#include <string_view>

#include "model/value.hpp"

namespace edd {

struct Attribute {
    std::string_view name;  // in the arena, or a text of the program's own
    ValuePtr value;
};

}  // namespace edd
