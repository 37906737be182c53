// SPDX-License-Identifier: Apache-2.0
// The file and process interfaces on Windows. Names are UTF-8 throughout the program and
// wide here, at the system's door.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <new>
#include <string>

#include "files/platform.hpp"

namespace edd::platform {

namespace {

std::wstring wide(const std::string& name) {
    const int size = MultiByteToWideChar(CP_UTF8, 0, name.data(), static_cast<int>(name.size()), nullptr, 0);
    std::wstring text(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, name.data(), static_cast<int>(name.size()), text.data(), size);
    return text;
}

// The same without allocating, for the console control handler: false when too long.
bool wide(const char* name, wchar_t (&into)[4096]) {
    return MultiByteToWideChar(CP_UTF8, 0, name, -1, into, 4096) > 0;
}

// The errors a user meets, as the C library words them, so that messages read as on POSIX.
std::error_code error_code_of(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME: return {ENOENT, std::generic_category()};
    case ERROR_ACCESS_DENIED: return {EACCES, std::generic_category()};
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return {EBUSY, std::generic_category()};
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return {ENOSPC, std::generic_category()};
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return {EEXIST, std::generic_category()};
    case ERROR_NO_DATA:
    case ERROR_BROKEN_PIPE: return {EPIPE, std::generic_category()};
    default: return {static_cast<int>(error), std::system_category()};
    }
}

std::error_code last_error() { return error_code_of(GetLastError()); }

HANDLE handle_of(Handle file) { return reinterpret_cast<HANDLE>(file); }
Handle handle(HANDLE file) { return file == INVALID_HANDLE_VALUE ? no_handle : reinterpret_cast<Handle>(file); }

constexpr DWORD share_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

void (*interrupt_cleanup)() noexcept = nullptr;

// Ctrl+C, Ctrl+Break, a closed console, logoff, shutdown: clean up, then let the default
// handler end the process as it would have.
BOOL WINAPI on_console_event(DWORD) {
    if (interrupt_cleanup != nullptr) interrupt_cleanup();
    return FALSE;
}

}  // namespace

std::optional<FileInfo> file_info(Handle file) {
    const HANDLE h = handle_of(file);
    FileInfo info;
    switch (GetFileType(h)) {
    case FILE_TYPE_PIPE: info.kind = FileKind::pipe; return info;
    case FILE_TYPE_DISK: break;
    default: info.kind = FileKind::other; return info;
    }
    BY_HANDLE_FILE_INFORMATION data;
    if (!GetFileInformationByHandle(h, &data)) return std::nullopt;
    info.kind = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::directory : FileKind::regular;
    info.id = {data.dwVolumeSerialNumber, (std::uint64_t{data.nFileIndexHigh} << 32) | data.nFileIndexLow};
    info.size = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
    return info;
}

