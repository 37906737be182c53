// SPDX-License-Identifier: Apache-2.0
// The memory of the tokens a preprocessor holds and of its macros. Expansions come and go
// by the thousand while the macros stay; from the heap, the macros pushed its top on page
// by page, and each new page was first touched by an expansion, a fault at a time. Here a
// pool serves the small blocks, each freed one going to the next of its size, from chunks
// in a range of their own made usable ahead of need. Larger blocks (long token lists, the
// macro table's buckets) are few, come and go one by one, and come from the heap.
#pragma once

#include <cstddef>
#include <memory_resource>
#include <new>

#include "files/range_resource.hpp"

namespace edd {

class TokenMemory final : public std::pmr::memory_resource {
public:
    TokenMemory() : room_(room_size), pool_(options(), &room_) {}

private:
    static constexpr std::size_t largest_pooled = std::size_t{4} << 10;
    // Address space only, but for what is used; more than the macros of any description.
    static constexpr std::size_t room_size = std::size_t{16} << 20;

    static std::pmr::pool_options options() {
        std::pmr::pool_options options;
        options.max_blocks_per_chunk = 256;
        options.largest_required_pool_block = largest_pooled;
        return options;
    }

    void* do_allocate(std::size_t bytes, std::size_t alignment) override {
        if (bytes <= largest_pooled) return pool_.allocate(bytes, alignment);
        return ::operator new(bytes, std::align_val_t(alignment));
    }
    void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override {
        if (bytes <= largest_pooled) return pool_.deallocate(memory, bytes, alignment);
        ::operator delete(memory, bytes, std::align_val_t(alignment));
    }
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }

    RangeResource room_;
    std::pmr::unsynchronized_pool_resource pool_;
};

}  // namespace edd
