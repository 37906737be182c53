// The document frame: root, used dictionary keys, embedded image files, identification and
// the items in name order; plus the guard, saving and printing. Items and values: model_mapping.cpp.
#include "xml/xml_writer.hpp"

#include <algorithm>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <utility>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/item.hpp"
#include "validation/image_paths.hpp"
#include "xml/base64.hpp"
#include "xml/text_utils.hpp"

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

std::optional<std::string> read_binary(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    file.seekg(0, std::ios::end);
    const std::streamoff size = file.tellg();
    if (size < 0) return std::nullopt;
    file.seekg(0, std::ios::beg);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!file.read(bytes.data(), size)) return std::nullopt;
    return bytes;
}

// The first candidate that opens: next to the defining file, then under each include path.
std::optional<std::string> read_related_file(const std::string& directory, const std::string& path,
                                             const std::vector<std::string>& include_paths) {
    if (file_exists(directory + "/" + path)) return read_binary(directory + "/" + path);
    for (const std::string& include : include_paths)
        if (file_exists(include + "/" + path)) return read_binary(include + "/" + path);
    return std::nullopt;
}

}  // namespace

XML_Writer::XML_Writer(Description description, std::vector<std::string> include_paths, std::ostream& errors)
    : description_(std::move(description)), include_paths_(std::move(include_paths)), errors_(errors) {}

XML_Writer::XML_Writer(Description description, std::ostream& errors)
    : XML_Writer(std::move(description), std::vector<std::string>{std::string()}, errors) {}

void XML_Writer::build(bool force) {
    if (built_ && !force) return;
    built_ = false;
    DomElement root = document_.create_root_element("EDDL");
    root.set_attribute("version", "0.1");
    depth_ = 1;
    if (dictionary_.size() != 0) write_used_dictionary_keys(root);
    write_image_files(root);

    DomElement description = open_block(root, "description");
    write_identification(description);
    std::vector<const Item*> items;
    items.reserve(description_.items.size());
    for (const Item& item : description_.items.items()) items.push_back(&item);
    // std::string compares bytes as unsigned, so this is byte order.
    std::ranges::sort(items, {}, [](const Item* item) -> const std::string& { return item->name(); });
    for (const Item* item : items) write_object(description, *item);
    close_block(description);

    close_block(root);
    built_ = true;
}

void XML_Writer::save(const std::string& file_name) const {
    check_built();
    if (!document_.save(file_name))
        throw std::logic_error(format_message(messages::document_not_saved, {file_name}));
}

const DomDocument& XML_Writer::document() const {
    check_built();
    return document_;
}

void XML_Writer::print(std::ostream& out) const { out << xml(); }

std::string XML_Writer::xml() const {
    check_built();
    return document_.xml();
}

void XML_Writer::check_built() const {
    if (!built_) throw std::logic_error(std::string(messages::document_not_built));
}

DomElement XML_Writer::append(DomElement parent, std::string_view name) { return parent.append_element(name); }

DomElement XML_Writer::open_block(DomElement parent, std::string_view name) {
    DomElement element = append(parent, name);
    ++depth_;
    return element;
}

void XML_Writer::close_block(DomElement element) {
    --depth_;
    // Written as it stands, an element without content would close itself (<x/>).
    if (!element.node().first_child()) element.indent(depth_);
}

void XML_Writer::write_string_text(DomElement string, const std::string& text) {
    // Only the blank counts: a reader would drop it at either end otherwise.
    if (!text.empty() && (text.front() == ' ' || text.back() == ' ')) string.set_attribute("xml:space", "preserve");
    string.append_text(text);
}

void XML_Writer::write_used_dictionary_keys(DomElement root) {
    KeySet keys;
    for (const Item& item : description_.items.items()) item.collect_dictionary_keys(keys);
    DomElement used = open_block(root, "USED_DICT_KEYS");
    for (const std::string& key : keys) {
        DomElement entry = append(used, "DICTIONARY_KEY");
        entry.set_attribute("id", key);
        if (!dictionary_.contains(key)) continue;
        // Key, dictionary string and text stay on one line.
        const std::string& text = dictionary_.text(key);
        write_string_text(entry.append_inline_element("DICTIONARY_STRING").append_inline_element("string"), text);
    }
    close_block(used);
}

void XML_Writer::write_image_files(DomElement root) {
    std::vector<std::pair<std::string, std::string>> paths;
    for (const Item* image : description_.items.of_type(ItemType::IMAGE)) collect_paths(*image, paths);
    if (paths.empty()) return;
    DomElement files = open_block(root, "image_files");
    for (const auto& [directory, path] : paths) write_image_file(files, directory, path);
    close_block(files);
}

void XML_Writer::write_image_file(DomElement parent, const std::string& directory, const std::string& path) {
    const std::optional<std::string> bytes = read_related_file(directory, path, include_paths_);
    if (!bytes) {
        errors_ << format_message(messages::could_not_open_related_file, {path});
        return;
    }
    DomElement file = append(parent, "file");
    file.set_attribute("path", path);  // as written, wherever it was found
    file.append_text(base64(*bytes));
}

void XML_Writer::write_identification(DomElement description) {
    for (const auto& [name, field] : identification_fields) {
        const ValuePtr& value = description_.identification.*field;
        if (value.is_set() && value->kind() != ValueKind::UNDEFINED)
            write_identification_field(description, name, value);
    }
}

void XML_Writer::write_identification_field(DomElement parent, std::string_view name, const ValuePtr& value) {
    DomElement field = open_block(parent, name);
    write_value(field, *value);
    close_block(field);
}

}  // namespace edd
