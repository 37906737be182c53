// SPDX-License-Identifier: Apache-2.0
// The text of a source file as the lexer reads it, and the memory such texts are read into.
// Tokens and the texts made from them point into a source for the whole run, so a text
// lives as long as any copy of it does.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace edd {

// Bytes followed by a NUL, which lexers use as a sentinel. Copies share the bytes.
class SourceText {
public:
    // Implicit: a text made in memory is a source too (tests, a pipe read in blocks).
    SourceText(std::string text);
    // `size` bytes at `bytes`, followed by a NUL, kept by `owner`.
    SourceText(std::shared_ptr<const void> owner, const char* bytes, std::size_t size)
        : owner_(std::move(owner)), text_(bytes, size) {}

    std::string_view view() const { return text_; }

private:
    std::shared_ptr<const void> owner_;
    std::string_view text_;
};

// Room for the texts a run reads whole. A large one goes into chunks that are offered huge
// pages, packed one after the other: a page fault for every 4 KiB of a large description
// costs several times what reading it does. A small one comes from the heap, where a huge
// page would be mostly waste. Nothing is zero-filled first: the text is read over it.
class SourceTextRoom {
public:
    struct Room {
        char* bytes;
        std::shared_ptr<const void> owner;  // keeps the bytes
        // All that `owner` keeps, `bytes` among it. What is written there is never written
        // over, so a text that lies in it stays as it is while `owner` lives.
        std::span<const char> kept;
    };
    // `size` bytes, uninitialised. Throws std::bad_alloc.
    Room take(std::size_t size);
};

// Room for memory a run keeps about as long as its sources: `size` bytes aligned to
// `alignment` (a power of two), uninitialised, from the same chunks as the large source
// texts and right after the last room taken, whoever took it. With one end for all of it,
// only the last huge page is ever partly used, where room taken from separate chunks
// leaves a partly used huge page at the end of each. Throws std::bad_alloc.
SourceTextRoom::Room take_shared_room(std::size_t size, std::size_t alignment);
// Whether a chunk of shared room is in use: a large text was read and is still kept, or
// other room taken is.
bool shared_room_in_use();

}  // namespace edd
