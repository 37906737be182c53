// SPDX-License-Identifier: Apache-2.0
// Where the preprocessor's raw tokens come from: one stack of sources. A source is a file's
// lexer (the main input at the bottom, each included file above the one that included it)
// or a sequence of tokens made already (a macro's expansion, a conditional's kept branch).
// The sequences lie above all files: what a directive pushes is read before the rest of
// the file it stands in. Reading takes from the innermost source with a token left.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "frontend/char_class.hpp"
#include "frontend/lexer.hpp"
#include "frontend/macro_table.hpp"
#include "frontend/preprocessor_limits.hpp"
#include "frontend/token_sequence.hpp"

namespace edd {

// A place in a token sequence, read from the front.
class SequenceCursor {
public:
    SequenceCursor() = default;
    explicit SequenceCursor(const TokenSequence& tokens);
    // The next token, or null at the end; past blanks when asked.
    const Token* peek(bool skip_blanks) const;
    const Token* take() {
        if (next_ == end_ && !enter_next_span()) return nullptr;
        return next_++;
    }
    // The tokens left in the span being read (none where the next is in another span), and
    // passing over `count` of them.
    std::span<const Token> rest_of_span() const { return {next_, end_}; }
    void pass(std::size_t count) { next_ += count; }
    // The next token that is not a run of blanks, or null at the end.
    const Token* take_word() {
        const Token* token = take();
        while (token != nullptr && token->is(WHITESPACE)) token = take();
        return token;
    }

private:
    bool enter_next_span();

    const TokenSequence* tokens_ = nullptr;
    std::size_t span_ = 0;
    const Token* next_ = nullptr;
    const Token* end_ = nullptr;
};

class SourceStack {
public:
    SourceStack(Lexer& main, PreprocessorLimits& limits);
    ~SourceStack();
    SourceStack(const SourceStack&) = delete;
    SourceStack& operator=(const SourceStack&) = delete;

    // The next token, blanks and line ends included. Most come straight from the innermost
    // source; the rest take the way out of line.
    void next(Token& token) {
        if (!(direct_ != nullptr ? read_file(*direct_, token) : take_from_sequence(token))) next_from_any(token);
    }
    // The next token that is no blank, line end or comment: the lexer passes blanks without
    // making tokens of them.
    void next_significant(Token& token) {
        if (!next_significant_straight(token)) {
            do next(token);
            while (is_blank(token));
        }
    }
    // The common case of next_significant alone: a token straight from the innermost source.
    // False when that is a file with tokens read ahead, or a source that ended (an included
    // file is closed then); reading goes on the slow way.
    bool next_significant_straight(Token& token) {
        if (direct_ != nullptr) return read_past_blanks(*direct_, token);
        while (take_from_sequence(token))
            if (!is_blank(token)) return true;
        return false;
    }
    // The next token without taking it, past blanks when asked. The end of a sequence is
    // passed over without popping it; a file is read ahead as far as needed.
    const Token& peek(bool skip_blanks);
    // Questions about peek(false) (and one about peek(true)) that the byte the innermost
    // lexer reads next mostly answers, so that the token is read once, when it is taken,
    // rather than read ahead and then taken from there.
    bool line_ends_next() {
        if (const int start = next_start(); start >= 0) return start == '\n';
        const Token& next = peek(false);
        return next.is(NEWLINE) || next.is(END_OF_FILE);
    }
    bool input_ends_next() {
        if (next_start() >= 0) return false;
        if (sequence_ != nullptr)
            if (const Token* next = sequence_->peek(false); next != nullptr && !next->is(END_OF_FILE)) return false;
        return peek(false).is(END_OF_FILE);
    }
    bool bracket_next(bool skip_blanks) {
        if (const int start = next_start(); start >= 0 && !(skip_blanks && chars::is(start, chars::BLANK)))
            return start == '(';
        return peek(skip_blanks).is(LEFT_BRACKET);
    }

    // Reading goes on in `lexer`, an included file, after the sequences being read and
    // before the rest of the file that included it.
    void push_file(std::unique_ptr<Lexer> lexer);
    // `tokens` are read next. An expansion names its macro, which is not expanded again
    // until the expansion is read to its end and a token after it is taken.
    void push_tokens(std::shared_ptr<const TokenSequence> tokens, std::shared_ptr<const Macro> macro = nullptr);
    std::size_t include_depth() const { return files_ - 1; }
    // Closes every included file: reading goes on in the main file. Returns their names.
    std::vector<std::string> close_includes();

    // The position of the token taken last, for messages.
    FileIndex file() const { return file_; }
    int line() const { return line_; }
    void take_position(const Token& token) {
        file_ = token.file();
        line_ = token.line();
    }

private:
    struct Source {
        Lexer* lexer = nullptr;  // a file's; null for a sequence
        std::unique_ptr<Lexer> included;
        std::vector<Token> ahead;  // read from the lexer while looking ahead, not taken yet
        std::shared_ptr<const TokenSequence> tokens;
        SequenceCursor cursor;
        std::shared_ptr<const Macro> macro;
    };

    // From the file's lexer: false when an included file ended, which is then closed.
    bool read_file(Lexer& lexer, Token& token) {
        lexer.read(token);
        limits_.read_from_source(token_count(token));
        return taken_from_file(token);
    }
    bool read_past_blanks(Lexer& lexer, Token& token) {
        limits_.read_from_source(lexer.read_past_blanks(token));
        return taken_from_file(token);
    }
    bool taken_from_file(const Token& token) {
        if (token.is(END_OF_FILE) && files_ > 1) {
            pop();
            return false;
        }
        take_position(token);
        return true;
    }
    // From the sequence being read, when the innermost source is one and has a token left.
    bool take_from_sequence(Token& token) {
        const Token* taken = sequence_ != nullptr ? sequence_->take() : nullptr;
        if (taken == nullptr) return false;
        token = *taken;
        take_position(token);
        return true;
    }
    void next_from_any(Token& token);
    // What the innermost source's next token starts with when that is a lexer's and one
    // byte tells it; else -1.
    int next_start() const { return direct_ != nullptr ? direct_->next_start() : -1; }
    void pop();
    // What to read straight from: the innermost source's lexer when it is a file with nothing
    // read ahead, its cursor when it is a sequence, else null. Kept up to date by every
    // change of the stack.
    void find_direct() {
        Source& top = sources_.back();
        direct_ = top.lexer != nullptr && top.ahead.empty() ? top.lexer : nullptr;
        sequence_ = top.lexer == nullptr ? &top.cursor : nullptr;
    }

    std::vector<Source> sources_;  // the files, outermost first, then the sequences
    std::size_t files_ = 1;
    Lexer* direct_;
    SequenceCursor* sequence_ = nullptr;
    PreprocessorLimits& limits_;
    FileIndex file_ = 0;
    int line_ = 0;
};

}  // namespace edd
