// SPDX-License-Identifier: Apache-2.0
// The conditionals open now, innermost last: which branch each is in and what it keeps.
// Both branches are read through the whole preprocessor; a branch not taken keeps nothing,
// and while one is open, define and include take no effect.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

#include "frontend/kept_tokens.hpp"
#include "frontend/macro_table.hpp"

namespace edd {

class ConditionalStack {
public:
    ConditionalStack(const MacroTable& macros, std::size_t& tally, std::pmr::memory_resource* memory)
        : macros_(macros), tally_(tally), memory_(memory) {}

    bool empty() const { return open_.empty(); }
    // Opens a conditional in its first branch, which is kept when `condition` holds.
    void open(bool condition);
    // The innermost conditional goes on in its second branch. False when it was there
    // already: a second else ends the conditional as endif does.
    bool enter_else();
    // Closes the innermost conditional; what it kept is the caller's.
    KeptTokens close();
    KeptTokens& innermost() { return open_.back().kept; }
    bool skipping() const { return !open_.empty() && open_.back().skipping; }

private:
    struct Conditional {
        KeptTokens kept;
        bool condition;
        bool in_else;
        bool skipping;  // this branch or one around it is not taken
    };

    const MacroTable& macros_;
    std::size_t& tally_;
    std::pmr::memory_resource* memory_;
    std::vector<Conditional> open_;
};

}  // namespace edd
