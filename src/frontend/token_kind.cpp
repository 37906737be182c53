// SPDX-License-Identifier: Apache-2.0
#include "frontend/token_kind.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace edd {

namespace {

constexpr std::pair<std::uint32_t, std::string_view> kind_names[] = {
    {END_OF_FILE, "END_OF_FILE"},
    {EXCLAMATIONMARK, "EXCLAMATIONMARK"},
    {PREPROCESSOR_SWITCH, "PREPROCESSOR_SWITCH"},
    {PERCENT, "PERCENT"},
    {AMPERSAND, "AMPERSAND"},
    {LEFT_BRACKET, "LEFT_BRACKET"},
    {RIGHT_BRACKET, "RIGHT_BRACKET"},
    {STAR, "STAR"},
    {PLUS, "PLUS"},
    {COMMA, "COMMA"},
    {MINUS, "MINUS"},
    {DOT, "DOT"},
    {SLASH, "SLASH"},
    {SEMICOLON, "SEMICOLON"},
    {LESS_THEN, "LESS_THEN"},
    {EQUALS, "EQUALS"},
    {GRATER_THEN, "GRATER_THEN"},
    {QUESTIONMARK, "QUESTIONMARK"},
    {LEFT_SQUARE_BRACKET, "LEFT_SQUARE_BRACKET"},
    {PREPROCESSOR_ESCAPE, "PREPROCESSOR_ESCAPE"},
    {RIGHT_SQUARE_BRACKET, "RIGHT_SQUARE_BRACKET"},
    {CARET, "CARET"},
    {LEFT_CURLY_BRACKET, "LEFT_CURLY_BRACKET"},
    {HORIZONTAL_LINE, "HORIZONTAL_LINE"},
    {RIGHT_CURLY_BRACKET, "RIGHT_CURLY_BRACKET"},
    {TILDE, "TILDE"},
    {IDENTIFIER, "IDENTIFIER"},
    {INTEGER, "INTEGER"},
    {FLOAT, "FLOAT"},
    {STRING, "STRING"},
    {EDDL_KEYWORD, "EDDL_KEYWORD"},
    {PREPROCESSOR_PASTE, "PREPROCESSOR_PASTE"},
    {WHITESPACE, "WHITESPACE"},
    {NEWLINE, "NEWLINE"},
    {COMMENT, "COMMENT"},
    {UNDEFINED, "UNDEFINED"},
    {ERROR, "ERROR"},
};
static_assert(std::ranges::is_sorted(kind_names, {}, &std::pair<std::uint32_t, std::string_view>::first));

}  // namespace

std::optional<std::string_view> kind_name(std::uint32_t kind) {
    auto it = std::ranges::lower_bound(kind_names, kind, {},
                                       &std::pair<std::uint32_t, std::string_view>::first);
    if (it == std::end(kind_names) || it->first != kind) return std::nullopt;
    return it->second;
}

std::string kind_to_string(std::uint32_t kind) {
    if (auto name = kind_name(kind)) return std::string(*name);
    return std::to_string(kind);
}

}  // namespace edd
