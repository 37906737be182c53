// SPDX-License-Identifier: Apache-2.0
// The memory of the tokens a preprocessor holds and of its macros. Expansions come and go
// by the thousand while the macros stay; from the heap, the macros pushed its top on page
// by page, and each new page was first touched by an expansion, a fault at a time. Here the
// small blocks are carved from a range reserved for them, made usable ahead of need in
// pieces whose pages are taken in one call, and a block given back waits in a list of its
// size for the next that asks for as much. Larger blocks (long token lists, the macro
// index) are few, come and go one by one, and come from the heap.
#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

#include "files/reserved_range.hpp"

namespace edd {

class TokenMemory final : public std::pmr::memory_resource {
public:
    TokenMemory();
    ~TokenMemory() override;
    TokenMemory(const TokenMemory&) = delete;
    TokenMemory& operator=(const TokenMemory&) = delete;

private:
    static constexpr std::size_t grain = 16;  // sizes are rounded up to it, and blocks aligned to it
    static constexpr std::size_t largest_small = std::size_t{4} << 10;
    // Address space only, but for what is used: more than the macros of any description.
    // Beyond it, pieces come from the heap.
    static constexpr std::size_t room_size = std::size_t{16} << 20;
    static constexpr std::size_t piece_size = std::size_t{64} << 10;

    struct FreeBlock {
        FreeBlock* next;
    };
    static bool small(std::size_t bytes, std::size_t alignment) { return bytes <= largest_small && alignment <= grain; }
    static std::size_t size_class(std::size_t bytes) { return bytes == 0 ? 1 : (bytes + grain - 1) / grain; }

    void* do_allocate(std::size_t bytes, std::size_t alignment) override;
    void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override;
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }
    void* carve(std::size_t bytes);
    void take_piece();

    ReservedRange room_;
    std::size_t room_used_ = 0;  // by the pieces taken from it
    char* next_ = nullptr;       // the rest of the current piece
    char* end_ = nullptr;
    std::array<FreeBlock*, largest_small / grain + 1> free_{};  // by size class
    std::vector<char*> heap_pieces_;                             // once the room is full
};

}  // namespace edd
