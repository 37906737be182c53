#include "files/input_files.hpp"

#include "files/file_names.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

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
    // Sized from the file when it tells its size, so that the text is read in place and
    // takes no more room than it needs; read to the end all the same, in case it grew.
    std::string text;
    if (S_ISREG(status.st_mode)) text.resize(static_cast<std::size_t>(status.st_size));
    std::size_t length = 0;
    for (;;) {
        if (length == text.size()) text.resize(std::max<std::size_t>(2 * text.size(), 65536));
        const ssize_t n = ::read(file.get(), text.data() + length, text.size() - length);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return std::nullopt;
        if (n == 0) break;
        length += static_cast<std::size_t>(n);
    }
    text.resize(length);
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
