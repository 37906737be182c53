// SPDX-License-Identifier: Apache-2.0
// The abstract token source. The lexer and the preprocessor both are one, so whoever reads
// tokens cannot tell raw from preprocessed input.
#pragma once

#include "frontend/token.hpp"

namespace edd {

class TokenStream {
public:
    virtual ~TokenStream() = default;
    // The next token; END_OF_FILE at the end of the input, and again on every later call.
    virtual Token next_token() = 0;
    // The next token that is no blank, line end or comment (which a parser skips), written
    // into `token`; a stream may skip them more cheaply than one call each. Without a body
    // here: a reader of a stream then makes the one indirect call per token, not a guess
    // at the implementation first.
    virtual void read_significant(Token& token) = 0;
    virtual int current_line() const = 0;

protected:
    TokenStream() = default;
    TokenStream(const TokenStream&) = delete;
    TokenStream& operator=(const TokenStream&) = delete;
};

}  // namespace edd
