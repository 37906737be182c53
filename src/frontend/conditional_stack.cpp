// SPDX-License-Identifier: Apache-2.0
#include "frontend/conditional_stack.hpp"

#include <utility>

namespace edd {

void ConditionalStack::open(bool condition) {
    const bool around = skipping();
    // A nested conditional's kept tokens would be read again by every branch around it.
    KeptTokens kept(!open_.empty(), macros_, tally_, memory_);
    kept.set_dropping(!condition);
    open_.push_back({std::move(kept), condition, false, around || !condition});
}

bool ConditionalStack::enter_else() {
    Conditional& innermost = open_.back();
    if (innermost.in_else) return false;
    innermost.in_else = true;
    innermost.kept.set_dropping(innermost.condition);
    innermost.skipping = (open_.size() > 1 && open_[open_.size() - 2].skipping) || innermost.condition;
    return true;
}

KeptTokens ConditionalStack::close() {
    KeptTokens kept = std::move(open_.back().kept);
    open_.pop_back();
    return kept;
}

}  // namespace edd
