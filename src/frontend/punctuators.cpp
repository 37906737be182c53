#include "frontend/punctuators.hpp"

#include <algorithm>
#include <array>
#include <iterator>

namespace edd {

namespace {

constexpr Punctuator punctuators[] = {
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

}  // namespace

std::optional<TokenKind> find_punctuator(std::string_view spelling) {
    auto it = std::ranges::find(punctuators, spelling, &Punctuator::spelling);
    if (it == std::end(punctuators)) return std::nullopt;
    return it->kind;
}

}  // namespace edd
