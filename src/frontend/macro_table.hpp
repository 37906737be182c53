// SPDX-License-Identifier: Apache-2.0
// The table of defined macros: the macros themselves in the preprocessor's memory, found
// through an open-addressing index of their names (linear probing, at most half full) with
// no node or bucket list of its own to chase. The index doubles in place, as the item
// table's does.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "files/growing_array.hpp"
#include "frontend/token_sequence.hpp"
#include "text/name_hash.hpp"

namespace edd {

// A macro's strings live where the table does, as its body does.
struct Macro {
    std::pmr::string name;
    std::pmr::vector<std::pmr::string> parameters;  // empty for an object-like macro
    // As read, inner blanks included; shared with the expansions being read and the bodies
    // that took it over whole.
    std::shared_ptr<const TokenSequence> body;
    // While its expansion is being read, a macro does not expand again: a macro that names
    // itself ends.
    mutable bool expanding = false;

    bool function_like() const { return !parameters.empty(); }
};

class MacroTable {
public:
    // The macros and their bodies live in `memory`.
    explicit MacroTable(std::pmr::memory_resource* memory) : memory_(memory) {}

    // Shared with the expansions being read, which outlive an #undef.
    const std::shared_ptr<const Macro>* find(std::string_view name) const {
        const Slot* slot = slot_of(name);
        return slot == nullptr ? nullptr : &slot->macro;
    }
    bool contains(std::string_view name) const { return find(name) != nullptr; }
    // The directives report a name defined already or not at all before they get here.
    void add(Macro macro);
    void remove(std::string_view name);
    // Counts the definitions: whatever was found about the macro names in a text holds
    // while the version stays (a removal only makes fewer names macros).
    std::uint64_t version() const { return version_; }

    // Most identifiers name no macro. A bit per first byte and length (lengths from 63 share
    // a bit) rules out most of them before a hash is computed; removals leave their bits.
    // False only for a name that is no macro.
    bool may_name(std::string_view name) const {
        return !name.empty() && (shapes_[static_cast<unsigned char>(name[0])] >> shape_bit(name)) & 1;
    }

private:
    static unsigned shape_bit(std::string_view name) { return name.size() < 63 ? static_cast<unsigned>(name.size()) : 63; }

    struct Slot {
        std::string_view name;  // the macro's own; empty in a free slot (no name is empty)
        std::shared_ptr<const Macro> macro;
        std::uint32_t hash = 0;  // of the name, as far as the index uses it
        bool placed = false;     // while the index grows
    };
    const Slot* slot_of(std::string_view name) const {
        if (!may_name(name) || slots_.empty()) return nullptr;
        const std::size_t mask = slots_.size() - 1;
        const std::uint32_t hash = name_hash(name);
        for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
            const Slot& slot = slots_[i];
            if (slot.hash == hash && slot.name == name) return &slot;
            if (slot.name.empty()) return nullptr;
        }
    }
    void grow();
    void place_again(Slot slot, std::size_t mask);

    std::pmr::memory_resource* memory_;
    GrowingArray<Slot> slots_;  // a power of two of them, or none
    std::size_t count_ = 0;
    std::array<std::uint64_t, 256> shapes_{};
    std::uint64_t version_ = 0;
};

}  // namespace edd
