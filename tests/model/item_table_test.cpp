// SPDX-License-Identifier: Apache-2.0
// The item index: open addressing over stored hashes, doubled in place as items come and by
// reserve ahead of an import. Every name it holds is found as its own item; no other is. A
// large table grows in place: its items stay where they are.
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
    const Item* first = nullptr;
    for (int i = 0; i < count; ++i) {
        if (i == 5'000) first = &table.items()[0];
        if (i == count / 2) table.reserve(3 * count / 2);
        table.insert(Item(arena, ItemType::VARIABLE, name_of(i), {}));
    }
    EXPECT_EQ(&table.items()[0], first);
    const ItemTable copy = table;  // as the checker keeps one before LIKE resolution
    for (const ItemTable* held : {static_cast<const ItemTable*>(&table), &copy}) {
        ASSERT_EQ(held->size(), static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            const std::string name = name_of(i);
            const Item* item = held->find(name);
            ASSERT_NE(item, nullptr) << name;
            EXPECT_EQ(item->name(), name);
            EXPECT_EQ(item, &held->items()[static_cast<std::size_t>(i)]);
        }
        for (const char* absent : {"v", "v50000", "w1", "V1", ""}) EXPECT_EQ(held->find(absent), nullptr) << absent;
    }
    EXPECT_THROW(table.get("w1"), std::invalid_argument);
}

}  // namespace
}  // namespace edd
