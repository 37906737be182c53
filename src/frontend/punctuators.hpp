// SPDX-License-Identifier: Apache-2.0
// The punctuator table: every operator spelling the lexer recognises by longest match, and
// the kind each stands for. "##" is not in it; the lexer recognises that one itself.
#pragma once

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "frontend/token_kind.hpp"

namespace edd {

struct Punctuator {
    std::string_view spelling;
    TokenKind kind;
};

inline constexpr Punctuator punctuators[] = {
    {"<<=", SHIFT_LEFT_ASSIGN}, {">>=", SHIFT_RIGHT_ASSIGN},
    {"<<", SHIFT_LEFT}, {">>", SHIFT_RIGHT}, {"<=", LESS_EQUAL}, {">=", GREATER_EQUAL},
    {"==", EQUAL_EQUAL}, {"!=", NOT_EQUAL}, {"&&", AND_AND}, {"||", OR_OR},
    {"++", PLUS_PLUS}, {"--", MINUS_MINUS}, {"+=", PLUS_ASSIGN}, {"-=", MINUS_ASSIGN},
    {"*=", STAR_ASSIGN}, {"/=", SLASH_ASSIGN}, {"%=", PERCENT_ASSIGN}, {"&=", AND_ASSIGN},
    {"^=", XOR_ASSIGN}, {"|=", OR_ASSIGN}, {"->", ARROW},
    {"{", LEFT_CURLY_BRACKET}, {"}", RIGHT_CURLY_BRACKET}, {"[", LEFT_SQUARE_BRACKET},
    {"]", RIGHT_SQUARE_BRACKET}, {"(", LEFT_BRACKET}, {")", RIGHT_BRACKET}, {";", SEMICOLON},
    {".", DOT}, {",", COMMA}, {"?", QUESTIONMARK}, {":", COLON}, {"~", TILDE},
    {"!", EXCLAMATIONMARK}, {"+", PLUS}, {"-", MINUS}, {"*", STAR}, {"/", SLASH},
    {"%", PERCENT}, {"<", LESS_THEN}, {">", GRATER_THEN}, {"&", AMPERSAND}, {"^", CARET},
    {"|", HORIZONTAL_LINE}, {"=", EQUALS}, {"#", PREPROCESSOR_SWITCH}, {"\\", PREPROCESSOR_ESCAPE},
};
static_assert(std::size(punctuators) == 47);
// Longest first, so that the first entry a text starts with is its longest match.
static_assert(std::ranges::is_sorted(punctuators, std::ranges::greater{},
                                     [](const Punctuator& p) { return p.spelling.size(); }));

// The longest punctuator that `text` starts with, if any.
std::optional<Punctuator> match_punctuator(std::string_view text);

}  // namespace edd
