// SPDX-License-Identifier: Apache-2.0
// Names a make rule cannot hold are found before anything is written: a line end anywhere,
// a ':' anywhere but after a Windows drive letter (and there only on Windows).
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "files/dependency_file.hpp"

namespace edd {
namespace {

TEST(DependencyFile, NamesMakeWouldMisread) {
#ifdef _WIN32
    const std::optional<std::string> drive;
#else
    const std::optional<std::string> drive = "C:/lib/a.h";
#endif
    const struct {
        std::string target;
        std::vector<std::string> prerequisites;
        std::optional<std::string> refused;
    } cases[] = {
        {"out.xml", {"a b.h", "$x#.h", "C"}, std::nullopt},
        {"out.xml", {"ok.h", "two\nlines.h", "a:b.h"}, "two\nlines.h"},
        {"out.xml", {"cr\r.h"}, "cr\r.h"},
        {"dir/a:b.xml", {"ok.h"}, "dir/a:b.xml"},
        {"out.xml", {"C:/lib/a.h"}, drive},
        {"out.xml", {"C:x.h"}, "C:x.h"},
        {"out.xml", {"1:/x.h"}, "1:/x.h"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.target + " " + c.prerequisites.back());
        EXPECT_EQ(unwritable_dependency_name(c.target, c.prerequisites), c.refused);
    }
}

}  // namespace
}  // namespace edd
