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

// Reads into `into` until `size` bytes came or the source ended: the bytes read, or nothing
// when reading failed.
std::optional<std::size_t> read_into(platform::Handle file, char* into, std::size_t size, bool at_start,
                                     const std::string& shown) {
    std::size_t length = 0;
    while (length < size) {
        const platform::ReadResult result = platform::read(file, into + length, size - length,
                                                           InputFiles::stream_patience_ms, at_start && length == 0);
        if (result.status == platform::ReadStatus::failed) return std::nullopt;
        if (result.status == platform::ReadStatus::stalled)
            throw FileTooLarge(format_message(messages::stream_stalled, {shown}));
        if (result.status == platform::ReadStatus::end) break;
        length += result.bytes;
    }
    return length;
}

// What comes after `text` (from a file that grew while it was read, a pipe, a device) comes
// in blocks joined at the end, so that a source that never ends costs `limit` bytes and no
// copying on the way there.
std::optional<std::string> read_rest(platform::Handle file, std::string text, std::size_t limit,
                                     const std::string& shown, std::string_view too_large) {
    std::vector<std::string> blocks;
    std::size_t total = text.size();
    for (;;) {
        if (total > limit) throw FileTooLarge(format_message(too_large, {shown}));
        // Mostly the one empty read at the end of a regular file: small blocks first.
        const std::size_t wanted =
            std::min(std::clamp<std::size_t>(total, 65536, std::size_t{16} << 20), limit + 1 - total);
        std::string& block = blocks.emplace_back(wanted, '\0');
        const std::optional<std::size_t> length = read_into(file, block.data(), wanted, total == 0, shown);
        if (!length) return std::nullopt;
        block.resize(*length);
        total += *length;
        if (*length < wanted) break;
    }
    if (total > limit) throw FileTooLarge(format_message(too_large, {shown}));
    text.reserve(total);
    for (std::string& block : blocks) {
        text += block;
        std::string().swap(block);  // freed at once: the text takes its place
    }
    return text;
}

// Room for a file read into a string of its own.
struct StringRoom {
    std::string text;
    char* take(std::size_t size) {
        text.resize(size);
        return text.data();
    }
    std::string finish(std::size_t length) {
        text.resize(length);
        return std::move(text);
    }
};

// Room for a source, whose text is kept for the run: not cleared before it is read over.
struct SourceRoom {
    SourceTextRoom& texts;
    SourceTextRoom::Room taken{};
    char* take(std::size_t size) {
        taken = texts.take(size);
        return taken.bytes;
    }
    SourceText finish(std::size_t length) {
        taken.bytes[length] = '\0';
        return SourceText(std::move(taken.owner), taken.bytes, length);
    }
};

// The bytes of `name` (`shown` in messages), with the name it was opened by in `path`. A
// regular file is read into room of its size and one byte more, which sees the end without
// growing; one that grew meanwhile goes on in blocks. A pipe or device, whose size nobody
// knows, comes in blocks from the start.
template <class Room>
auto read_file(const std::string& name, const std::string& shown, Room& room, std::string& path, platform::FileId& id)
    -> std::optional<decltype(room.finish(0))> {
    const OpenFile file(open_input(name, path));
    if (!file.is_open()) return std::nullopt;
    const std::optional<platform::FileInfo> info = platform::file_info(file.get());
    if (!info || info->kind == platform::FileKind::directory) return std::nullopt;
    id = info->id;
    if (info->kind != platform::FileKind::regular)
        return read_rest(file.get(), std::string(), InputFiles::max_stream_size, shown, messages::stream_too_large);
    if (info->size > InputFiles::max_size) throw FileTooLarge(format_message(messages::file_too_large, {shown}));
    const auto size = static_cast<std::size_t>(info->size);
    char* bytes = room.take(size + 1);
    const std::optional<std::size_t> length = read_into(file.get(), bytes, size + 1, true, shown);
    if (!length) return std::nullopt;
    if (*length <= size) return room.finish(*length);
    return read_rest(file.get(), std::string(bytes, *length), InputFiles::max_size, shown, messages::file_too_large);
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
    StringRoom room;
    std::string path;
    platform::FileId id;
    std::optional<std::string> text = read_file(name, shown.empty() ? name : shown, room, path, id);
    if (text) record(name, platform::disk_spelling(path), id);
    return text;
}

std::optional<SourceText> InputFiles::read_source(const std::string& name) {
    SourceRoom room{texts_};
    std::string path;
    platform::FileId id;
    std::optional<SourceText> text = read_file(name, name, room, path, id);
    if (text) record(name, platform::disk_spelling(path), id);
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
