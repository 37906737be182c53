// SPDX-License-Identifier: Apache-2.0
// Literals, keywords, identifiers, operators and dictionary references: a kind and a text.
// NullValue is the empty value.
#pragma once

#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

class SimpleValue final : public Value {
public:
    SimpleValue(Arena& arena, ValueKind kind, std::string_view text)
        : Value(kind), text_(kind == ValueKind::KEYWORD ? arena.word(text) : arena.copy(text)) {
        set_has_keys(kind == ValueKind::DICTIONARY_REFERENCE);
    }

    ValuePtr clone(Arena& arena) const override { return arena.make<SimpleValue>(kind(), text_); }
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    // As the lexer delivered it, without quotes or brackets.
    std::string_view text() const { return text_; }

private:
    std::string_view text_;
};

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
