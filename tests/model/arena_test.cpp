// SPDX-License-Identifier: Apache-2.0
// The arena hands out memory aligned as asked and never the same bytes twice: from heap
// chunks that double, from room shared with large source texts read meanwhile, and from
// room of their own for large requests.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "files/source_text.hpp"
#include "model/arena.hpp"

namespace edd {
namespace {

TEST(Arena, AlignedAndDisjoint) {
    constexpr std::size_t mib = std::size_t{1} << 20;
    // Mostly small requests, then requests large enough to leave the heap chunks, and
    // requests of room of their own.
    std::vector<std::size_t> sizes;
    std::mt19937 random(20261124u);
    for (int i = 0; i < 3000; ++i) sizes.push_back(1 + random() % 300);
    for (int i = 0; i < 30; ++i) sizes.push_back(300'000);
    for (std::size_t size : {2 * mib - 8, 2 * mib, 5 * mib}) sizes.push_back(size);
    for (int i = 0; i < 100; ++i) sizes.push_back(1 + random() % 30);

    struct Taken {
        unsigned char* at;
        std::size_t size;
        unsigned char fill;
    };
    std::vector<Taken> taken;
    std::vector<SourceTextRoom::Room> texts;
    Arena arena;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        if (i % 700 == 350) {  // a large text read in the middle of the arena's room
            texts.push_back(SourceTextRoom().take(100'000));
            std::memset(texts.back().bytes, 0xEE, 100'000);
            taken.push_back({reinterpret_cast<unsigned char*>(texts.back().bytes), 100'000, 0xEE});
        }
        const std::size_t alignment = sizes[i] == 2 * mib - 8 ? 8 : std::size_t{1} << (random() % 7);
        auto* at = static_cast<unsigned char*>(arena.resource()->allocate(sizes[i], alignment));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(at) % alignment, 0u) << i;
        const auto fill = static_cast<unsigned char>(i * 37 + 1);
        std::memset(at, fill, sizes[i]);
        taken.push_back({at, sizes[i], fill});
    }
    for (const Taken& t : taken)
        ASSERT_TRUE(std::all_of(t.at, t.at + t.size, [&t](unsigned char c) { return c == t.fill; }));
    EXPECT_EQ(arena.copy("text"), "text");
    EXPECT_EQ(arena.word("VARIABLE").data(), arena.word("VARIABLE").data());  // the keyword table's own text
}

}  // namespace
}  // namespace edd
