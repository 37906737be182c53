// SPDX-License-Identifier: Apache-2.0
// Where an IMPORT by identification finds a HART description: mm/tt/rrdd/ below the first
// include path that has a *.ddl there, else below the current directory; the first file
// in name order.
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "model/identification.hpp"
#include "model/simple_value.hpp"
#include "test_support.hpp"
#include "validation/profile.hpp"

namespace edd {
namespace {

Arena arena;

Identification device(const char* manufacturer, const char* type, const char* revision, const char* dd) {
    auto number = [](const char* text) { return ValuePtr(arena.make<SimpleValue>(ValueKind::INTEGER, text)); };
    return {number(manufacturer), number(type), number(revision), number(dd), {}, {}, {}};
}

TEST(HartLibrary, Search) {
    const test::TempDir dir;
    const auto at = [&](const char* relative) { return dir.str() + "/" + relative; };
    for (const char* file : {"lib/26/07/0102/zeta.ddl", "lib/26/07/0102/beta.ddl", "lib/26/07/0102/alpha.txt",
                             "other/26/07/0102/a.ddl", "cwd/26/07/0103/here.ddl", "lib/100/1ff/0a10/dev.ddl"})
        dir.write(file, "\n");
    std::filesystem::create_directories(at("lib/26/07/0102/aaa.ddl"));  // a directory, not a file
    const HartProfile hart;
    const Identification id = device("0x26", "7", "1", "2");
    EXPECT_EQ(hart.import_file(id, {at("missing"), at("lib"), at("other")}), "26/07/0102/beta.ddl");
    EXPECT_EQ(hart.import_file(id, {at("other"), at("lib")}), "26/07/0102/a.ddl");
    EXPECT_EQ(hart.import_file(device("256", "0x1FF", "10", "16"), {at("lib")}), "100/1ff/0a10/dev.ddl");

    const auto original = std::filesystem::current_path();
    std::filesystem::current_path(at("cwd"));
    EXPECT_EQ(hart.import_file(device("0x26", "7", "1", "3"), {at("lib"), ""}), "26/07/0103/here.ddl");
    EXPECT_EQ(hart.import_file(device("0x26", "7", "9", "9"), {at("lib")}), "");
    std::filesystem::current_path(original);

    Identification by_name = id;
    by_name.manufacturer = arena.make<SimpleValue>(ValueKind::IDENTIFIER, "acme");
    EXPECT_THROW(
        try { hart.import_file(by_name, {at("lib")}); } catch (const std::runtime_error& e) {
            EXPECT_STREQ(e.what(), "No Identifiers supported.");
            throw;
        },
        std::runtime_error);
}

}  // namespace
}  // namespace edd
