// The token record: a small value copied freely. Its text is a view into a shared text (the
// source file it was cut from, or a text made for it) and its file name an index into the
// process-wide file-name table, so copying a token copies neither a string nor a path.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "diagnostics/source_files.hpp"
#include "frontend/token_kind.hpp"

namespace edd {

// A text that tokens share: a source file read whole, or the text of one token made by the
// preprocessor or a test. The last holder frees it. The count is not atomic: tokens never
// cross threads.
class SharedText {
public:
    SharedText() = default;
    explicit SharedText(std::string text) : block_(new Block{1, std::move(text)}) {}
    SharedText(const SharedText& other) noexcept : block_(other.block_) {
        if (block_ != nullptr) ++block_->holders;
    }
    SharedText(SharedText&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
    SharedText& operator=(const SharedText& other) noexcept {
        if (other.block_ != nullptr) ++other.block_->holders;  // first: `other` may be this
        release();
        block_ = other.block_;
        return *this;
    }
    SharedText& operator=(SharedText&& other) noexcept {
        if (this != &other) {
            release();
            block_ = std::exchange(other.block_, nullptr);
        }
        return *this;
    }
    ~SharedText() { release(); }

    // The whole text; it ends in the string's NUL, which the lexer relies on.
    const std::string& text() const;

private:
    struct Block {
        std::size_t holders;
        std::string text;
    };
    void release() {
        if (block_ != nullptr && --block_->holders == 0) delete block_;
    }
    Block* block_ = nullptr;
};

class Token {
public:
    Token() = default;
    Token(std::uint32_t kind, std::string text) : Token(kind, std::move(text), FileIndex{0}, 0) {}
    Token(std::uint32_t kind, std::string text, std::string_view file_name, int line)
        : Token(kind, std::move(text), intern_file_name(file_name), line) {}
    Token(std::uint32_t kind, std::string text, FileIndex file, int line)
        : kind_(kind), file_(file), line_(line), owner_(std::move(text)) {
        text_ = owner_.text();
    }
    // A token whose text is `text`, a part of `owner` (how the lexer cuts tokens).
    Token(std::uint32_t kind, SharedText owner, std::string_view text, FileIndex file, int line)
        : kind_(kind), file_(file), line_(line), text_(text), owner_(std::move(owner)) {}
    // A punctuator by its spelling; throws std::invalid_argument for an unknown one.
    explicit Token(std::string_view punctuator);

    // A moved-from token keeps its kind and position but has an empty text.
    Token(const Token&) = default;
    Token& operator=(const Token&) = default;
    Token(Token&& other) noexcept
        : kind_(other.kind_),
          file_(other.file_),
          line_(other.line_),
          text_(std::exchange(other.text_, {})),
          owner_(std::move(other.owner_)) {}
    Token& operator=(Token&& other) noexcept {
        kind_ = other.kind_;
        file_ = other.file_;
        line_ = other.line_;
        text_ = std::exchange(other.text_, {});
        owner_ = std::move(other.owner_);
        return *this;
    }

    std::uint32_t kind() const { return kind_; }
    std::string_view text() const { return text_; }
    void set_text(std::string text) {
        owner_ = SharedText(std::move(text));
        text_ = owner_.text();
    }
    // The same token as another kind (the preprocessor's markers).
    void set_kind(std::uint32_t kind) { kind_ = kind; }
    const std::string& file_name() const { return file_name_of(file_); }
    FileIndex file() const { return file_; }
    int line() const { return line_; }

    bool is(std::uint32_t kind) const { return kind_ == kind; }
    // Takes the position of another token (expansions report where they were written).
    void set_position(const Token& from) {
        file_ = from.file_;
        line_ = from.line_;
    }

    // Kind and text decide; the position does not.
    friend bool operator==(const Token& a, const Token& b) { return a.kind_ == b.kind_ && a.text_ == b.text_; }

private:
    std::uint32_t kind_ = UNDEFINED;
    FileIndex file_ = 0;
    int line_ = 0;
    std::string_view text_;
    SharedText owner_;
};

// The printed form: kind name (or number), "(", text, ")".
std::string to_string(const Token& token);

}  // namespace edd
