// SPDX-License-Identifier: Apache-2.0
// Program text (a METHOD body, say) kept as the tokens the lexer delivered.
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
    std::uint32_t size;  // beside the kind: a token takes 16 bytes
    const char* data;
    std::string_view text() const { return {data, size}; }
};

class CodeValue final : public Value {
public:
    explicit CodeValue(Arena& arena) : Value(ValueKind::CODE), tokens_(arena.resource()) {}
    CodeValue(Arena& arena, std::span<const Token> tokens);

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    // The tokens in order, for a reader that spells the code out itself.
    std::span<const CodeToken> tokens() const { return tokens_; }
    // Picks "[key]" references and get_dictionary_string(key) arguments out of the code.
    void collect_dictionary_keys(KeySet& keys) const override;

private:
    std::pmr::vector<CodeToken> tokens_;
};

}  // namespace edd
