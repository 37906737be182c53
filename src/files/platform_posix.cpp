// SPDX-License-Identifier: Apache-2.0
// The file and process interfaces on POSIX systems.
#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "files/platform.hpp"

#if defined(__SANITIZE_ADDRESS__)
#define TARNWICK_LEAK_CHECKER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARNWICK_LEAK_CHECKER 1
#endif
#endif
#ifdef TARNWICK_LEAK_CHECKER
#include <sanitizer/lsan_interface.h>
#endif

namespace edd::platform {

namespace {

std::error_code last_error() { return {errno, std::generic_category()}; }

FileInfo info_of(const struct stat& status) {
    FileInfo info;
    info.kind = S_ISREG(status.st_mode)   ? FileKind::regular
                : S_ISDIR(status.st_mode) ? FileKind::directory
                : S_ISFIFO(status.st_mode) ? FileKind::pipe
                                           : FileKind::other;
    info.id = {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
    info.size = info.kind == FileKind::regular ? static_cast<std::uint64_t>(status.st_size) : 0;
    info.mode = static_cast<std::uint32_t>(status.st_mode & 07777);
    return info;
}

constexpr std::size_t huge_page = std::size_t{2} << 20;

int fd_of(Handle file) { return static_cast<int>(file); }

void (*interrupt_cleanup)() noexcept = nullptr;

// Cleans up and ends the process by the same signal, with its default action, so that the
// parent sees the status it expects (128 + the signal in a shell).
extern "C" void on_signal(int signal) {
    if (interrupt_cleanup != nullptr) interrupt_cleanup();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

}  // namespace

std::optional<FileInfo> file_info(const std::string& name) {
    struct stat status;
    if (::stat(name.c_str(), &status) != 0) return std::nullopt;
    return info_of(status);
}

std::optional<FileInfo> file_info(Handle file) {
    struct stat status;
    if (::fstat(fd_of(file), &status) != 0) return std::nullopt;
    return info_of(status);
}

bool same_path(const std::string& a, const std::string& b) { return a == b; }

std::string disk_spelling(const std::string& name) { return name; }

Handle open_for_reading(const std::string& name) {
    const int fd = ::open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    return fd < 0 ? no_handle : fd;
}

void close(Handle file) noexcept {
    if (file != no_handle) ::close(fd_of(file));
}

// The descriptor is non-blocking: a pipe or device with nothing to read says so at once,
// and poll() waits for it, at most `patience_ms`. A named pipe that no process has opened
// for writing reads as ended, and poll() tells that from the end of a writer that came: it
// reports the hang-up of a writer, never the absence of one.
ReadResult read(Handle file, char* into, std::size_t size, int patience_ms, bool at_start) {
    bool waited_for_writer = false;
    for (;;) {
        const ssize_t n = ::read(fd_of(file), into, size);
        if (n > 0) return {ReadStatus::data, static_cast<std::size_t>(n)};
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && errno != EAGAIN && errno != EWOULDBLOCK) return {ReadStatus::failed};
        if (n == 0) {
            struct stat status;
            const bool pipe = ::fstat(fd_of(file), &status) == 0 && S_ISFIFO(status.st_mode);
            if (!at_start || !pipe || waited_for_writer) return {ReadStatus::end};
            waited_for_writer = true;
        }
        pollfd wait{fd_of(file), POLLIN, 0};
        const int ready = ::poll(&wait, 1, patience_ms);
        if (ready == 0) return {ReadStatus::stalled};
        if (ready < 0 && errno != EINTR) return {ReadStatus::failed};
    }
}

Handle create_temporary(const std::string& directory, std::uint32_t mode, std::string& path, std::error_code& error) {
    path = (directory.empty() ? std::string(".") : directory) + "/.tarnwick-XXXXXX";
    const int fd = ::mkstemp(path.data());
    if (fd < 0) {
        error = last_error();
        return no_handle;
    }
    if (::fchmod(fd, static_cast<mode_t>(mode)) != 0) {
        error = last_error();
        ::close(fd);
        ::unlink(path.c_str());
        return no_handle;
    }
    ::fcntl(fd, F_SETFD, FD_CLOEXEC);
    return fd;
}

Handle open_existing_for_writing(const std::string& name, std::error_code& error) {
    // Without O_NONBLOCK, opening a pipe waits for a reader, for ever if none comes.
    const int fd = ::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        error = errno == ENXIO ? make_error_code(files_error::no_reader) : last_error();
        return no_handle;
    }
    // Writes wait for a slow reader as usual.
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return fd;
}

Handle standard_stream(const FileInfo& target) {
    for (const int standard : {STDOUT_FILENO, STDERR_FILENO}) {
        const std::optional<FileInfo> info = file_info(standard);
        if (info && info->id == target.id) return standard;
    }
    return no_handle;
}

std::error_code write(Handle file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd_of(file), bytes.data(), bytes.size());
        if (written < 0) {
            if (errno == EINTR) continue;
            return last_error();
        }
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return {};
}

