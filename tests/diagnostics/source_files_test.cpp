// SPDX-License-Identifier: Apache-2.0
// The table of source file names: one index per name however often it is interned, index 0
// for the empty name, and every name still found after the table has grown many times
// (its index keys point into the stored names, which must never move).
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "diagnostics/source_files.hpp"

namespace edd {
namespace {

std::string name_of(int i) { return std::string("f").append(std::to_string(i)).append(".ddl"); }

TEST(SourceFiles, OneIndexPerNameWhileGrowing) {
    EXPECT_EQ(intern_file_name(""), 0u);
    std::vector<FileIndex> indices;
    for (int i = 0; i < 5000; ++i) indices.push_back(intern_file_name(name_of(i)));
    for (int i = 0; i < 5000; ++i) {
        const std::string name = name_of(i);
        ASSERT_EQ(intern_file_name(name), indices[static_cast<std::size_t>(i)]) << name;
        ASSERT_EQ(file_name_of(indices[static_cast<std::size_t>(i)]), name);
    }
    EXPECT_EQ(indices.back() - indices.front(), 4999u);
    EXPECT_EQ(file_name_of(0), "");
}

}  // namespace
}  // namespace edd
