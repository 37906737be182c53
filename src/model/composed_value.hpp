// SPDX-License-Identifier: Apache-2.0
// A structured list entry whose fields are named attributes (an ELEMENTS entry, a menu
// item with qualifiers, ...). Copies clone the fields' values.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "model/attribute.hpp"
#include "model/value.hpp"

namespace edd {

class ComposedValue final : public Value {
public:
    // `expected`: how many attributes it will most likely hold.
    explicit ComposedValue(Arena& arena, std::string_view name = {}, std::size_t expected = 4)
        : Value(ValueKind::COMPOSED), name_(arena.copy(name)), attributes_(arena.resource(), expected) {}
    // A name the program spells itself, a string literal, is kept as it is.
    template <std::size_t N>
    ComposedValue(Arena& arena, const char (&name)[N], std::size_t expected = 4)
        : Value(ValueKind::COMPOSED), name_(name, N - 1), attributes_(arena.resource(), expected) {}
    // With room for exactly `attributes`, which hold a name at most once each; their names
    // and `name` must last as long as the arena (texts of the program's own or of the arena).
    ComposedValue(Arena& arena, std::string_view name, std::span<const Attribute> attributes)
        : Value(ValueKind::COMPOSED), name_(name), attributes_(arena.resource(), attributes) {
        for (const Attribute& attribute : attributes) take_keys_of(attribute.value);
    }

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::string_view name() const { return name_; }
    void set(std::string_view name, ValuePtr value) {
        take_keys_of(value);
        attributes_.set(name, value);
    }
    template <std::size_t N>
    void set(const char (&name)[N], ValuePtr value) {  // a literal: kept as it is
        take_keys_of(value);
        attributes_.set(name, value);
    }
    const ValuePtr& value(std::string_view name) const { return attributes_.value(name); }
    bool contains(std::string_view name) const { return attributes_.contains(name); }
    std::span<const Attribute> attributes() const { return attributes_.all(); }

private:
    std::string_view name_;
    AttributeList attributes_;
};

}  // namespace edd
