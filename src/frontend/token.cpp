#include "frontend/token.hpp"

#include <stdexcept>

#include "diagnostics/messages.hpp"
#include "frontend/punctuators.hpp"

namespace edd {

Token::Token(std::string_view punctuator) {
    auto match = find_punctuator(punctuator);
    if (!match) {
        std::string message(messages::token_not_unique_prefix);
        message += '"';
        message += punctuator;
        message += '"';
        message += messages::token_not_unique_suffix;
        throw std::invalid_argument(message);
    }
    kind_ = match->kind;
    text_ = match->spelling;  // the table's own text, which lives as long as the program
}

std::string to_string(const Token& token) {
    std::string out = kind_to_string(token.kind());
    out += '(';
    out += token.text();
    out += ')';
    return out;
}

}  // namespace edd
