// SPDX-License-Identifier: Apache-2.0
#include "model/arena.hpp"

#include <cstddef>

#include "files/platform.hpp"
#include "files/source_text.hpp"
#include "frontend/keywords.hpp"

namespace edd {

namespace {

// A small description's arena takes chunks from the heap, doubling from 64 KiB up to this
// size. A larger one, or one whose sources are large, takes room shared with the sources.
constexpr std::size_t largest_heap_chunk = std::size_t{1} << 20;
// The room a larger arena takes at a time. It is used up before the next is taken, so only
// the last is partly used; a piece right after the last continues it.
constexpr std::size_t shared_piece = std::size_t{256} << 10;

}  // namespace

std::string_view copy_word(std::pmr::memory_resource& resource, std::string_view text) {
    const std::string_view spelling = keyword_spelling(text);
    return spelling.empty() ? copy_text(resource, text) : spelling;
}

std::string_view Arena::word(std::string_view text) {
    const std::string_view spelling = keyword_spelling(text);
    return spelling.empty() ? copy(text) : spelling;
}

Arena::~Arena() {
    for (const Chunk& chunk : chunks_) platform::free_chunk(chunk.memory, chunk.size);
}

void* Arena::take_new_chunk(std::size_t bytes, std::size_t alignment) {
    if (next_chunk_size_ > largest_heap_chunk || shared_room_in_use()) return take_shared(bytes, alignment);
    // A request larger than a quarter chunk gets a chunk of its own; the current one goes on.
    const std::size_t needed = bytes + alignment;
    if (needed > next_chunk_size_ / 4) {
        void* memory = platform::allocate_chunk(needed);
        chunks_.push_back({memory, needed});
        const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(memory);
        return reinterpret_cast<void*>((start + alignment - 1) & ~(alignment - 1));
    }
    const std::size_t size = next_chunk_size_;
    next_chunk_size_ *= 2;
    void* memory = platform::allocate_chunk(size);
    chunks_.push_back({memory, size});
    next_ = reinterpret_cast<std::uintptr_t>(memory);
    end_ = next_ + size;
    return take(bytes, alignment);
}

void* Arena::take_shared(std::size_t bytes, std::size_t alignment) {
    next_chunk_size_ = largest_heap_chunk * 2;  // no more heap chunks
    if (bytes > shared_piece / 4) {  // room of its own; the current piece goes on
        SourceTextRoom::Room room = take_shared_room(bytes, alignment);
        keep(room);
        return room.bytes;
    }
    SourceTextRoom::Room room = take_shared_room(shared_piece, alignof(std::max_align_t));
    keep(room);
    const auto start = reinterpret_cast<std::uintptr_t>(room.bytes);
    if (start != end_) next_ = start;
    end_ = start + shared_piece;
    return take(bytes, alignment);
}

void Arena::keep(SourceTextRoom::Room& room) {
    kept_begin_ = reinterpret_cast<std::uintptr_t>(room.kept.data());
    kept_end_ = kept_begin_ + room.kept.size();
    if (shared_.empty() || shared_.back() != room.owner) shared_.push_back(std::move(room.owner));
}

}  // namespace edd
