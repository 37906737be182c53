// SPDX-License-Identifier: Apache-2.0
// When two names are one file, which decides whether an output would overwrite the input or
// another output: a regular file under any spelling or link, hard links included; two names
// of nothing yet that resolve to one path; never a device, a directory, or a file beside
// a name of nothing.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "files/input_files.hpp"
#include "test_support.hpp"

namespace edd {
namespace {

namespace fs = std::filesystem;

TEST(SameFile, OneFileUnderManyNames) {
    const test::TempDir dir;
    const auto at = [&](const char* relative) { return dir.str() + "/" + relative; };
    dir.write("sub/a.ddl", "a");
    dir.write("sub/b.ddl", "b");
    fs::create_hard_link(at("sub/a.ddl"), at("hard.ddl"));
    fs::create_symlink("sub/a.ddl", at("soft.ddl"));
    struct Case {
        std::string a, b;
        bool same;
    };
    const Case cases[] = {
        {at("sub/a.ddl"), at("sub/../sub/./a.ddl"), true},
        {at("sub/a.ddl"), at("hard.ddl"), true},
        {at("soft.ddl"), at("sub/a.ddl"), true},
        {at("sub/a.ddl"), at("sub/b.ddl"), false},
        {at("new.xml"), at("sub/../new.xml"), true},  // neither exists yet
        {at("new.xml"), at("sub/new.xml"), false},
        {at("sub/a.ddl"), at("sub/a.ddl/x"), false},  // one exists, one cannot
        {at("new.xml"), at("sub/a.ddl"), false},
        {"/dev/null", "/dev/null", false},
        {at("sub"), at("sub/."), false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.a + " ~ " + c.b);
        EXPECT_EQ(same_file(c.a, c.b), c.same);
        EXPECT_EQ(same_file(c.b, c.a), c.same);
    }
}

}  // namespace
}  // namespace edd
