// Helpers shared by the preprocessor tests: a scratch directory for include files and a
// drain of lexer + preprocessor over an in-memory main file.
#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <unistd.h>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "frontend/token.hpp"
#include "frontend/token_kind.hpp"

namespace edd::test {

// A fresh directory under the system temporary directory, removed with its contents.
class TempDir {
public:
    TempDir() {
        static std::atomic<unsigned> counter{0};
        std::random_device seed;
        const auto base = std::filesystem::temp_directory_path();
        for (;;) {
            path_ = base / ("tarnwick_pp_" + std::to_string(::getpid()) + "_" + std::to_string(counter++) + "_" +
                            std::to_string(seed()));
            if (std::filesystem::create_directory(path_)) break;
        }
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    // The directory as an include path, in the form the preprocessor joins with "/".
    std::string str() const { return path_.string(); }

    // Writes `text` to the relative `name`, creating subdirectories as needed.
    void write(const std::string& name, std::string_view text) const {
        const auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream out(file, std::ios::binary);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
    }

private:
    std::filesystem::path path_;
};

inline bool is_blank_kind(std::uint32_t kind) { return kind == WHITESPACE || kind == NEWLINE || kind == COMMENT; }

struct Preprocessed {
    std::vector<Token> tokens;  // blanks dropped, END_OF_FILE not included
    std::string diagnostics;

    std::vector<std::string> spellings() const {
        std::vector<std::string> out;
        out.reserve(tokens.size());
        for (const Token& t : tokens) out.emplace_back(t.text());
        return out;
    }
};

// Runs `text` as main.ddl through the preprocessor until END_OF_FILE (or `limit` tokens).
inline Preprocessed preprocess(std::string text, std::vector<std::string> include_paths = {},
                               std::size_t limit = 1'000'000) {
    std::ostringstream diag;
    Lexer lexer = Lexer::from_text(std::move(text), "main.ddl", diag);
    Preprocessor pp(lexer, std::move(include_paths), diag);
    Preprocessed result;
    for (std::size_t i = 0; i < limit; ++i) {
        Token token = pp.next_token();
        if (token.is(END_OF_FILE)) break;
        if (!is_blank_kind(token.kind())) result.tokens.push_back(std::move(token));
    }
    result.diagnostics = diag.str();
    return result;
}

}  // namespace edd::test
