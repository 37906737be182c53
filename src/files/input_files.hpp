// SPDX-License-Identifier: Apache-2.0
// The files a run reads (the input, included and imported descriptions, dictionaries,
// images). Each is read whole through here, so that the run knows them all: an output
// must not overwrite one of them, and a build learns what the document depends on. A name
// that does not open as written is looked up as on Windows (files/file_names.hpp).
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "files/platform.hpp"
#include "files/source_text.hpp"

namespace edd {

// True when both name one regular file, or neither exists yet and both name the same path;
// devices and pipes are never the same file in this sense.
bool same_file(const std::string& a, const std::string& b);

// A file beyond the bounds of InputFiles; its message names the file.
class FileTooLarge : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class InputFiles {
public:
    // Far beyond any description, dictionary or image, and refused from its size before
    // anything is read.
    static constexpr std::size_t max_size = std::size_t{1} << 30;
    // A pipe or device (whose size nobody knows) must end within this many bytes, with no
    // pause longer than the patience, so that one that never ends (/dev/zero, a pipe
    // nobody writes to) costs a second and a few megabytes. Write larger ones to a file.
    static constexpr std::size_t max_stream_size = std::size_t{16} << 20;
    static constexpr int stream_patience_ms = 1000;

    // The bytes of a file; nothing when it cannot be opened or read (a directory, say).
    // Throws FileTooLarge beyond the bounds, naming the file `shown` (by default `name`).
    std::optional<std::string> read(const std::string& name, const std::string& shown = std::string());
    // The same for a source the lexer reads, whose tokens point into it for the rest of the
    // run: read into room that is not cleared first.
    std::optional<SourceText> read_source(const std::string& name);
    // The file can be opened for reading and is not a directory.
    static bool readable(const std::string& name);
    // Of the file read(name) would read; nothing when it cannot be opened.
    static std::optional<platform::FileInfo> inspect(const std::string& name);
    // Every file read, each once under the name it was first read by, in that order.
    const std::vector<std::string>& names() const { return names_; }
    // What a document made from the files depends on: every file read, under the name it
    // was opened by (which differs from names() where a name was looked up the Windows
    // way), and every file looked for in vain that would have been read had it
    // been there (add_missing), in the order met.
    const std::vector<std::string>& dependencies() const { return dependencies_; }
    void add_missing(const std::string& name) {
        if (missing_.insert(name).second) dependencies_.push_back(name);
    }
    // The name of the file read that `path` also names, or null.
    const std::string* find(const std::string& path) const;
    // `when_read` is called if the file `name` names now is read later.
    void watch(const std::string& name, std::function<void()> when_read);

private:
    void record(const std::string& name, const std::string& path, const platform::FileId& id);

    std::vector<std::string> names_;
    std::vector<std::string> dependencies_;
    std::unordered_set<std::string> missing_;
    std::vector<platform::FileId> ids_;  // one per name
    struct Watch {
        platform::FileId id;
        std::function<void()> when_read;
    };
    std::vector<Watch> watches_;
    SourceTextRoom texts_;
};

}  // namespace edd
