// SPDX-License-Identifier: Apache-2.0
// One call of a function-like macro (or of a body holding "#" or "##"): the body with each
// parameter replaced by its argument and, in the normal token flow, "#" (stringify) and
// "##" (paste) applied in the same left-to-right walk. The body is read through a cursor,
// never laid out whole for one use, and the walk stops at the expansion guard before what
// it produces outgrows it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "frontend/macro_table.hpp"
#include "frontend/preprocessor_limits.hpp"
#include "frontend/preprocessor_reporter.hpp"
#include "frontend/source_stack.hpp"
#include "frontend/text_store.hpp"
#include "frontend/token_sequence.hpp"

namespace edd {

using MacroArguments = std::vector<TokenBlock>;

class MacroSubstitution {
public:
    MacroSubstitution(const Macro& macro, const MacroArguments& arguments, PreprocessorLimits& limits,
                      TextStore& texts, const PreprocessorReporter& reporter);
    // The expansion; `apply_operators` is off while a define's body is read.
    std::shared_ptr<const TokenSequence> run(bool apply_operators);

private:
    // The argument a token of the body stands for, or null. Most words of a body have a
    // length no parameter has and are passed here, inline, without a comparison.
    const TokenBlock* argument_of(const Token& token) const {
        if (!token.is(IDENTIFIER) && !token.is(EDDL_KEYWORD)) return nullptr;
        if (!((parameter_lengths_ >> length_bit(token.text())) & 1)) return nullptr;
        return argument_named(token.text());
    }
    const TokenBlock* argument_named(std::string_view name) const;
    static unsigned length_bit(std::string_view name) {
        return name.size() < 63 ? static_cast<unsigned>(name.size()) : 63;
    }
    void stringify(const Token& hash);
    void paste();
    std::string_view made_text(std::string_view first, std::string_view second);
    void produce(const Token& token) {
        out_.push_back(token);
        produced_ += token_count(token);
    }
    void produce(std::span<const Token> tokens);
    void copy_plain_run(bool apply_operators);
    void check_limits();

    const Macro& macro_;
    const MacroArguments& arguments_;
    PreprocessorLimits& limits_;
    TextStore& texts_;
    const PreprocessorReporter& reporter_;
    SequenceCursor body_;
    TokenBlock out_;
    std::size_t produced_ = 0;  // token_count of out_
    std::uint64_t parameter_lengths_ = 0;  // a bit for each length_bit of a parameter's name
};

}  // namespace edd
