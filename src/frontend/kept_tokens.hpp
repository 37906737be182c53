// SPDX-License-Identifier: Apache-2.0
// What a conditional keeps of its taken branch. Both branches are read eagerly, through
// the whole preprocessor; the kept tokens are delivered again after the #endif, so that a
// macro defined later in the branch still applies to them. The kept tokens of a nested
// conditional would so be read once more by every branch around it. Most tokens read back
// as themselves, and where all of a nested branch's do, the branch around it takes them
// over whole instead: reading them again at every level would cost depth times size.
//
// Invariant: while the macro table's version is `version_`, each of the first `settled_`
// tokens reads back as itself (no directive, no identifier naming a macro). Only nested
// branches track it; the outermost one is read again in any case.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>

#include "frontend/macro_table.hpp"
#include "frontend/token_sequence.hpp"

namespace edd {

class KeptTokens {
public:
    KeptTokens(bool nested, const MacroTable& macros, std::size_t& tally, std::pmr::memory_resource* memory);

    bool nested() const { return nested_; }
    // A dropped branch keeps nothing; set for each branch as it starts.
    void set_dropping(bool dropping) { dropping_ = dropping; }
    bool dropping() const { return dropping_ || given_up_; }
    // Keeps nothing more: what was kept goes, and `error` (an ERROR token) stands for it.
    void give_up(const Token& error);

    void keep(const Token& token);
    // Whether every kept token reads back as itself under the macros defined now.
    bool settled();
    // Appends the tokens of a settled nested branch, moving the fewer of the two.
    void take_over(KeptTokens&& inner);

    bool empty() const { return tokens_.empty(); }
    const Token& back() const { return tokens_.back(); }
    TokenBlock release() { return std::move(tokens_); }

private:
    bool reads_back(const Token& token) const;
    bool all_settled() const { return settled_ == tokens_.size() && version_ == macros_.version(); }

    TokenBlock tokens_;
    const MacroTable& macros_;
    std::size_t settled_ = 0;
    std::uint64_t version_;
    bool nested_;
    bool dropping_ = false;
    bool given_up_ = false;
};

}  // namespace edd
