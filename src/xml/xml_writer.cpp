// SPDX-License-Identifier: Apache-2.0
// The document frame: root, used dictionary keys, embedded image files, identification and
// the items in name order; plus the guard and the outputs. Items and values: model_mapping.cpp.
#include "xml/xml_writer.hpp"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <span>
#include <stdexcept>
#include <system_error>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "files/output_file.hpp"
#include "model/item.hpp"
#include "validation/image_paths.hpp"
#include "xml/base64.hpp"
#include "xml/xml_output.hpp"

namespace edd {

namespace {

// The identification fields in document order.
struct IdentificationField {
    std::string_view name;
    ValuePtr Identification::*field;
};
constexpr IdentificationField identification_fields[] = {
    {"DD_REVISION", &Identification::dd_revision},   {"DEVICE_REVISION", &Identification::device_revision},
    {"DEVICE_TYPE", &Identification::device_type},   {"EDD_PROFILE", &Identification::edd_profile},
    {"EDD_VERSION", &Identification::edd_version},   {"MANUFACTURER", &Identification::manufacturer},
    {"MANUFACTURER_EXT", &Identification::manufacturer_ext},
};

// Items are sorted by the first eight bytes of their names, as numbers kept in a table of
// their own, and only on a tie by the whole names. Zero padding and big-endian numbers keep
// byte order.
std::uint64_t name_head(std::string_view name) {
    std::uint64_t value = 0;
    if (name.size() >= 8) {  // the common case: eight bytes at once, which compilers turn into a swap
        unsigned char bytes[8];
        std::memcpy(bytes, name.data(), 8);
        for (const unsigned char byte : bytes) value = (value << 8) | byte;
        return value;
    }
    for (std::size_t i = 0; i < 8; ++i)
        value = (value << 8) | (i < name.size() ? static_cast<unsigned char>(name[i]) : 0u);
    return value;
}

// The positions of `items` in name order, in `room`. First by the heads, a byte a pass from
// the last, each pass keeping the order of the one before (a pass in which every name has
// the same byte is skipped; the counts of all eight come from one look at each head); then
// each run of names with the same head ("ch0551_value", "ch0551_unit": common prefixes are
// the rule) by the whole names. The tables' sizes are known before the sort starts, so
// their pages are all taken in one call rather than a fault each; positions of four bytes
// keep them few, and every table is written before it is read.
const std::uint32_t* sorted_by_name(std::span<const Item> items, ReservedRange& room) {
    const std::size_t count = items.size();
    room = ReservedRange::cleared(count * (sizeof(std::uint64_t) + 2 * sizeof(std::uint32_t)));
    auto* const heads = reinterpret_cast<std::uint64_t*>(room.bytes());
    auto* order = reinterpret_cast<std::uint32_t*>(heads + count);
    auto* sorted = order + count;
    for (std::size_t i = 0; i < count; ++i) heads[i] = name_head(items[i].name());
    std::array<std::array<std::uint32_t, 257>, 8> starts{};
    for (std::size_t i = 0; i < count; ++i)
        for (unsigned byte = 0; byte < 8; ++byte) ++starts[byte][((heads[i] >> (8 * byte)) & 0xFF) + 1];
    for (std::size_t i = 0; i < count; ++i) order[i] = static_cast<std::uint32_t>(i);
    for (unsigned byte = 0; byte < 8; ++byte) {
        std::array<std::uint32_t, 257>& start = starts[byte];
        if (std::ranges::find(start, count) != start.end()) continue;
        for (std::size_t i = 1; i < start.size(); ++i) start[i] += start[i - 1];
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t at = order[i];
            sorted[start[(heads[at] >> (8 * byte)) & 0xFF]++] = at;
        }
        std::swap(order, sorted);
    }
    std::uint32_t* const end = order + count;
    for (std::uint32_t* first = order; first != end;) {
        const std::uint64_t head = heads[*first];
        std::uint32_t* const last = std::find_if(first, end, [&](std::uint32_t at) { return heads[at] != head; });
        if (last - first > 1)
            std::sort(first, last, [&](std::uint32_t a, std::uint32_t b) { return items[a].name() < items[b].name(); });
        first = last;
    }
    return order;
}

// The writer's passes over the items would wait for memory at every item: the values lie
// far apart, and the items are written in name order, not in the order they lie in. So the
// loads of the items next in turn are started ahead, a link of the chain at a time (record,
// then slots and name, then values), each once the link before it has come.
void load_record(const Item& item) {
    const auto* const record = reinterpret_cast<const char*>(&item);
    __builtin_prefetch(record);
    __builtin_prefetch(record + sizeof(Item) - 1);
}

void load_slots(const Item& item) {
    const auto* const slots = reinterpret_cast<const char*>(item.attributes().data());
    for (std::size_t at = 0; at < item.attributes().size_bytes(); at += 64) __builtin_prefetch(slots + at);
    __builtin_prefetch(item.name().data());
}

void load_values(const Item& item) {
    for (const Item::Slot& slot : item.attributes()) __builtin_prefetch(slot.value.get());
}

// `next`: the places in name order from the item about to be written on, `left` of them.
void load_ahead(std::span<const Item> items, const std::uint32_t* next, std::size_t left) {
    if (left > 6) load_record(items[next[6]]);
    if (left > 4) load_slots(items[next[4]]);
    if (left > 2) load_values(items[next[2]]);
}

// The string elements other than the common one on its own line; out of line, so that the
// common one keeps its registers.
[[gnu::noinline]] void write_string_element(XmlOutput& out, std::string_view text, bool on_own_line, bool preserve) {
    if (on_own_line) out.open_line("string");
    else out.open_inline("string");
    if (preserve) out.attribute("xml:space", "preserve");
    out.text(text);
    out.close_line("string");
}

}  // namespace

