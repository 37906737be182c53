// SPDX-License-Identifier: Apache-2.0
// The three keyword sets: description-language keywords, method-language keywords and
// reserved words. Matching is case-sensitive ("IF" and "if" are different words).
#pragma once

#include <string_view>

#include "frontend/token_kind.hpp"

namespace edd {

// The kind of a word: the first set that holds it decides, else IDENTIFIER.
TokenKind classify_word(std::string_view word);

// The word as the keyword tables spell it, a text that lasts as long as the program; empty
// when the word is in no set.
std::string_view keyword_spelling(std::string_view word);

}  // namespace edd
