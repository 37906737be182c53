// SPDX-License-Identifier: Apache-2.0
// A growing array moves as it doubles while it is small, then grows in place in a reserved
// range until the range is full, and only then moves, once, into a range many times larger.
// Through every move its elements keep their values, and a copy holds its own.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <vector>

#include "files/growing_array.hpp"

namespace edd {
namespace {

// A page an element: sixteen of them fit on the heap, and the first range (64 MiB) holds 16,384.
struct Page {
    std::size_t number = 0;
    std::array<char, 4088> rest{};
};
static_assert(sizeof(Page) == 4096);

TEST(GrowingArray, GrowsInPlaceUntilItsRangeIsFull) {
    constexpr std::size_t count = 16'384 + 100;
    GrowingArray<Page> pages;
    std::vector<std::size_t> moved_at;
    for (std::size_t i = 0; i < count; ++i) {
        const Page* before = pages.elements().data();
        pages.emplace_back().number = i;
        if (i > 0 && pages.elements().data() != before) moved_at.push_back(i);
    }
    EXPECT_EQ(moved_at, (std::vector<std::size_t>{1, 2, 4, 8, 16, 16'384}));

    const GrowingArray<Page> copy = pages;
    ASSERT_EQ(copy.size(), count);
    EXPECT_NE(copy.elements().data(), pages.elements().data());
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(pages[i].number, i);
        ASSERT_EQ(copy[i].number, i);
    }
    pages.grow_to(count + 3);
    EXPECT_EQ(pages[count + 2].number, 0u);
}

}  // namespace
}  // namespace edd
