// SPDX-License-Identifier: Apache-2.0
// An ordered list of values, optionally named. Copies clone the items.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/value.hpp"

namespace edd {

class ValueList final : public Value {
public:
    explicit ValueList(Arena& arena, std::string_view name = {})
        : Value(ValueKind::VALUE_LIST), name_(arena.copy(name)), items_(arena.resource()) {}
    // A list of the given items, with room for exactly them.
    ValueList(Arena& arena, std::string_view name, std::span<const ValuePtr> items) : ValueList(arena, name) {
        items_.reserve(items.size());
        for (const ValuePtr& item : items) add(item);
    }

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::string_view name() const { return name_; }
    void add(ValuePtr value) {
        take_keys_of(value);
        items_.push_back(value);
    }
    std::span<const ValuePtr> items() const { return items_; }

private:
    std::string_view name_;
    std::pmr::vector<ValuePtr> items_;
};

}  // namespace edd
