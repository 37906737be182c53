// SPDX-License-Identifier: Apache-2.0
// The punctuator table: every operator spelling the lexer recognises by longest match, and
// the kind each stands for. "##" is not in it; the lexer recognises that one itself.
#pragma once

#include <optional>
#include <string_view>

#include "frontend/token_kind.hpp"

namespace edd {

struct Punctuator {
    std::string_view spelling;
    TokenKind kind;
};

// The longest punctuator that `text` starts with, if any.
std::optional<Punctuator> match_punctuator(std::string_view text);

}  // namespace edd
