#include "frontend/token.hpp"

#include <stdexcept>

#include "diagnostics/messages.hpp"
#include "frontend/punctuators.hpp"

namespace edd {

const std::string& SharedText::text() const {
    static const std::string empty;
    return block_ != nullptr ? block_->text : empty;
}

Token::Token(std::string_view punctuator) : owner_(std::string(punctuator)) {
    text_ = owner_.text();
    auto kind = find_punctuator(punctuator);
    if (!kind) {
        std::string message(messages::token_not_unique_prefix);
        message += '"';
        message += punctuator;
        message += '"';
        message += messages::token_not_unique_suffix;
        throw std::invalid_argument(message);
    }
    kind_ = *kind;
}

std::string to_string(const Token& token) {
    std::string out = kind_to_string(token.kind());
    out += '(';
    out += token.text();
    out += ')';
    return out;
}

}  // namespace edd
