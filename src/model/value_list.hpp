// An ordered list of values, optionally named. Copies clone the items; equality asks for
// the very same item objects, so two separately built lists never compare equal.
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
    bool equals(const Value& other) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::string_view name() const { return name_; }
    void add(ValuePtr value) {
        take_keys_of(value);
        items_.push_back(value);
    }
    std::size_t size() const { return items_.size(); }
    bool empty() const { return items_.empty(); }
    // Index errors throw std::invalid_argument; last() of an empty list is one too.
    const ValuePtr& get(std::size_t index) const;
    const ValuePtr& last() const { return get(items_.size() - 1); }
    void set(std::size_t index, ValuePtr value);
    void set_last(ValuePtr value) { set(items_.size() - 1, value); }
    std::span<const ValuePtr> items() const { return items_; }

private:
    std::string_view name_;
    std::pmr::vector<ValuePtr> items_;
};

}  // namespace edd
