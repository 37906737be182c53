// SPDX-License-Identifier: Apache-2.0
// Names as written on Windows: a name that exists is kept as it is; otherwise '\' separates
// directories and each missing component takes the first entry, in byte order, that
// matches it but for the case of ASCII letters.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

#include "files/file_names.hpp"
#include "test_support.hpp"

namespace edd {
namespace {

TEST(FileNames, WindowsLookup) {
    const test::TempDir dir;
    for (const char* file : {"Dir/sub/File.txt", "dup/Dup.h", "dup/dup.H", "dup/DUP.h", "a\\b", "\xC3\x84.h"})
        dir.write(file, "x");
    // Entries that differ only in case cannot coexist where names ignore case.
    if (!std::filesystem::exists(dir.path() / "dup" / "dup.H") || !std::filesystem::exists(dir.path() / "dup" / "DUP.h"))
        GTEST_SKIP() << "names in the temporary directory ignore case";
    const std::string root = dir.str() + "/";
    const struct {
        std::string name;
        std::optional<std::string> found;
    } cases[] = {
        {root + "Dir/sub/File.txt", root + "Dir/sub/File.txt"},
        {root + "DIR\\SUB\\file.TXT", root + "Dir/sub/File.txt"},
        {root + "dir//./Sub/../sub/FILE.txt", root + "Dir/./sub/../sub/File.txt"},
        {root + "dup/dup.h", root + "dup/DUP.h"},  // the smallest of three in byte order
        {root + "dup/Dup.h", root + "dup/Dup.h"},  // as written, since it exists
        {root + "a\\b", root + "a\\b"},
        {root + "\xC3\xA4.h", std::nullopt},  // only ASCII letters ignore case
        {root + "Dir/sub/File.txt/x", std::nullopt},
        {root + "nothing/File.txt", std::nullopt},
    };
    for (const auto& [name, found] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(find_file_name(name), found);
    }
}

}  // namespace
}  // namespace edd
