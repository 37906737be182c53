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
// Longest first, so that the first entry a text starts with is its longest match.
static_assert(std::ranges::is_sorted(punctuators, std::ranges::greater{},
                                     [](const Punctuator& p) { return p.spelling.size(); }));

}  // namespace

std::optional<TokenKind> find_punctuator(std::string_view spelling) {
    auto it = std::ranges::find(punctuators, spelling, &Punctuator::spelling);
    if (it == std::end(punctuators)) return std::nullopt;
    return it->kind;
}

std::optional<Punctuator> match_punctuator(std::string_view text) {
    if (text.empty()) return std::nullopt;
    // The first character rules out most entries before a comparison of the whole spelling.
    auto it = std::ranges::find_if(
        punctuators, [text](const Punctuator& p) { return p.spelling[0] == text[0] && text.starts_with(p.spelling); });
    if (it == std::end(punctuators)) return std::nullopt;
    return *it;
}

}  // namespace edd
