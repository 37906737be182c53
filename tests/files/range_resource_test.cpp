// SPDX-License-Identifier: Apache-2.0
// A pool's chunks are carved in order from the range, and each is usable as soon as it is
// given; once the range is full the heap serves, and each block goes back where it came
// from (a sanitizer build checks the heap's side).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "files/range_resource.hpp"

namespace edd {
namespace {

TEST(RangeResource, CarvesInOrderThenTurnsToTheHeap) {
    RangeResource room(std::size_t{2} << 20);  // one huge page's worth of address space
    const std::size_t chunk = std::size_t{300} << 10;
    std::vector<std::pair<char*, std::size_t>> taken;
    for (int i = 0; i < 8; ++i) {
        const std::size_t size = chunk + static_cast<std::size_t>(i);  // ends that need aligning
        char* bytes = static_cast<char*>(room.allocate(size, 64));
        std::memset(bytes, i, size);
        taken.emplace_back(bytes, size);
    }
    for (int i = 1; i < 6; ++i) {  // six fit, each after the one before at its alignment
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(taken[i].first) % 64, 0u);
        EXPECT_EQ(taken[i].first - taken[i - 1].first, static_cast<std::ptrdiff_t>((chunk + i - 1 + 63) / 64 * 64));
    }
    const auto outside = [&](const char* bytes) {  // the range starts where the first chunk does
        const auto at = reinterpret_cast<std::uintptr_t>(bytes), start = reinterpret_cast<std::uintptr_t>(taken[0].first);
        return at < start || at >= start + (std::size_t{2} << 20);
    };
    EXPECT_TRUE(outside(taken[6].first) && outside(taken[7].first));
    for (int i = 0; i < 8; ++i) EXPECT_EQ(taken[i].first[taken[i].second - 1], static_cast<char>(i));
    for (const auto& [bytes, size] : taken) room.deallocate(bytes, size, 64);
}

}  // namespace
}  // namespace edd
