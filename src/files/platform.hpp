// SPDX-License-Identifier: Apache-2.0
// What the operating system does its own way for the files a run reads and writes, and for
// a run that is interrupted. Each system has one implementation (platform_posix.cpp,
// platform_windows.cpp); everything above this header is the same on all of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace edd::platform {

// An open file: a descriptor, or a Windows HANDLE.
using Handle = std::intptr_t;
inline constexpr Handle no_handle = -1;

enum class FileKind { regular, directory, pipe, other };  // other: a device, a socket, a console

// The same id is the same file, whatever names lead to it: device and inode, or volume
// serial number and file index.
struct FileId {
    std::uint64_t volume = 0;
    std::uint64_t index = 0;
    friend auto operator<=>(const FileId&, const FileId&) = default;
};

struct FileInfo {
    FileKind kind = FileKind::other;
    FileId id;
    std::uint64_t size = 0;   // of a regular file
    std::uint32_t mode = 0;   // permission bits where the system has them
};

// Of the file a name leads to, links followed; nothing when there is none.
std::optional<FileInfo> file_info(const std::string& name);
// Whether two normalised paths of files not made yet would name one file: the same
// bytes, or on Windows the same letters in any case.
bool same_path(const std::string& a, const std::string& b);
std::optional<FileInfo> file_info(Handle file);

// ---- Reading ----------------------------------------------------------------------------

// The name of an existing file spelt as the directories hold it ("/" between names, each
// name in the case it was made with), where the system ignores case; else `name` itself.
std::string disk_spelling(const std::string& name);

// Opens for reading; a pipe without a writer is opened without waiting for one.
Handle open_for_reading(const std::string& name);
void close(Handle file) noexcept;

enum class ReadStatus { data, end, stalled, failed };
struct ReadResult {
    ReadStatus status;
    std::size_t bytes = 0;
};
// Up to `size` bytes. A pipe or device that sends nothing for `patience_ms` is `stalled`;
// so is a pipe that no process has opened for writing yet when `at_start`.
ReadResult read(Handle file, char* into, std::size_t size, int patience_ms, bool at_start);

// ---- Writing ----------------------------------------------------------------------------

// A new file in `directory` (empty: the current one), named ".tarnwick-" and six more
// characters, with permission bits `mode`; `path` receives its name.
Handle create_temporary(const std::string& directory, std::uint32_t mode, std::string& path, std::error_code& error);
// For writing straight into an existing file that is no regular one. A pipe no process
// reads from fails at once (files_error::no_reader) instead of waiting for a reader.
Handle open_existing_for_writing(const std::string& name, std::error_code& error);
// The program's own standard output or error when `target` is one of them, else no_handle.
Handle standard_stream(const FileInfo& target);
std::error_code write(Handle file, std::string_view bytes);
// Closing reports what writing could not (a full disk on a network file system).
std::error_code close_written(Handle file);
// Puts `from` in the place of `to` in one step, replacing it; both in one directory.
std::error_code replace(const char* from, const char* to) noexcept;
// May run in a signal handler: no allocation, no lock.
void remove(const char* path) noexcept;
// The permission bits a new file gets (0666 less the umask on POSIX).
std::uint32_t new_file_mode();

// ---- Memory -----------------------------------------------------------------------------

// `size` bytes, uninitialised, for data kept to the end of a run. A size of whole huge pages
// (2 MiB) is mapped on huge-page boundaries and offered huge pages where the system has
// them; any other size comes from the heap. Throws std::bad_alloc.
void* allocate_chunk(std::size_t size);
void free_chunk(void* memory, std::size_t size) noexcept;
// Address space for `size` bytes (whole huge pages) on a huge-page boundary, none of it usable
// yet; with `huge_pages`, what is made usable is offered huge pages where the system has them.
// Throws std::bad_alloc.
void* reserve_range(std::size_t size, bool huge_pages);
// Makes `size` bytes from `at` (page-aligned, inside a reserved range) usable: cleared pages,
// taken when first touched. Throws std::bad_alloc.
void commit_range(void* at, std::size_t size);
void release_range(void* memory, std::size_t size) noexcept;

// ---- The process ------------------------------------------------------------------------

// Standard output and error carry bytes as they are ("\n" stays "\n"); an interrupted run
// (SIGINT, SIGTERM, SIGHUP, SIGPIPE; Ctrl+C or a closed console on Windows) calls
// `cleanup` and then ends as the interruption would have ended it. `cleanup` may run in a
// signal handler or on another thread: it may only call remove() and replace().
void prepare_process(void (*cleanup)() noexcept);
// The status the process exits with: the full value on Windows, its low byte on POSIX.
int exit_status(int status);

}  // namespace edd::platform

namespace edd {

// Failures the system reports in a way too vague for a user.
enum class files_error { no_reader = 1 };
const std::error_category& files_category();
inline std::error_code make_error_code(files_error e) { return {static_cast<int>(e), files_category()}; }

}  // namespace edd

template <>
struct std::is_error_code_enum<edd::files_error> : std::true_type {};
