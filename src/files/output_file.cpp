// SPDX-License-Identifier: Apache-2.0
#include "files/output_file.hpp"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "diagnostics/messages.hpp"

namespace edd {

namespace {

// The file a chain of symbolic links ends at, existing or not: replacing it keeps the
// links, and a dangling link has the file it names made, never itself replaced.
std::string link_target(const std::string& name) {
    std::filesystem::path path(name);
    std::error_code error;
    for (int hops = 0; hops < 40 && std::filesystem::is_symlink(std::filesystem::symlink_status(path, error)); ++hops) {
        const std::filesystem::path next = std::filesystem::read_symlink(path, error);
        if (error) break;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path.string();
}

class FilesCategory : public std::error_category {
public:
    const char* name() const noexcept override { return "tarnwick files"; }
    std::string message(int) const override { return std::string(messages::pipe_without_reader); }
};

}  // namespace

const std::error_category& files_category() {
    static const FilesCategory category;
    return category;
}

OutputFile::OutputFile(std::string name, temporary_files::OnInterrupt on_interrupt)
    : name_(std::move(name)), target_(link_target(name_)) {
    const std::optional<platform::FileInfo> existing = platform::file_info(name_);
    std::error_code error;
    // "-o /dev/stdout": go on in the program's own output, after what is there already,
    // even where that is a regular file.
    if (existing) file_ = platform::standard_stream(*existing);
    if (file_ != platform::no_handle) {
        owns_file_ = false;
        return;
    }
    if (existing && existing->kind != platform::FileKind::regular) {
        file_ = platform::open_existing_for_writing(name_, error);
        if (file_ == platform::no_handle) throw std::system_error(error, name_);
        return;
    }
    // A replaced file keeps its permissions; a new one gets the usual ones.
    const std::uint32_t mode = existing ? existing->mode : platform::new_file_mode();
    file_ = platform::create_temporary(std::filesystem::path(target_).parent_path().string(), mode, temporary_, error);
    if (file_ == platform::no_handle) {
        temporary_.clear();
        throw std::system_error(error, name_);
    }
    slot_ = temporary_files::add(temporary_, target_, on_interrupt);
}

OutputFile::~OutputFile() {
    close_file();
    if (temporary_.empty()) return;
    temporary_files::forget(slot_);
    platform::remove(temporary_.c_str());
}

void OutputFile::write(std::string_view bytes) {
    if (const std::error_code error = platform::write(file_, bytes)) throw std::system_error(error, name_);
}

std::error_code OutputFile::close_file() {
    const platform::Handle file = std::exchange(file_, platform::no_handle);
    if (file == platform::no_handle || !owns_file_) return {};
    return platform::close_written(file);
}

void OutputFile::commit() {
    if (const std::error_code error = close_file()) throw std::system_error(error, name_);
    if (temporary_.empty()) return;
    if (const std::error_code error = platform::replace(temporary_.c_str(), target_.c_str()))
        throw std::system_error(error, name_);
    temporary_files::forget(slot_);  // after: until then an interruption removes the file
    temporary_.clear();
}

}  // namespace edd