std::optional<FileInfo> file_info(const std::string& name) {
    // Attributes only: works on a file another process holds open for writing.
    const HANDLE h = CreateFileW(wide(name).c_str(), FILE_READ_ATTRIBUTES, share_all, nullptr, OPEN_EXISTING,
                                 FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (h == INVALID_HANDLE_VALUE) return std::nullopt;
    std::optional<FileInfo> info = file_info(handle(h));
    CloseHandle(h);
    return info;
}

bool same_path(const std::string& a, const std::string& b) {
    const std::wstring x = wide(a), y = wide(b);
    return CompareStringOrdinal(x.data(), static_cast<int>(x.size()), y.data(), static_cast<int>(y.size()), TRUE) ==
           CSTR_EQUAL;
}

// Each name asked of its directory, so that a build tool given the dependencies sees the
// names it would see on POSIX, where the case of a name matters.
std::string disk_spelling(const std::string& name) {
    std::string spelt;
    std::size_t start = 0;
    if (name.size() >= 2 && name[1] == ':') start = 2;  // a drive stays as written
    spelt = name.substr(0, start);
    while (start <= name.size()) {
        std::size_t end = name.find_first_of("/\\", start);
        if (end == std::string::npos) end = name.size();
        std::string component = name.substr(start, end - start);
        if (!component.empty() && component != "." && component != "..") {
            WIN32_FIND_DATAW found;
            const HANDLE search = FindFirstFileW(wide(spelt + component).c_str(), &found);
            if (search != INVALID_HANDLE_VALUE) {
                FindClose(search);
                const std::wstring& disk = found.cFileName;
                std::string narrow(static_cast<std::size_t>(WideCharToMultiByte(
                                       CP_UTF8, 0, disk.c_str(), -1, nullptr, 0, nullptr, nullptr)) - 1, '\0');
                WideCharToMultiByte(CP_UTF8, 0, disk.c_str(), -1, narrow.data(), static_cast<int>(narrow.size() + 1),
                                    nullptr, nullptr);
                component = std::move(narrow);
            }
        }
        spelt += component;
        if (end == name.size()) break;
        spelt += '/';
        start = end + 1;
    }
    return spelt;
}

Handle open_for_reading(const std::string& name) {
    // Backup semantics open a directory too, which the caller then refuses by its kind.
    return handle(CreateFileW(wide(name).c_str(), GENERIC_READ, share_all, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

void close(Handle file) noexcept {
    if (file != no_handle) CloseHandle(handle_of(file));
}

// A pipe is asked how much it holds before it is read, so that waiting is bounded.
ReadResult read(Handle file, char* into, std::size_t size, int patience_ms, bool) {
    const HANDLE h = handle_of(file);
    const DWORD wanted = static_cast<DWORD>(std::min<std::size_t>(size, 1u << 30));
    if (GetFileType(h) == FILE_TYPE_PIPE) {
        for (int waited = 0;; waited += 10) {
            DWORD available = 0;
            if (!PeekNamedPipe(h, nullptr, 0, nullptr, &available, nullptr))
                return {GetLastError() == ERROR_BROKEN_PIPE ? ReadStatus::end : ReadStatus::failed};
            if (available > 0) break;
            if (patience_ms >= 0 && waited >= patience_ms) return {ReadStatus::stalled};
            Sleep(10);
        }
    }
    DWORD read = 0;
    if (!ReadFile(h, into, wanted, &read, nullptr))
        return {GetLastError() == ERROR_BROKEN_PIPE ? ReadStatus::end : ReadStatus::failed};
    return read == 0 ? ReadResult{ReadStatus::end} : ReadResult{ReadStatus::data, read};
}

Handle create_temporary(const std::string& directory, std::uint32_t, std::string& path, std::error_code& error) {
    static constexpr char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    unsigned long long seed = GetTickCount64() ^ (std::uint64_t{GetCurrentProcessId()} << 32);
    for (int attempt = 0; attempt < 100; ++attempt) {
        path = (directory.empty() ? std::string(".") : directory) + "/.tarnwick-";
        for (int i = 0; i < 6; ++i) {
            seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
            path += letters[(seed >> 33) % (sizeof letters - 1)];
        }
        // Shared for deletion: a console event may remove it while it is open.
        const HANDLE h = CreateFileW(wide(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                     CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (h != INVALID_HANDLE_VALUE) return handle(h);
        if (GetLastError() != ERROR_FILE_EXISTS) break;
    }
    error = last_error();
    return no_handle;
}

Handle open_existing_for_writing(const std::string& name, std::error_code& error) {
    const HANDLE h = CreateFileW(wide(name).c_str(), GENERIC_WRITE, share_all, nullptr, OPEN_EXISTING, 0, nullptr);
    if (h == INVALID_HANDLE_VALUE) error = GetLastError() == ERROR_PIPE_BUSY ? make_error_code(files_error::no_reader)
                                                                            : last_error();
    return handle(h);
}

Handle standard_stream(const FileInfo& target) {
    if (target.kind != FileKind::regular) return no_handle;
    for (const DWORD standard : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
        const HANDLE h = GetStdHandle(standard);
        if (h == nullptr || h == INVALID_HANDLE_VALUE) continue;
        const std::optional<FileInfo> info = file_info(handle(h));
        if (info && info->kind == FileKind::regular && info->id == target.id) return handle(h);
    }
    return no_handle;
}

std::error_code write(Handle file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        const DWORD size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 30));
        if (!WriteFile(handle_of(file), bytes.data(), size, &written, nullptr)) return last_error();
        bytes.remove_prefix(written);
    }
    return {};
}

std::error_code close_written(Handle file) { return CloseHandle(handle_of(file)) ? std::error_code() : last_error(); }

std::error_code replace(const char* from, const char* to) noexcept {
    wchar_t wide_from[4096], wide_to[4096];
    if (!wide(from, wide_from) || !wide(to, wide_to)) return error_code_of(ERROR_FILENAME_EXCED_RANGE);
    if (MoveFileExW(wide_from, wide_to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return {};
    return last_error();
}

void remove(const char* path) noexcept {
    wchar_t name[4096];
    if (wide(path, name)) DeleteFileW(name);
}

std::uint32_t new_file_mode() { return 0; }

// Windows gives large pages only to privileged processes: chunks come from the heap,
// uninitialised; a page is cleared when first touched.
void* allocate_chunk(std::size_t size) { return ::operator new(size); }

void free_chunk(void* memory, std::size_t) noexcept { ::operator delete(memory); }

void* reserve_range(std::size_t size, bool) {
    void* memory = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void commit_range(void* at, std::size_t size) {
    if (VirtualAlloc(at, size, MEM_COMMIT, PAGE_READWRITE) == nullptr) throw std::bad_alloc();
}

void release_range(void* memory, std::size_t) noexcept { VirtualFree(memory, 0, MEM_RELEASE); }

void prepare_process(void (*cleanup)() noexcept) {
    interrupt_cleanup = cleanup;
    SetConsoleCtrlHandler(on_console_event, TRUE);
    // Bytes as they are: "\n" stays one byte, as documents and messages are compared.
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

int exit_status(int status) { return status; }

}  // namespace edd::platform
