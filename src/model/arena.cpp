// SPDX-License-Identifier: Apache-2.0
#include "model/arena.hpp"

#include <algorithm>

#include "files/platform.hpp"
#include "frontend/keywords.hpp"

namespace edd {

namespace {

// Chunks double from 64 KiB up to this size and stay there, so that a small description
// takes little memory and the tail left unused in a large one stays small.
constexpr std::size_t largest_chunk = std::size_t{4} << 20;

}  // namespace

std::string_view copy_word(std::pmr::memory_resource& resource, std::string_view text) {
    const std::string_view spelling = keyword_spelling(text);
    return spelling.empty() ? copy_text(resource, text) : spelling;
}

Arena::~Arena() {
    for (const Chunk& chunk : chunks_) platform::free_chunk(chunk.memory, chunk.size);
}

void* Arena::take_new_chunk(std::size_t bytes, std::size_t alignment) {
    // A request larger than a quarter chunk gets a chunk of its own; the current one goes on.
    const std::size_t needed = bytes + alignment;
    if (needed > largest_chunk / 4) {
        void* memory = platform::allocate_chunk(needed);
        chunks_.push_back({memory, needed});
        const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(memory);
        return reinterpret_cast<void*>((start + alignment - 1) & ~(alignment - 1));
    }
    const std::size_t size = next_chunk_size_;
    next_chunk_size_ = std::min(2 * next_chunk_size_, largest_chunk);
    void* memory = platform::allocate_chunk(size);
    chunks_.push_back({memory, size});
    next_ = reinterpret_cast<std::uintptr_t>(memory);
    end_ = next_ + size;
    return take(bytes, alignment);
}

}  // namespace edd
