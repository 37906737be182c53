// SPDX-License-Identifier: Apache-2.0
#include "files/input_files.hpp"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "files/file_names.hpp"

namespace edd {

namespace {

// Closes the file however reading ends.
class OpenFile {
public:
    explicit OpenFile(platform::Handle file) : file_(file) {}
    ~OpenFile() { platform::close(file_); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    platform::Handle get() const { return file_; }
    bool is_open() const { return file_ != platform::no_handle; }

private:
    platform::Handle file_;
};

// Opens `name` for reading as written, else under its Windows spelling; `path` is set to
// the name opened.
platform::Handle open_input(const std::string& name, std::string& path) {
    path = name;
    platform::Handle file = platform::open_for_reading(name);
    if (file != platform::no_handle) return file;
    if (std::optional<std::string> found = find_file_name(name); found && *found != name) {
        path = std::move(*found);
        file = platform::open_for_reading(path);
    }
    return file;
}

// Reads to the end, at most `limit` bytes. A regular file comes into a text of its size and
// one byte more, which sees the end without growing. Anything after that (a file that
// grew, a pipe, a device) comes in blocks joined at the end, so that a source that never
// ends costs `limit` bytes and no copying on the way there.
std::optional<std::string> read_all(platform::Handle file, std::size_t size, std::size_t limit, const std::string& shown,
                                    std::string_view too_large) {
    std::string text(size + 1, '\0');
    std::vector<std::string> blocks;
    std::size_t length = 0, total = 0;
    for (;;) {
        std::string& block = blocks.empty() ? text : blocks.back();
        if (length == block.size()) {
            total += length;
            length = 0;
            if (total > limit) throw FileTooLarge(format_message(too_large, {shown}));
            // Mostly the one empty read at the end of a regular file: small blocks first.
            blocks.emplace_back().resize(
                std::min(std::clamp<std::size_t>(total, 65536, std::size_t{16} << 20), limit + 1 - total));
            continue;
        }
        const platform::ReadResult result =
            platform::read(file, block.data() + length, block.size() - length, InputFiles::stream_patience_ms,
                           total + length == 0);
        if (result.status == platform::ReadStatus::failed) return std::nullopt;
        if (result.status == platform::ReadStatus::stalled)
            throw FileTooLarge(format_message(messages::stream_stalled, {shown}));
        if (result.status == platform::ReadStatus::end) break;
        length += result.bytes;
    }
    if (total + length > limit) throw FileTooLarge(format_message(too_large, {shown}));
    if (blocks.empty()) {
        text.resize(length);
        return text;
    }
    blocks.back().resize(length);
    text.reserve(total + length);
    for (std::string& block : blocks) {
        text += block;
        std::string().swap(block);  // freed at once: the text takes its place
    }
    return text;
}

}  // namespace

bool same_file(const std::string& a, const std::string& b) {
    const std::optional<platform::FileInfo> first = platform::file_info(a), second = platform::file_info(b);
    if (first && second) return first->kind == platform::FileKind::regular && first->id == second->id;
    if (first || second) return false;
    std::error_code error;
    const auto normal = [&error](const std::string& path) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path, error), error).string();
    };
    return platform::same_path(normal(a), normal(b)) && !error;
}

bool InputFiles::readable(const std::string& name) {
    std::string path;
    const OpenFile file(open_input(name, path));
    if (!file.is_open()) return false;
    const std::optional<platform::FileInfo> info = platform::file_info(file.get());
    return info && info->kind != platform::FileKind::directory;
}

std::optional<platform::FileInfo> InputFiles::inspect(const std::string& name) {
    std::string path;
    const OpenFile file(open_input(name, path));
    return file.is_open() ? platform::file_info(file.get()) : std::nullopt;
}

std::optional<std::string> InputFiles::read(const std::string& name, const std::string& shown) {
    std::string path;
    const OpenFile file(open_input(name, path));
    if (!file.is_open()) return std::nullopt;
    const std::optional<platform::FileInfo> info = platform::file_info(file.get());
    if (!info || info->kind == platform::FileKind::directory) return std::nullopt;
    const std::string& named = shown.empty() ? name : shown;
    std::optional<std::string> text;
    if (info->kind == platform::FileKind::regular) {
        if (info->size > max_size) throw FileTooLarge(format_message(messages::file_too_large, {named}));
        text = read_all(file.get(), static_cast<std::size_t>(info->size), max_size, named, messages::file_too_large);
    } else {
        text = read_all(file.get(), 0, max_stream_size, named, messages::stream_too_large);
    }
    if (text) record(name, platform::disk_spelling(path), info->id);
    return text;
}

void InputFiles::record(const std::string& name, const std::string& path, const platform::FileId& id) {
    if (std::ranges::find(ids_, id) != ids_.end()) return;
    ids_.push_back(id);
    names_.push_back(name);
    dependencies_.push_back(path);
    for (const Watch& watch : watches_)
        if (watch.id == id) watch.when_read();
}

const std::string* InputFiles::find(const std::string& path) const {
    const std::optional<platform::FileInfo> info = platform::file_info(path);
    if (!info) return nullptr;
    const auto it = std::ranges::find(ids_, info->id);
    return it == ids_.end() ? nullptr : &names_[static_cast<std::size_t>(it - ids_.begin())];
}

void InputFiles::watch(const std::string& name, std::function<void()> when_read) {
    if (const std::optional<platform::FileInfo> info = platform::file_info(name))
        watches_.push_back({info->id, std::move(when_read)});
}

}  // namespace edd
