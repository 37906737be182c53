// SPDX-License-Identifier: Apache-2.0
// Literals, keywords, identifiers, operators and dictionary references: a kind and a text.
// NullValue is the empty value.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

class SimpleValue final : public Value {
public:
    SimpleValue(Arena& arena, ValueKind kind, std::string_view text) : Value(kind) {
        const std::string_view kept = kind == ValueKind::KEYWORD ? arena.word(text) : arena.copy(text);
        size_ = static_cast<std::uint32_t>(kept.size());  // texts are far below 4 GiB (the reading bound)
        data_ = kept.data();
        set_has_keys(kind == ValueKind::DICTIONARY_REFERENCE);
    }
    SimpleValue(Arena&, ValueKind kind, LastingText text)
        : Value(kind), size_(static_cast<std::uint32_t>(text.text.size())), data_(text.text.data()) {
        set_has_keys(kind == ValueKind::DICTIONARY_REFERENCE);
    }

    ValuePtr clone(Arena& arena) const override { return arena.make<SimpleValue>(kind(), text()); }
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    // As the lexer delivered it, without quotes or brackets.
    std::string_view text() const { return {data_, size_}; }

private:
    // Size first, beside the base's fields: the most frequent value takes 24 bytes, not 32.
    std::uint32_t size_;
    const char* data_;
};

static_assert(sizeof(void*) != 8 || sizeof(SimpleValue) == 24);

class NullValue final : public Value {
public:
    NullValue() : Value(ValueKind::UNDEFINED) {}
    explicit NullValue(Arena&) : NullValue() {}
    ValuePtr clone(Arena& arena) const override { return arena.make<NullValue>(); }
    std::string to_string() const override { return std::string(); }
};

// One empty value for every holder that starts out with one: nothing ever changes it.
ValuePtr null_value();

}  // namespace edd
