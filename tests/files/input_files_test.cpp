// SPDX-License-Identifier: Apache-2.0
// The files a run reads: a pipe ("tarnwick /dev/stdin") is read in blocks joined at the
// end, and gives what was sent, up to its bound and not a byte more; each file is recorded
// once, under the name it was first read by (for messages) and the name it was opened by
// (for the dependency file). A source text outlives the files that read it and ends in the
// NUL the lexer stops at.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "files/input_files.hpp"
#include "test_support.hpp"

namespace edd {
namespace {

TEST(InputFiles, PipesWholeAndEachFileOnce) {
    const test::TempDir dir;
    const std::string pipe = dir.str() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string sent(3'000'000, 'x');
    for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<char>('a' + i % 23);
    std::thread writer([&] { std::ofstream(pipe, std::ios::binary).write(sent.data(), static_cast<std::streamsize>(sent.size())); });
    InputFiles files;
    const std::optional<std::string> received = files.read(pipe);
    writer.join();
    ASSERT_TRUE(received);
    EXPECT_TRUE(*received == sent);

    dir.write("lib/Defs.h", "defs");
    const std::string windows = dir.str() + "\\LIB\\defs.H";
    EXPECT_EQ(files.read(windows), "defs");
    EXPECT_EQ(files.read(dir.str() + "/lib/./Defs.h"), "defs");
    EXPECT_FALSE(files.read(dir.str() + "/lib"));  // a directory is no file to read
    EXPECT_EQ(files.names(), (std::vector<std::string>{pipe, windows}));
    EXPECT_EQ(files.dependencies(), (std::vector<std::string>{pipe, dir.str() + "/lib/Defs.h"}));
    ASSERT_NE(files.find(dir.str() + "/lib/../lib/Defs.h"), nullptr);
    EXPECT_EQ(*files.find(dir.str() + "/lib/../lib/Defs.h"), windows);
}

TEST(InputFiles, PipesUpToTheirBound) {
    const test::TempDir dir;
    const std::string pipe = dir.str() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::signal(SIGPIPE, SIG_IGN);  // a reader that stops early fails the test, not the process
    for (const std::size_t size : {InputFiles::max_stream_size, InputFiles::max_stream_size + 1}) {
        SCOPED_TRACE(size);
        std::thread writer([&] { std::ofstream(pipe, std::ios::binary) << std::string(size, 'p'); });
        InputFiles files;
        try {
            const std::optional<std::string> received = files.read(pipe, "shown.ddl");
            EXPECT_EQ(size, InputFiles::max_stream_size);
            EXPECT_EQ(received.value_or("").size(), size);
        } catch (const FileTooLarge& e) {
            EXPECT_EQ(size, InputFiles::max_stream_size + 1);
            EXPECT_STREQ(e.what(), "File shown.ddl is a pipe or device that did not end within 16 MiB.");
        }
        writer.join();
    }
}

TEST(InputFiles, SourceTextsOutliveTheirReading) {
    const test::TempDir dir;
    // Small ones come from the heap; large ones share chunks until one is full.
    const std::vector<std::size_t> sizes = {0, 100, 70'000, 20'000'000, 20'000'000, 300'000};
    std::vector<std::string> written;
    std::vector<SourceText> texts;
    {
        InputFiles files;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            std::string text(sizes[i], static_cast<char>('a' + i));
            if (!text.empty()) text.back() = 'z';
            const std::string name(1, static_cast<char>('a' + i));
            dir.write(name, text);
            written.push_back(std::move(text));
            texts.push_back(*files.read_source(dir.str() + "/" + name));
        }
    }
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_TRUE(texts[i].view() == written[i]);
        EXPECT_EQ(texts[i].view().data()[sizes[i]], '\0');
    }
}

}  // namespace
}  // namespace edd
