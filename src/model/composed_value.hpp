// SPDX-License-Identifier: Apache-2.0
// A structured list entry whose fields are named attributes (an ELEMENTS entry, a menu
// item with qualifiers, ...). Copies clone the fields' values.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/attribute.hpp"
#include "model/value.hpp"

namespace edd {

class ComposedValue final : public Value {
public:
    // A name the program spells itself, a string literal, is kept as it is.
    template <std::size_t N>
    explicit ComposedValue(Arena&, const char (&name)[N]) : Value(ValueKind::COMPOSED), name_(name, N - 1) {}
    explicit ComposedValue(Arena& arena) : ComposedValue(arena, "") {}
    // With exactly `attributes`, which hold a name at most once each; their names and `name`
    // must last as long as the arena (texts of the program's own or of the arena).
    ComposedValue(Arena& arena, std::string_view name, std::span<const Attribute> attributes);

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::string_view name() const { return name_; }
    // Replaces the field of the same name in place, else appends a copy of the name (a
    // keyword is shared with the keyword table). An entry has a few fields, known to the
    // program: each new one copies them to `arena` with room for exactly them.
    void set(Arena& arena, std::string_view name, ValuePtr value);
    // An absent name throws std::invalid_argument.
    const ValuePtr& value(std::string_view name) const;
    bool contains(std::string_view name) const { return find(name) != nullptr; }
    std::span<const Attribute> attributes() const { return {attributes_, count_}; }

private:
    const Attribute* find(std::string_view name) const;

    // The count first, beside the base's fields: an entry takes 40 bytes.
    std::uint32_t count_ = 0;
    std::string_view name_;
    Attribute* attributes_ = nullptr;
};

}  // namespace edd
