// SPDX-License-Identifier: Apache-2.0
// A variable or waveform type (TYPE INTEGER (4) { ... }): name, size, named attributes
// ordered by name, and further values. Copies clone the attributes' values but share the
// further values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/attribute.hpp"
#include "model/value.hpp"

namespace edd {

class TypeValue final : public Value {
public:
    explicit TypeValue(Arena& arena, std::string_view name = "UNKNOWN", std::uint32_t size = 0)
        : Value(ValueKind::TYPE),
          name_(arena.word(name)),
          size_(size),
          attributes_(arena.resource()),
          values_(arena.resource()) {}
    TypeValue(Arena& arena, LastingText name)
        : Value(ValueKind::TYPE), name_(name.text), size_(0), attributes_(arena.resource()), values_(arena.resource()) {}

    ValuePtr clone(Arena& arena) const override;
    std::string to_string() const override;
    void collect_dictionary_keys(KeySet& keys) const override;

    std::string_view name() const { return name_; }
    std::uint32_t size() const { return size_; }
    void set_size(std::uint32_t size) { size_ = size; }
    // Replaces an earlier attribute of the same name; the name is copied.
    void set_attribute(std::string_view name, ValuePtr value) { put_attribute(name, std::move(value), true); }
    void set_attribute(LastingText name, ValuePtr value) { put_attribute(name.text, std::move(value), false); }
    // In name order.
    std::span<const Attribute> attributes() const { return attributes_; }
    void add_value(ValuePtr value) {
        take_keys_of(value);
        values_.push_back(value);
    }
    // Room for `more` values beyond those held, so that a known number comes without regrowth.
    void reserve_values(std::size_t more) { values_.reserve(values_.size() + more); }
    std::span<const ValuePtr> values() const { return values_; }

private:
    void put_attribute(std::string_view name, ValuePtr value, bool copy);

    std::string_view name_;
    std::uint32_t size_;
    std::pmr::vector<Attribute> attributes_;  // sorted by name: a type holds a few
    std::pmr::vector<ValuePtr> values_;
};

}  // namespace edd
