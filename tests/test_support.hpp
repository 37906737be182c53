// SPDX-License-Identifier: Apache-2.0
// What the unit tests share: a scratch directory removed with everything in it.
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <unistd.h>

namespace edd::test {

class TempDir {
public:
    TempDir() {
        static std::atomic<unsigned> counter{0};
        const auto base = std::filesystem::temp_directory_path();
        do {
            path_ = base / ("tarnwick_test_" + std::to_string(::getpid()) + "_" + std::to_string(counter++));
        } while (!std::filesystem::create_directory(path_));
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string str() const { return path_.string(); }

    // Writes `text` to `name` below the directory, making the directories it needs.
    void write(const std::string& name, std::string_view text) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary).write(text.data(), static_cast<std::streamsize>(text.size()));
    }

private:
    std::filesystem::path path_;
};

}  // namespace edd::test