// A reader would drop a blank at either end of the text but for xml:space="preserve".
void XML_Writer::write_string(XmlOutput& out, std::string_view text, bool on_own_line) {
    const bool preserve = !text.empty() && (text.front() == ' ' || text.back() == ' ');
    if (on_own_line && !preserve) return out.line_text("string", text);
    write_string_element(out, text, on_own_line, preserve);
}

XML_Writer::XML_Writer(Description description, std::vector<std::string> include_paths, InputFiles& files,
                       Diagnostics& diagnostics)
    : description_(std::move(description)),
      include_paths_(std::move(include_paths)),
      files_(files),
      diagnostics_(diagnostics) {}

XML_Writer::XML_Writer(Description description, InputFiles& files, Diagnostics& diagnostics)
    : XML_Writer(std::move(description), std::vector<std::string>{std::string()}, files, diagnostics) {}

void XML_Writer::build() {
    const std::span<const Item> items = description_.items.items();
    for (std::size_t i = 0; i < items.size() && dictionary_.size() != 0; ++i) {
        if (i + 8 < items.size()) load_slots(items[i + 8]);
        if (i + 4 < items.size()) load_values(items[i + 4]);
        items[i].collect_dictionary_keys(used_keys_);
    }

    std::vector<std::pair<std::string, std::string>> paths;
    for (const Item* image : description_.items.of_type(ItemType::IMAGE)) collect_paths(*image, paths);
    names_images_ = !paths.empty();
    read_image_files(paths);

    for (std::size_t id = 0; id < attribute_elements_.size(); ++id)
        attribute_elements_[id] = name_of(static_cast<AttributeId>(id));
    items_by_name_ = sorted_by_name(items, sort_room_);
    built_ = true;
}

