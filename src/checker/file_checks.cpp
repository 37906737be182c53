// SPDX-License-Identifier: Apache-2.0
// The checks on files: image files that cannot be opened or lie outside the description's
// directories, and sources that the lexer stops reading early.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "checker/check_context.hpp"
#include "checker/checker_messages.hpp"
#include "checker/model_walk.hpp"
#include "files/input_files.hpp"
#include "text/text_utils.hpp"
#include "validation/image_paths.hpp"

namespace edd {

namespace {

// Absolute on either platform ("/x", "\\x", "C:x"), or with a ".." part.
bool leaves_directories(std::string_view path) {
    if (path.empty()) return false;
    if (path.front() == '/' || path.front() == '\\') return true;
    if (path.size() >= 2 && path[1] == ':') return true;
    std::size_t start = 0;
    while (start <= path.size()) {
        const std::size_t end = std::min(path.find_first_of("/\\", start), path.size());
        if (path.substr(start, end - start) == "..") return true;
        start = end + 1;
    }
    return false;
}

void check_image(const Found& found, const CheckContext& context, Findings& findings) {
    const std::string path(found.text);
    const Position where = context.positions.of(found.value, found.item.origin());
    if (leaves_directories(path)) findings.add(CheckId::unsafe_image_path, where, {path});
    if (!findings.wanted(CheckId::unreadable_image)) return;
    // As the converter's writer looks: beside the defining file, then from the root.
    const std::string directory = directory_of(found.item.origin().file_name());
    const auto candidates = image_file_candidates(directory, path, {std::string()});
    if (std::ranges::none_of(candidates, [](const std::string& name) { return InputFiles::readable(name); }))
        findings.add(CheckId::unreadable_image, where, {path, found.item.name()});
}

// The lexer takes a byte 0xFF for the end of its input; a byte-order mark of UTF-16 or
// UTF-32 holds one, so such a file reads as (nearly) empty.
void check_source(const std::string& name, Findings& findings) {
    InputFiles files;
    const std::optional<std::string> bytes = files.read(name);
    if (!bytes) return;
    const std::string_view text = *bytes;
    const std::size_t stop = text.find('\xFF');
    if (stop == std::string_view::npos) return;
    std::string_view why = checker_messages::byte_ff;
    constexpr std::string_view utf32_little("\xFF\xFE\0\0", 4), utf32_big("\0\0\xFE\xFF", 4);
    if (text.starts_with(utf32_little) || text.starts_with(utf32_big)) why = checker_messages::utf32_mark;
    else if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) why = checker_messages::utf16_mark;
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(stop), '\n');
    findings.add(CheckId::unreadable_source, {intern_file_name(name), static_cast<int>(line)}, {why});
}

}  // namespace

void check_images(const CheckContext& context, Findings& findings) {
    walk_items(context.parsed.items(), [&](const Found& found) {
        if (found.place == Place::image_path && found.naming == Naming::string &&
            context.resolved_of(found.item).type() == ItemType::IMAGE)
            check_image(found, context, findings);
    });
}

void check_sources(const std::vector<std::string>& sources, Findings& findings) {
    if (findings.wanted(CheckId::unreadable_source))
        for (const std::string& source : sources) check_source(source, findings);
}

}  // namespace edd
