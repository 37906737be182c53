// SPDX-License-Identifier: Apache-2.0
// Small blocks are carved from the room and, past its end, from heap pieces, none of them
// overlapping; a block given back serves the next request of its size class; large blocks
// come and go on the heap (a sanitizer build checks that side).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

#include "frontend/token_memory.hpp"

namespace edd {
namespace {

TEST(TokenMemory, CarvesWithoutOverlapAndReusesBySize) {
    TokenMemory memory;
    constexpr std::size_t size = 4000, count = 5000;  // 20 MB: past the room's 16 MiB
    std::vector<unsigned char*> blocks;
    for (std::size_t i = 0; i < count; ++i) {
        auto* block = static_cast<unsigned char*>(memory.allocate(size, 8));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u);
        std::memset(block, static_cast<int>(i % 251), size);
        blocks.push_back(block);
    }
    for (std::size_t i = 0; i < count; ++i)
        ASSERT_TRUE(blocks[i][0] == i % 251 && blocks[i][size - 1] == i % 251) << i;

    for (std::size_t i = 0; i < count; i += 2) memory.deallocate(blocks[i], size, 8);
    std::set<unsigned char*> given_back;
    for (std::size_t i = 0; i < count; i += 2) given_back.insert(blocks[i]);
    for (std::size_t i = 0; i < count; i += 2)  // the same class: 3,985 to 4,000 bytes
        EXPECT_TRUE(given_back.contains(static_cast<unsigned char*>(memory.allocate(size - 15, 8))));

    void* large = memory.allocate(std::size_t{1} << 20, 16);
    std::memset(large, 1, std::size_t{1} << 20);
    memory.deallocate(large, std::size_t{1} << 20, 16);
}

}  // namespace
}  // namespace edd
