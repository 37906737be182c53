// SPDX-License-Identifier: Apache-2.0
// Collects the fields of a structured list entry as they are read and makes the entry once
// it is complete, with room for exactly its fields (see ListBuilder: entries nest the same
// way, on a stack of the parser's).
#pragma once

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "model/composed_value.hpp"
#include "parser/parser.hpp"

namespace edd {

class Parser::ComposedBuilder {
public:
    explicit ComposedBuilder(Parser& parser) : parser_(parser), start_(parser.composed_fields_.size()) {}
    ~ComposedBuilder() { parser_.composed_fields_.resize(start_); }
    ComposedBuilder(const ComposedBuilder&) = delete;
    ComposedBuilder& operator=(const ComposedBuilder&) = delete;

    // Replaces an earlier field of the same name in place, else appends. The name is a text
    // of the program's own, which outlives the entry.
    void set(std::string_view name, ValuePtr value) {
        const auto fields = mine();
        const auto it = std::ranges::find(fields, name, &Attribute::name);
        if (it != fields.end()) it->value = value;
        else parser_.composed_fields_.push_back({name, value});
    }
    // A field the entry's grammar reads at most once: no earlier one to look for.
    void add(std::string_view name, ValuePtr value) { parser_.composed_fields_.push_back({name, value}); }
    bool contains(std::string_view name) const {
        return std::ranges::find(mine(), name, &Attribute::name) != mine().end();
    }
    // `name` likewise a text of the program's own.
    ComposedValue* finish(std::string_view name = {}) { return parser_.make<ComposedValue>(name, mine()); }

private:
    std::span<Attribute> mine() const { return std::span<Attribute>(parser_.composed_fields_).subspan(start_); }

    Parser& parser_;
    std::size_t start_;
};

}  // namespace edd
