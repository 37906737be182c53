#include "frontend/token.hpp"

namespace edd {

std::string to_string(const Token& token) {
    std::string out = kind_to_string(token.kind());
    out += '(';
    out += token.text();
    out += ')';
    return out;
}

}  // namespace edd
