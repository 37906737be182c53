// SPDX-License-Identifier: Apache-2.0
// The small rules under every file name a description writes: which bytes fold together
// (ASCII letters, A to Z, and no neighbour of theirs) and where a name's directory ends.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "files/file_names.hpp"
#include "text/text_utils.hpp"

namespace edd {
namespace {

TEST(FileNames, LettersFoldAndNothingElse) {
    const struct {
        std::string_view a, b;
        bool equal;
    } cases[] = {
        {"AZaz09_.", "azAZ09_.", true},
        {"Main.DDL", "main.ddl", true},
        // The neighbours of A-Z are 32 apart from those of a-z too.
        {"@", "`", false},
        {"[", "{", false},
        {"\xC3\x84", "\xC3\xA4", false},
        {"ab", "abc", false},
        {"", "", true},
    };
    for (const auto& [a, b, equal] : cases) {
        SCOPED_TRACE(std::string(a) + " / " + std::string(b));
        EXPECT_EQ(equal_ignoring_case(a, b), equal);
        EXPECT_EQ(equal_ignoring_case(b, a), equal);
    }
}

// A source's includes are searched in its directory; an image is looked for beside the
// file that names it.
TEST(FileNames, DirectoryParts) {
    const struct {
        std::string name, part, of;
    } cases[] = {
        {"main.ddl", ".", "./"},
        {"lib/main.ddl", "lib", "lib"},
        {"lib\\main.ddl", "lib", "lib"},
        {"a/b\\c/main.ddl", "a/b\\c", "a/b\\c"},
        {"a\\b/main.ddl", "a\\b", "a\\b"},
        {"/main.ddl", "", ""},
    };
    for (const auto& [name, part, of] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(directory_part(name), part);
        EXPECT_EQ(directory_of(name), of);
    }
}

}  // namespace
}  // namespace edd
