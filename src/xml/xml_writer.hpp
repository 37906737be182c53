// SPDX-License-Identifier: Apache-2.0
// The writer of the output document: its frame (root, used dictionary keys, image files,
// identification, items by name) and the mapping of items and values onto elements. The
// document is written straight from the model, once, in order; no tree is built.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnostics/diagnostics.hpp"
#include "files/input_files.hpp"
#include "files/reserved_range.hpp"
#include "model/description.hpp"
#include "model/dictionary.hpp"
#include "model/item_type.hpp"

namespace edd {

struct Attribute;
class ComposedValue;
class IfConditional;
class ReferenceValue;
class SelectConditional;
class TypeValue;
class ValueList;
class XmlOutput;

class XML_Writer {
public:
    // Image files are looked for next to the file defining the image, then under each
    // include path in order. Each file is read once, however many paths name it, and all
    // of them together hold at most max_image_bytes.
    static constexpr std::size_t max_image_bytes = std::size_t{512} << 20;
    // The writer keeps its own description: pass one with std::move when it is not needed
    // after.
    XML_Writer(Description description, std::vector<std::string> include_paths, InputFiles& files,
               Diagnostics& diagnostics);
    // The include paths are one empty string: the second look is at "/" + path.
    XML_Writer(Description description, InputFiles& files, Diagnostics& diagnostics);

    const Description& description() const { return description_; }

    void set_dictionary(Dictionary dictionary) { dictionary_ = std::move(dictionary); }
    // Gathers what the document needs besides the model (the used dictionary keys, the
    // image files, the items in name order). Throws what the image paths throw
    // (std::logic_error).
    void build();

    // The document of what build gathered. save writes the file whole or not at all: a
    // failure leaves an existing file as it was.
    void save(const std::string& file_name) const;
    std::string xml() const;

private:
    // The whole document, handed to `deliver` in chunks.
    void stream_document(const std::function<void(std::string_view)>& deliver) const;
    // A "string" element with its text, on a line of its own or inline.
    static void write_string(XmlOutput& out, std::string_view text, bool on_own_line);
    void write_document(XmlOutput& out) const;
    void write_used_dictionary_keys(XmlOutput& out) const;
    void read_image_files(const std::vector<std::pair<std::string, std::string>>& paths);
    std::optional<std::string> read_image_file(const std::string& candidate, const std::string& path,
                                               std::uint64_t size, std::size_t& total);
    void write_image_files(XmlOutput& out) const;
    void write_identification(XmlOutput& out) const;

    // Model mapping (model_mapping.cpp).
    void write_object(XmlOutput& out, const Item& item) const;
    void write_attribute(XmlOutput& out, const Item& item, AttributeId id, const Value& value) const;
    void write_attribute_element(XmlOutput& out, AttributeId id, const Value& value) const;
    void write_member(XmlOutput& out, const Attribute& member, bool own_name) const;
    void write_value(XmlOutput& out, const Value& value) const;
    void write_type(XmlOutput& out, const TypeValue& type) const;
    void write_list(XmlOutput& out, const ValueList& list) const;
    void write_composed(XmlOutput& out, const ComposedValue& composed) const;
    void write_reference(XmlOutput& out, const ReferenceValue& reference) const;
    void write_if(XmlOutput& out, const IfConditional& choice) const;
    void write_select(XmlOutput& out, const SelectConditional& choice) const;

    Description description_;
    std::vector<std::string> include_paths_;
    InputFiles& files_;
    Diagnostics& diagnostics_;
    Dictionary dictionary_;
    bool built_ = false;  // for the assertion that build came first
    // What build gathered.
    KeySet used_keys_;
    bool names_images_ = false;  // some IMAGE names a file, found or not
    // Path as written and the file's bytes, shared by every path that names the file.
    std::vector<std::pair<std::string, std::shared_ptr<const std::string>>> image_files_;
    ReservedRange sort_room_;  // holds items_by_name_
    const std::uint32_t* items_by_name_ = nullptr;  // positions in the item table, one per item
    // The attributes' element names, looked up once: an attribute element is among the
    // commonest of a document.
    std::array<std::string_view, attribute_count> attribute_elements_{};
};

}  // namespace edd
