// SPDX-License-Identifier: Apache-2.0
// Program text (a METHOD body, say) kept as the tokens the lexer delivered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "frontend/token.hpp"
#include "model/value.hpp"

namespace edd {

// One token of code: its kind and its text (kept by the arena, once the value holds it).
struct CodeToken {
    std::uint32_t kind;
    std::uint32_t size;  // beside the kind: a token takes 16 bytes
    const char* data;
    std::string_view text() const { return {data, size}; }
};

class CodeValue final : public Value {
public:
    explicit CodeValue(Arena&) : Value(ValueKind::CODE) {}
    // The tokens, in an array of exactly their number; the texts the arena does not keep
    // already are copied to one block of it.
    CodeValue(Arena& arena, std::span<const CodeToken> tokens);

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    // The tokens in order, for a reader that spells the code out itself.
    std::span<const CodeToken> tokens() const { return {tokens_, count_}; }
    // Picks "[key]" references and get_dictionary_string(key) arguments out of the code.
    void collect_dictionary_keys(KeySet& keys) const override;

private:
    // The count first, beside the base's fields.
    std::uint32_t count_ = 0;
    CodeToken* tokens_ = nullptr;
};

}  // namespace edd
