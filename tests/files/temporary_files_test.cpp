// SPDX-License-Identifier: Apache-2.0
// The table an interruption reads: a slot takes a name up to the room it has, with its NUL;
// all eight slots can be held at once and a freed one is taken again; cleaning up removes
// or puts in place each file as its slot says, and leaves the table empty.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "files/temporary_files.hpp"
#include "test_support.hpp"

namespace edd {
namespace {

namespace tf = temporary_files;

std::string contents(const std::string& name) {
    std::ifstream in(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(TemporaryFiles, SlotsAndCleanUp) {
    const test::TempDir dir;
    const std::string longest(4095, 'n');
    const int fits = tf::add(longest, longest, tf::OnInterrupt::remove);
    EXPECT_NE(fits, -1);
    tf::forget(fits);
    EXPECT_EQ(tf::add(longest + 'n', "target", tf::OnInterrupt::remove), -1);
    EXPECT_EQ(tf::add("temporary", longest + 'n', tf::OnInterrupt::remove), -1);

    std::vector<int> slots;
    auto temporary = [&](std::size_t i) { return dir.str() + "/tmp" + std::to_string(i); };
    auto target = [&](std::size_t i) { return dir.str() + "/target" + std::to_string(i); };
    for (std::size_t i = 0; i < 8; ++i) {
        dir.write("tmp" + std::to_string(i), "new " + std::to_string(i));
        dir.write("target" + std::to_string(i), "old");
        slots.push_back(tf::add(temporary(i), target(i), i % 2 == 0 ? tf::OnInterrupt::remove : tf::OnInterrupt::put_in_place));
        ASSERT_NE(slots.back(), -1) << i;
    }
    EXPECT_EQ(tf::add(temporary(8), target(8), tf::OnInterrupt::remove), -1);  // all taken
    tf::forget(slots[2]);
    EXPECT_EQ(tf::add(temporary(2), target(2), tf::OnInterrupt::put_in_place), slots[2]);
    tf::set_action(slots[3], tf::OnInterrupt::remove);
    tf::forget(slots[4]);

    tf::clean_up();
    for (std::size_t i = 0; i < 8; ++i) {
        SCOPED_TRACE(i);
        const bool put_in_place = i == 1 || i == 2 || i == 5 || i == 7;
        EXPECT_EQ(std::filesystem::exists(temporary(i)), i == 4);
        EXPECT_EQ(contents(target(i)), put_in_place ? "new " + std::to_string(i) : "old");
    }
    // Nothing is left listed: every slot is free again.
    for (std::size_t i = 0; i < 8; ++i) slots[i] = tf::add("t", "u", tf::OnInterrupt::remove);
    EXPECT_NE(slots.back(), -1);
    for (int slot : slots) tf::forget(slot);
}

}  // namespace
}  // namespace edd
