#include "files/output_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace edd {

namespace {

[[noreturn]] void fail(const std::string& name) { throw std::system_error(errno, std::generic_category(), name); }

bool same_file(const struct stat& a, int fd) {
    struct stat b;
    return ::fstat(fd, &b) == 0 && a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// The mode a new file gets from open(): 0666 less the umask.
mode_t creation_mode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

}  // namespace

OutputFile::OutputFile(std::string name) : name_(std::move(name)), target_(name_) {
    struct stat target;
    const bool exists = ::stat(name_.c_str(), &target) == 0;
    // "-o /dev/stdout": go on in the program's own output, after what is there already.
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO}) {
        if (exists && same_file(target, standard)) {
            fd_ = standard;
            owns_fd_ = false;
            return;
        }
    }
    if (exists && !S_ISREG(target.st_mode)) {
        fd_ = ::open(name_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (fd_ < 0) fail(name_);
        return;
    }
    // A symbolic link stays: the file it names is replaced.
    struct stat link;
    if (::lstat(name_.c_str(), &link) == 0 && S_ISLNK(link.st_mode)) {
        std::error_code error;
        const auto resolved = std::filesystem::weakly_canonical(name_, error);
        if (!error) target_ = resolved.string();
    }
    const auto directory = std::filesystem::path(target_).parent_path();
    temporary_ = (directory.empty() ? std::string(".") : directory.string()) + "/.tarnwick-XXXXXX";
    fd_ = ::mkstemp(temporary_.data());
    if (fd_ < 0) {
        temporary_.clear();
        fail(name_);
    }
    if (::fchmod(fd_, exists ? (target.st_mode & 07777) : creation_mode()) != 0) {
        // A constructor that throws runs no destructor: the temporary file goes here.
        const int error = errno;
        ::close(fd_);
        ::unlink(temporary_.c_str());
        errno = error;
        fail(name_);
    }
}

OutputFile::~OutputFile() {
    close_file();
    if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void OutputFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd_, bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            fail(name_);
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

bool OutputFile::close_file() {
    const int fd = std::exchange(fd_, -1);
    return fd < 0 || !owns_fd_ || ::close(fd) == 0;
}

void OutputFile::commit() {
    if (!close_file()) fail(name_);
    if (temporary_.empty()) return;
    if (::rename(temporary_.c_str(), target_.c_str()) != 0) fail(name_);
    temporary_.clear();
}

}  // namespace edd
