// SPDX-License-Identifier: Apache-2.0
// A file the run writes, whole or not at all: one abandoned before it is complete leaves
// the previous file and no temporary. Through symbolic links, the file at the end of a chain
// is replaced and every link stays; a relative link is read from its own directory, whatever
// the current one; a cycle of links ends the walk, not the run.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "files/output_file.hpp"
#include "test_support.hpp"

namespace edd {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& name) {
    std::ifstream in(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void write_through(const fs::path& name, const std::string& bytes) {
    OutputFile file(name.string());
    file.write(bytes);
    file.commit();
}

TEST(OutputFile, AbandonedWriteLeavesThePreviousFile) {
    const test::TempDir dir;
    dir.write("doc.xml", "previous");
    {
        OutputFile file((dir.path() / "doc.xml").string());
        file.write("half a docu");
    }
    EXPECT_EQ(contents(dir.path() / "doc.xml"), "previous");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 1);
}

TEST(OutputFile, WritesThroughLinkChains) {
    const test::TempDir dir;
    dir.write("real.xml", "previous");
    fs::create_directories(dir.path() / "links/deeper");
    fs::create_symlink("../real.xml", dir.path() / "links/first");
    fs::create_symlink("../first", dir.path() / "links/deeper/second");
    write_through(dir.path() / "links/deeper/second", "new");
    EXPECT_TRUE(fs::is_symlink(dir.path() / "links/first"));
    EXPECT_TRUE(fs::is_symlink(dir.path() / "links/deeper/second"));
    EXPECT_EQ(contents(dir.path() / "real.xml"), "new");
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), fs::directory_iterator()), 2);  // no temporary left

    fs::create_symlink("loop_b", dir.path() / "loop_a");
    fs::create_symlink("loop_a", dir.path() / "loop_b");
    write_through(dir.path() / "loop_a", "looped");
    EXPECT_EQ(contents(dir.path() / "loop_a"), "looped");
}

}  // namespace
}  // namespace edd
