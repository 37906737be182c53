// The files a run reads (the input, included and imported descriptions, dictionaries,
// images). Each is read whole through here, so that the run knows them all: an output
// must not overwrite one of them, and a build learns what the document depends on. A name
// that does not open as written is looked up as on Windows (files/file_names.hpp).
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace edd {

// True when both name one regular file, or neither exists yet and both name the same path;
// devices and pipes are never the same file in this sense.
bool same_file(const std::string& a, const std::string& b);

// A file longer than InputFiles::max_size, or one that does not end (/dev/zero). Its
// message names the file.
class FileTooLarge : public std::runtime_error {
public:
    explicit FileTooLarge(const std::string& name);
};

class InputFiles {
public:
    // Far beyond any description, dictionary or image; reading stops there, so that a
    // source that never ends costs a second and this much memory, not all there is.
    static constexpr std::size_t max_size = std::size_t{1} << 30;

    // The bytes of a regular file; nothing when it cannot be opened or read (a directory,
    // say). Throws FileTooLarge beyond max_size.
    std::optional<std::string> read(const std::string& name);
    // The file can be opened for reading and is not a directory.
    static bool readable(const std::string& name);
    // Every file read, each once under the name it was first read by, in that order.
    const std::vector<std::string>& names() const { return names_; }
    // The same files under the names they were opened by, which differ from names() where
    // a name was looked up the Windows way.
    const std::vector<std::string>& paths() const { return paths_; }
    // The name of the file read that `path` also names, or null.
    const std::string* find(const std::string& path) const;

private:
    void record(const std::string& name, const std::string& path, int fd);

    std::vector<std::string> names_;
    std::vector<std::string> paths_;
    std::vector<std::pair<dev_t, ino_t>> ids_;  // one per name
};

}  // namespace edd