// Each file once, by its identity; recorded under the path as written, wherever it was
// found. A file that is nowhere is still a dependency: adding it changes the document.
void XML_Writer::read_image_files(const std::vector<std::pair<std::string, std::string>>& paths) {
    image_files_.clear();
    std::map<platform::FileId, std::shared_ptr<const std::string>> read;
    std::size_t total = 0;
    for (const auto& [directory, path] : paths) {
        const std::vector<std::string> candidates = image_file_candidates(directory, path, include_paths_);
        std::shared_ptr<const std::string> bytes;
        for (const std::string& candidate : candidates) {
            const std::optional<platform::FileInfo> file = InputFiles::inspect(candidate);
            if (!file) continue;
            if (auto it = read.find(file->id); it != read.end()) bytes = it->second;
            else if (std::optional<std::string> text = read_image_file(candidate, path, file->size, total))
                bytes = read.emplace(file->id, std::make_shared<const std::string>(std::move(*text))).first->second;
            if (bytes) break;
        }
        if (bytes) {
            image_files_.emplace_back(path, std::move(bytes));
        } else {
            diagnostics_.related_file_missing(path);
            files_.add_missing(candidates.front());
        }
    }
}

// A regular file beyond the bound is refused from its size, before it is read.
std::optional<std::string> XML_Writer::read_image_file(const std::string& candidate, const std::string& path,
                                                       std::uint64_t size, std::size_t& total) {
    const auto too_large = [&path] { return FileTooLarge(format_message(messages::images_too_large, {path})); };
    if (size > max_image_bytes - total) throw too_large();
    std::optional<std::string> text = files_.read(candidate, path);
    if (text && text->size() > max_image_bytes - total) throw too_large();
    if (text) total += text->size();
    return text;
}

void XML_Writer::save(const std::string& file_name) const {
    assert(built_);
    try {
        OutputFile file(file_name);
        stream_document([&file](std::string_view chunk) { file.write(chunk); });
        file.commit();
    } catch (const std::system_error& e) {
        throw std::logic_error(format_message(messages::document_not_saved, {file_name, e.code().message()}));
    }
}

std::string XML_Writer::xml() const {
    std::string text;
    stream_document([&text](std::string_view chunk) { text += chunk; });
    return text;
}

void XML_Writer::stream_document(const std::function<void(std::string_view)>& deliver) const {
    assert(built_);
    XmlOutput out(deliver);
    write_document(out);
    out.flush();
}

void XML_Writer::write_document(XmlOutput& out) const {
    out.declaration();
    out.open_block("EDDL").attribute("version", "0.1");
    if (dictionary_.size() != 0) write_used_dictionary_keys(out);
    if (names_images_) write_image_files(out);
    out.open_block("description");
    write_identification(out);
    const std::span<const Item> items = description_.items.items();
    for (std::size_t i = 0; i < items.size(); ++i) {
        load_ahead(items, items_by_name_ + i, items.size() - i);
        write_object(out, items[items_by_name_[i]]);
    }
    out.close_block("description");
    out.close_block("EDDL");
}

// Key, dictionary string and text stay on one line.
void XML_Writer::write_used_dictionary_keys(XmlOutput& out) const {
    out.open_block("USED_DICT_KEYS");
    for (const std::string& key : used_keys_) {
        out.open_line("DICTIONARY_KEY").attribute("id", key);
        if (dictionary_.contains(key)) {
            out.open_inline("DICTIONARY_STRING");
            write_string(out, dictionary_.text(key), false);
            out.close_line("DICTIONARY_STRING");
        }
        out.close_line("DICTIONARY_KEY");
    }
    out.close_block("USED_DICT_KEYS");
}

void XML_Writer::write_image_files(XmlOutput& out) const {
    out.open_block("image_files");
    for (const auto& [path, bytes] : image_files_) {
        out.open_line("file").attribute("path", path).text({});
        base64_in_pieces(*bytes, [&out](std::string_view piece) { out.text(piece); });
        out.close_line("file");
    }
    out.close_block("image_files");
}

void XML_Writer::write_identification(XmlOutput& out) const {
    for (const auto& [name, field] : identification_fields) {
        const ValuePtr& value = description_.identification.*field;
        if (!value.is_set() || value->kind() == ValueKind::UNDEFINED) continue;
        out.open_block(name);
        write_value(out, *value);
        out.close_block(name);
    }
}

}  // namespace edd
