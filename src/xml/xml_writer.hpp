// The writer of the output document: its frame (root, used dictionary keys, image files,
// identification, items by name) and the mapping of items and values onto elements.
#pragma once

#include <cstdint>
#include <iostream>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "model/description.hpp"
#include "model/dictionary.hpp"
#include "xml/dom.hpp"

namespace edd {

class Attribute;
class IfConditional;
class SelectConditional;
class TypeValue;

class XML_Writer {
public:
    // Image files are looked for next to the file defining the image, then under each
    // include path in order.
    // The writer keeps its own description: pass one with std::move when it is not needed after.
    XML_Writer(Description description, std::vector<std::string> include_paths,
               std::ostream& errors = std::cerr);
    // The include paths are one empty string: the second look is at "/" + path.
    explicit XML_Writer(Description description, std::ostream& errors = std::cerr);

    const Description& description() const { return description_; }

    void set_dictionary(const Dictionary& dictionary) { dictionary_ = dictionary; }
    // Builds the document once; again only when forced. Throws what the mapping throws
    // (std::logic_error, NullPointer), leaving the writer unbuilt.
    void build(bool force = false);

    // Each of these throws std::logic_error before the document was built; save also when
    // the file cannot be written.
    void save(const std::string& file_name) const;
    const DomDocument& document() const;
    void print(std::ostream& out) const;
    std::string xml() const;

private:
    void check_built() const;
    // An element on a line of its own; the document indents it by its depth when written.
    DomElement append(DomElement parent, std::string_view name);
    // The same for an element with content, one level deeper; close_block puts the closing
    // tag on its own line in line with the opening one, even when the content is empty.
    DomElement open_block(DomElement parent, std::string_view name);
    void close_block(DomElement element);
    // The text of a "string" element, with xml:space="preserve" when it starts or ends with a blank.
    static void write_string_text(DomElement string, const std::string& text);

    void write_used_dictionary_keys(DomElement root);
    void write_image_files(DomElement root);
    void write_image_file(DomElement parent, const std::string& directory, const std::string& path);
    void write_identification(DomElement description);
    void write_identification_field(DomElement parent, std::string_view name, const ValuePtr& value);

    // Model mapping (model_mapping.cpp).
    void write_object(DomElement parent, const Item& item);
    void write_attribute(DomElement parent, const Item& item, AttributeId id, const Value& value);
    void write_attribute_element(DomElement parent, AttributeId id, const Value& value);
    void write_member(DomElement parent, const Attribute& member);
    void write_value(DomElement parent, const Value& value);
    void write_type(DomElement parent, const TypeValue& type);
    void write_if(DomElement parent, const IfConditional& choice);
    void write_select(DomElement parent, const SelectConditional& choice);

    Description description_;
    std::vector<std::string> include_paths_;
    std::ostream& errors_;
    std::int32_t depth_ = 0;
    bool built_ = false;
    DomDocument document_{DomLayout::indented};
    Dictionary dictionary_;
};

}  // namespace edd
