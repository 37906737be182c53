#include "files/input_files.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "files/file_names.hpp"

namespace edd {

namespace {

// Closes the descriptor however reading ends.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0) ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }

private:
    int fd_;
};

// Opens `name` for reading as written, else under its Windows spelling; `path` is set to
// the name opened.
int open_input(const std::string& name, std::string& path) {
    path = name;
    int fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd >= 0) return fd;
    if (std::optional<std::string> found = find_file_name(name); found && *found != name) {
        path = std::move(*found);
        fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    }
    return fd;
}

}  // namespace

FileTooLarge::FileTooLarge(const std::string& name)
    : std::runtime_error(format_message(messages::file_too_large, {name})) {}

bool same_file(const std::string& a, const std::string& b) {
    struct stat first, second;
    const bool first_exists = ::stat(a.c_str(), &first) == 0;
    const bool second_exists = ::stat(b.c_str(), &second) == 0;
    if (first_exists && second_exists)
        return S_ISREG(first.st_mode) && first.st_dev == second.st_dev && first.st_ino == second.st_ino;
    if (first_exists || second_exists) return false;
    std::error_code error;
    const auto normal = [&error](const std::string& path) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error);
    };
    return normal(a) == normal(b) && !error;
}

bool InputFiles::readable(const std::string& name) {
    std::string path;
    const Descriptor file(open_input(name, path));
    struct stat status;
    return file.get() >= 0 && ::fstat(file.get(), &status) == 0 && !S_ISDIR(status.st_mode);
}

std::optional<std::string> InputFiles::read(const std::string& name) {
    std::string path;
    const Descriptor file(open_input(name, path));
    if (file.get() < 0) return std::nullopt;
    struct stat status;
    if (::fstat(file.get(), &status) != 0 || S_ISDIR(status.st_mode)) return std::nullopt;
    // A regular file is read in place into a text of its size and one byte more, which sees
    // the end without growing. Anything after that (a file that grew, a pipe, a device) is
    // read in blocks joined at the end, so that a source that never ends costs max_size
    // bytes and no copying on the way there.
    std::string text;
    if (S_ISREG(status.st_mode)) {
        if (static_cast<std::uintmax_t>(status.st_size) > max_size) throw FileTooLarge(name);
        text.resize(static_cast<std::size_t>(status.st_size) + 1);
    }
    std::vector<std::string> blocks;
    std::size_t length = 0, total = 0;
    for (;;) {
        std::string& block = blocks.empty() ? text : blocks.back();
        if (length == block.size()) {
            if (total + length > max_size) throw FileTooLarge(name);
            total += length;
            length = 0;
            // Mostly the one empty read at the end of a regular file: small blocks first.
            blocks.emplace_back().resize(std::clamp<std::size_t>(total, 65536, std::size_t{16} << 20));
            continue;
        }
        const ssize_t n = ::read(file.get(), block.data() + length, block.size() - length);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return std::nullopt;
        if (n == 0) break;
        length += static_cast<std::size_t>(n);
    }
    if (blocks.empty()) {
        text.resize(length);
    } else {
        blocks.back().resize(length);
        text.reserve(total + length);
        for (std::string& block : blocks) {
            text += block;
            std::string().swap(block);  // freed at once: the text takes its place
        }
    }
    record(name, path, file.get());
    return text;
}

void InputFiles::record(const std::string& name, const std::string& path, int fd) {
    struct stat status;
    if (::fstat(fd, &status) != 0) return;
    const std::pair<dev_t, ino_t> id{status.st_dev, status.st_ino};
    if (std::ranges::find(ids_, id) != ids_.end()) return;
    ids_.push_back(id);
    names_.push_back(name);
    paths_.push_back(path);
}

const std::string* InputFiles::find(const std::string& path) const {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return nullptr;
    const auto it = std::ranges::find(ids_, std::pair<dev_t, ino_t>{status.st_dev, status.st_ino});
    return it == ids_.end() ? nullptr : &names_[static_cast<std::size_t>(it - ids_.begin())];
}

}  // namespace edd
