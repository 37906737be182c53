// SPDX-License-Identifier: Apache-2.0
#include "frontend/source_stack.hpp"

#include <utility>

namespace edd {

// ---- SequenceCursor -----------------------------------------------------------------------

SequenceCursor::SequenceCursor(const TokenSequence& tokens) : tokens_(&tokens) {
    if (!tokens.empty()) {
        const auto first = tokens.spans().front().tokens();
        next_ = first.data();
        end_ = next_ + first.size();
    }
}

bool SequenceCursor::enter_next_span() {
    if (tokens_ == nullptr) return false;
    const auto& spans = tokens_->spans();
    while (span_ + 1 < spans.size()) {
        const auto part = spans[++span_].tokens();
        next_ = part.data();
        end_ = next_ + part.size();
        if (next_ != end_) return true;
    }
    return false;
}

const Token* SequenceCursor::peek(bool skip_blanks) const {
    const Token* at = next_;
    const Token* stop = end_;
    for (std::size_t i = span_;;) {
        for (; at != stop; ++at)
            if (!skip_blanks || !at->is(WHITESPACE)) return at;
        if (tokens_ == nullptr || ++i >= tokens_->spans().size()) return nullptr;
        const auto part = tokens_->spans()[i].tokens();
        at = part.data();
        stop = at + part.size();
    }
}

// ---- SourceStack --------------------------------------------------------------------------

SourceStack::SourceStack(Lexer& main, PreprocessorLimits& limits) : direct_(&main), limits_(limits) {
    sources_.emplace_back().lexer = &main;
}

SourceStack::~SourceStack() {
    while (sources_.size() > 1) pop();
}

// Sequences read to their end are popped on the way, and so are included files that end:
// reading goes on in the file that included them.
void SourceStack::next_from_any(Token& token) {
    for (;;) {
        Source& top = sources_.back();
        if (top.lexer == nullptr) {
            if (const Token* taken = top.cursor.take()) {
                token = *taken;
                take_position(token);
                return;
            }
            pop();
        } else if (!top.ahead.empty()) {
            token = top.ahead.front();
            top.ahead.erase(top.ahead.begin());
            find_direct();
            if (taken_from_file(token)) return;
        } else {
            find_direct();
            if (read_file(*top.lexer, token)) return;
        }
    }
}

const Token& SourceStack::peek(bool skip_blanks) {
    for (std::size_t i = sources_.size(); i-- > files_;)
        if (const Token* token = sources_[i].cursor.peek(skip_blanks)) return *token;
    for (std::size_t i = files_;; --i) {
        Source& file = sources_[i - 1];
        for (std::size_t k = 0;; ++k) {
            if (k == file.ahead.size()) {
                file.lexer->read(file.ahead.emplace_back());
                limits_.read_from_source(token_count(file.ahead.back()));
                if (i == sources_.size()) direct_ = nullptr;
            }
            const Token& token = file.ahead[k];
            if (token.is(END_OF_FILE) && i > 1) break;  // looks on in the file that included this one
            if (!skip_blanks || !token.is(WHITESPACE)) return token;
        }
    }
}

void SourceStack::push_file(std::unique_ptr<Lexer> lexer) {
    Source file;
    file.lexer = lexer.get();
    file.included = std::move(lexer);
    sources_.insert(sources_.begin() + static_cast<std::ptrdiff_t>(files_), std::move(file));
    ++files_;
    find_direct();
}

void SourceStack::push_tokens(std::shared_ptr<const TokenSequence> tokens, std::shared_ptr<const Macro> macro) {
    Source& sequence = sources_.emplace_back();
    sequence.cursor = SequenceCursor(*tokens);
    sequence.tokens = std::move(tokens);
    if (macro != nullptr) macro->expanding = true;
    sequence.macro = std::move(macro);
    find_direct();
}

std::vector<std::string> SourceStack::close_includes() {
    std::vector<std::string> names;
    const auto first = sources_.begin() + 1, last = sources_.begin() + static_cast<std::ptrdiff_t>(files_);
    for (auto it = first; it != last; ++it) names.push_back(it->lexer->file_name());
    sources_.erase(first, last);
    files_ = 1;
    find_direct();
    return names;
}

void SourceStack::pop() {
    Source& top = sources_.back();
    if (top.macro != nullptr) top.macro->expanding = false;
    if (top.lexer != nullptr) --files_;
    sources_.pop_back();
    find_direct();
}

}  // namespace edd
