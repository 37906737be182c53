// Literals, keywords, identifiers, operators and dictionary references: a kind and a text.
// NullValue is the empty value.
#pragma once

#include <string>

#include "model/value.hpp"

namespace edd {

class SimpleValue final : public Value {
public:
    SimpleValue(ValueKind kind, std::string text) : kind_(kind), text_(std::move(text)) {}

    ValueKind kind() const override { return kind_; }
    ValuePtr clone() const override { return make_value<SimpleValue>(*this); }
    bool equals(const Value& other) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    const std::string& text() const { return text_; }

private:
    ValueKind kind_;
    std::string text_;  // as the lexer delivered it, without quotes or brackets
};

class NullValue final : public ValueOf<NullValue, ValueKind::UNDEFINED> {
public:
    NullValue() = default;
    bool equals(const Value& other) const override { return other.kind() == ValueKind::UNDEFINED; }
    std::string to_string() const override { return std::string(); }
};

}  // namespace edd
