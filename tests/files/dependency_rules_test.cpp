// SPDX-License-Identifier: Apache-2.0
// The rules as make reads them: each name tidied ("." parts and doubled slashes dropped,
// ".." kept) and escaped so that make reads it back as the one file it is.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "files/dependency_file.hpp"

namespace edd {
namespace {

TEST(DependencyFile, RulesAsMakeReadsThem) {
    const struct {
        std::string name;  // the one prerequisite
        std::string written;
    } cases[] = {
        {"a.h", "a.h"},
        {"./img//a.png", "img/a.png"},
        {"/usr/./lib/", "/usr/lib"},
        {"//x.h", "/x.h"},
        {"lib/../b.h", "lib/../b.h"},
        {".", "."},
        {"./", "."},
        {"a b.h", "a\\ b.h"},
        {"a\tb.h", "a\\\tb.h"},
        // Backslashes count only before a blank: 2N+1 of them then, else as written.
        {"a\\ b.h", "a\\\\\\ b.h"},
        {"a\\\\ b.h", "a\\\\\\\\\\ b.h"},
        {"dir\\a.h", "dir\\a.h"},
        {"x\\", "x\\"},
        {"#1$2.gif", "\\#1$$2.gif"},
    };
    for (const auto& [name, written] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(make_dependency_rules("out.xml", {name}), "out.xml: " + written + "\n" + written + ":\n");
    }
    EXPECT_EQ(make_dependency_rules("./build//my out.xml", {"a.ddl", "b c.h"}),
              "build/my\\ out.xml: a.ddl b\\ c.h\na.ddl:\nb\\ c.h:\n");
    EXPECT_EQ(make_dependency_rules("out.xml", {}), "out.xml:\n");
}

}  // namespace
}  // namespace edd
