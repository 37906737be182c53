// SPDX-License-Identifier: Apache-2.0
// An ordered list of values, optionally named. Copies clone the items.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "model/value.hpp"

namespace edd {

class ValueList final : public Value {
public:
    explicit ValueList(Arena& arena, std::string_view name = {}) : Value(ValueKind::VALUE_LIST) {
        const std::string_view kept = arena.copy(name);
        name_size_ = static_cast<std::uint32_t>(kept.size());
        name_data_ = kept.data();
    }
    // A list of the given items, with room for exactly them.
    ValueList(Arena& arena, std::string_view name, std::span<const ValuePtr> items);

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::string_view name() const { return {name_data_, name_size_}; }
    // Appends; a full list moves to `arena` with twice the room.
    void add(Arena& arena, ValuePtr value);
    std::span<const ValuePtr> items() const { return {items_, count_}; }

private:
    // The count first, beside the base's fields, and the name's size beside the room: a
    // list takes 40 bytes.
    std::uint32_t count_ = 0;
    std::uint32_t room_ = 0;
    std::uint32_t name_size_;
    const char* name_data_;
    ValuePtr* items_ = nullptr;
};

}  // namespace edd
