// SPDX-License-Identifier: Apache-2.0
// The item index: open addressing over stored hashes, grown by doubling as items come and
// by reserve ahead of an import. Every name it holds is found as its own item; no other is.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "model/description.hpp"

namespace edd {
namespace {

std::string name_of(int i) { return std::string("v").append(std::to_string(i)); }

TEST(ItemTable, FindsEveryNameItHoldsAndNoOther) {
    constexpr int count = 50'000;
    Arena arena;
    ItemTable table;
    for (int i = 0; i < count; ++i) {
        if (i == count / 2) table.reserve(3 * count / 2);
        table.insert(Item(arena, ItemType::VARIABLE, name_of(i), {}));
    }
    ASSERT_EQ(table.size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const std::string name = name_of(i);
        const Item* item = table.find(name);
        ASSERT_NE(item, nullptr) << name;
        EXPECT_EQ(item->name(), name);
        EXPECT_EQ(item, &table.items()[static_cast<std::size_t>(i)]);
    }
    for (const char* absent : {"v", "v50000", "w1", "V1", ""}) EXPECT_EQ(table.find(absent), nullptr) << absent;
    EXPECT_THROW(table.get("w1"), std::invalid_argument);
}

}  // namespace
}  // namespace edd
