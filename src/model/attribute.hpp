// SPDX-License-Identifier: Apache-2.0
// A named value, and the ordered list of them that composed values carry.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

#include "model/value.hpp"

namespace edd {

struct Attribute {
    std::string_view name;  // in the arena, or a text of the program's own
    ValuePtr value;
};

// Attributes in insertion order, at most one per name when filled through set().
class AttributeList {
public:
    // Room for `expected` entries from the start: in an arena, growing wastes what it leaves.
    explicit AttributeList(std::pmr::memory_resource* resource, std::size_t expected = 4) : entries_(resource) {
        entries_.reserve(expected);
    }
    // Exactly `entries`, whose names must last as long as the list (a text of the program's
    // own or of the arena).
    AttributeList(std::pmr::memory_resource* resource, std::span<const Attribute> entries)
        : entries_(entries.begin(), entries.end(), resource) {}

    // Replaces the first entry of the same name in place, else appends; the name is copied
    // (a keyword is shared with the keyword table).
    void set(std::string_view name, ValuePtr value) { set_name(name, value, false); }
    // The same for a name the program spells itself, a string literal: it is kept as it is.
    template <std::size_t N>
    void set(const char (&name)[N], ValuePtr value) {
        set_name(std::string_view(name, N - 1), value, true);
    }
    // Absent names throw std::invalid_argument.
    const Attribute& get(std::string_view name) const;
    const ValuePtr& value(std::string_view name) const { return get(name).value; }
    bool contains(std::string_view name) const;
    std::span<const Attribute> all() const { return entries_; }

private:
    void set_name(std::string_view name, ValuePtr value, bool lasting);

    std::pmr::vector<Attribute> entries_;
};

}  // namespace edd
