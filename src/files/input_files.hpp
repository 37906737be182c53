// The files a run reads (the input, included and imported descriptions, dictionaries,
// images). Each is read whole through here, so that the run knows them all: an output
// must not overwrite one of them.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace edd {

// True when both name one regular file, or neither exists yet and both name the same path;
// devices and pipes are never the same file in this sense.
bool same_file(const std::string& a, const std::string& b);

class InputFiles {
public:
    // The bytes of a regular file; nothing when it cannot be opened or read (a directory,
    // say).
    std::optional<std::string> read(const std::string& path);
    // The file can be opened for reading and is not a directory.
    static bool readable(const std::string& path);
    // Every file read, each once under the name it was first read by, in that order.
    const std::vector<std::string>& names() const { return names_; }
    // The name of the file read that `path` also names, or null.
    const std::string* find(const std::string& path) const;

private:
    void record(const std::string& path, int fd);

    std::vector<std::string> names_;
    std::vector<std::pair<dev_t, ino_t>> ids_;  // one per name
};

}  // namespace edd
