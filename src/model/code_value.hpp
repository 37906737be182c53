// Program text (a METHOD body, say) kept as the tokens the lexer delivered, or as a text.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/token.hpp"
#include "model/value.hpp"

namespace edd {

// One token of code: its kind and its text, in the arena.
struct CodeToken {
    std::uint32_t kind;
    std::string_view text;
};

// The tokens' texts in order; strings re-quoted when asked, each token followed by a blank
// when asked.
std::string render_tokens(std::span<const CodeToken> tokens, bool quote_strings, bool separate);

class CodeValue final : public Value {
public:
    CodeValue(Arena& arena, std::string_view text) : Value(ValueKind::CODE), tokens_(arena.resource()), text_(arena.copy(text)) {}
    CodeValue(Arena& arena, std::span<const Token> tokens);

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    // Picks "[key]" references and get_dictionary_string(key) arguments out of the code.
    void collect_dictionary_keys(KeySet& keys) const override;

    std::span<const CodeToken> tokens() const { return tokens_; }
    std::string_view text() const { return text_; }
    bool has_tokens() const { return !tokens_.empty(); }

private:
    std::pmr::vector<CodeToken> tokens_;
    std::string_view text_;
};

}  // namespace edd
