// Program text (a METHOD body, say) kept as the tokens the lexer delivered, or as a text.
#pragma once

#include <string>
#include <vector>

#include "frontend/token.hpp"
#include "model/value.hpp"

namespace edd {

// The tokens' texts in order; strings re-quoted when asked, each token followed by a blank
// when asked.
std::string render_tokens(const std::vector<Token>& tokens, bool quote_strings, bool separate);

class CodeValue final : public ValueOf<CodeValue, ValueKind::CODE> {
public:
    CodeValue() = default;
    explicit CodeValue(std::string text) : text_(std::move(text)) {}
    explicit CodeValue(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

    bool equals(const Value& other) const override;
    std::string to_string() const override;
    // Picks "[key]" references and get_dictionary_string(key) arguments out of the code.
    void collect_dictionary_keys(KeySet& keys) const override;

    const std::vector<Token>& tokens() const { return tokens_; }
    const std::string& text() const { return text_; }
    bool has_tokens() const { return !tokens_.empty(); }

private:
    std::vector<Token> tokens_;
    std::string text_;
};

}  // namespace edd
