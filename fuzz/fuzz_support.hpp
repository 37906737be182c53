// SPDX-License-Identifier: Apache-2.0
// What the fuzz targets share: a sink for diagnostics, a scratch directory that lives as
// long as the process, and the choice of profile. Kept header-only: each target is one
// translation unit plus the converter's libraries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include <unistd.h>

#include "diagnostics/diagnostics.hpp"
#include "files/input_files.hpp"
#include "validation/profile.hpp"

namespace edd::fuzz {

// Swallows everything; formatting still runs, so message building is exercised too.
class NullBuffer final : public std::streambuf {
protected:
    int overflow(int c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

// Never destroyed, so that it outlives every use, even at the end of the process.
inline std::ostream& null_stream() {
    static NullBuffer* const buffer = new NullBuffer;
    static std::ostream* const stream = new std::ostream(buffer);
    return *stream;
}

// A directory of this process under the system temporary directory, removed at exit.
class ScratchDirectory {
public:
    ScratchDirectory() {
        const auto base = std::filesystem::temp_directory_path();
        for (unsigned n = 0;; ++n) {
            path_ = base / ("tarnwick_fuzz_" + std::to_string(::getpid()) + "_" + std::to_string(n));
            if (std::filesystem::create_directory(path_)) break;
        }
    }
    ~ScratchDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    std::string str() const { return path_.string(); }
    std::string file(std::string_view name) const { return (path_ / name).string(); }

    void write(std::string_view name, std::string_view bytes) const {
        std::ofstream out(path_ / name, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }

private:
    std::filesystem::path path_;
};

// Derived from the length, so every profile sees every kind of input without spending an
// input byte on the choice.
inline const Profile& profile_for(std::size_t size) {
    constexpr std::string_view names[] = {"HART", "PROFIBUS", ""};
    return select_profile(names[size % 3]);
}

inline std::string as_text(const std::uint8_t* data, std::size_t size) {
    return std::string(reinterpret_cast<const char*>(data), size);
}

}  // namespace edd::fuzz