std::error_code close_written(Handle file) { return ::close(fd_of(file)) == 0 ? std::error_code() : last_error(); }

std::error_code replace(const char* from, const char* to) noexcept {
    return ::rename(from, to) == 0 ? std::error_code() : last_error();
}

void remove(const char* path) noexcept { ::unlink(path); }

std::uint32_t new_file_mode() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// A page fault for every 4 KiB of a large description costs more than reading or building
// it: whole huge pages are offered huge pages.
namespace {

// `size` bytes (whole huge pages) mapped with `protection` on a huge-page boundary.
// A leak checker looks for pointers in the heap and the program's own data, not in memory
// mapped apart: a heap block that only such memory points to would count as lost when the
// process ends with it still in use (the driver leaves its stages to the end).
void watch_mapping(void* at, std::size_t size) {
#ifdef TARNWICK_LEAK_CHECKER
    __lsan_register_root_region(at, size);
#else
    (void)at, (void)size;
#endif
}

void unwatch_mapping(void* at, std::size_t size) {
#ifdef TARNWICK_LEAK_CHECKER
    __lsan_unregister_root_region(at, size);
#else
    (void)at, (void)size;
#endif
}

void* map_aligned(std::size_t size, int protection, bool huge_pages) {
    void* mapped = mmap(nullptr, size + huge_page, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc();
    const auto start = reinterpret_cast<std::uintptr_t>(mapped);
    const std::uintptr_t aligned = (start + huge_page - 1) & ~(huge_page - 1);
    // The mapping is one huge page longer than the chunk: what lies before and after the
    // aligned chunk goes back (the part after is never empty).
    if (aligned > start) munmap(mapped, aligned - start);
    munmap(reinterpret_cast<void*>(aligned + size), start + huge_page - aligned);
#ifdef MADV_HUGEPAGE
    if (huge_pages) madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);  // advice only
#endif
    watch_mapping(reinterpret_cast<void*>(aligned), size);
    return reinterpret_cast<void*>(aligned);
}

}  // namespace

void* allocate_chunk(std::size_t size) {
    if (size % huge_page != 0) return ::operator new(size);
    return map_aligned(size, PROT_READ | PROT_WRITE, true);
}

void free_chunk(void* memory, std::size_t size) noexcept {
    if (size % huge_page != 0) {
        ::operator delete(memory);
    } else {
        unwatch_mapping(memory, size);
        munmap(memory, size);
    }
}

// Without access until committed: a system that counts the memory a process may write counts
// only what is committed.
void* reserve_range(std::size_t size, bool huge_pages) { return map_aligned(size, PROT_NONE, huge_pages); }

// What is committed is written soon: the pages are taken at once, which costs a fraction of
// a fault for each.
void commit_range(void* at, std::size_t size) {
    if (mprotect(at, size, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
#ifdef MADV_POPULATE_WRITE
    madvise(at, size, MADV_POPULATE_WRITE);  // advice only: older systems take them when touched
#endif
}

void release_range(void* memory, std::size_t size) noexcept {
    unwatch_mapping(memory, size);
    munmap(memory, size);
}

void prepare_process(void (*cleanup)() noexcept) {
    interrupt_cleanup = cleanup;
    struct sigaction action {};
    action.sa_handler = on_signal;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) sigaddset(&action.sa_mask, signal);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) {
        struct sigaction previous {};
        // A signal the caller ignores (nohup, a shell's background job) stays ignored.
        if (::sigaction(signal, nullptr, &previous) == 0 && previous.sa_handler == SIG_IGN) continue;
        ::sigaction(signal, &action, nullptr);
    }
    // Beyond a file-size limit a write then fails with EFBIG, and the run reports it,
    // instead of the process being killed with a half-written file.
    std::signal(SIGXFSZ, SIG_IGN);
}

int exit_status(int status) { return status & 0xFF; }

}  // namespace edd::platform
