// SPDX-License-Identifier: Apache-2.0
// The program's name in the usage line is the first argument without its directory, which
// Windows writes with '\' and POSIX with '/'.
#include <gtest/gtest.h>

#include <string_view>
#include <utility>

#include "driver/command_line.hpp"

namespace edd {
namespace {

TEST(CommandLine, ProgramNameWithoutDirectory) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"C:\\Tools\\tarnwick.exe", "tarnwick.exe"}, {"/usr/bin/tarnwick", "tarnwick"},
        {"..\\bin/tarnwick", "tarnwick"},             {"bin/..\\tarnwick.exe", "tarnwick.exe"},
        {"tarnwick", "tarnwick"},                     {"bin/", ""},
    };
    for (const auto& [argument, name] : cases) EXPECT_EQ(program_name_of(argument), name) << argument;
}

}  // namespace
}  // namespace edd
