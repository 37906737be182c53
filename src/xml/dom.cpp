// Element creation with name checks, text conversion, indentation nodes and raw serialisation.
#include "xml/dom.hpp"

#include <cassert>
#include <cstdint>
#include <stdexcept>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "xml/document_text.hpp"

namespace edd {

namespace {

// The writer inserts its own layout, so pugixml must add none.
constexpr unsigned save_flags = pugi::format_raw | pugi::format_no_declaration;
constexpr const char* no_indent = "";
constexpr pugi::xml_encoding document_encoding = pugi::encoding_utf8;  // no byte-order mark: not in save_flags

bool in(std::uint32_t c, std::uint32_t low, std::uint32_t high) { return c >= low && c <= high; }

bool is_name_start(std::uint32_t c) {
    return c == ':' || c == '_' || in(c, 'A', 'Z') || in(c, 'a', 'z') || in(c, 0xC0, 0xD6) || in(c, 0xD8, 0xF6) ||
           in(c, 0xF8, 0x2FF) || in(c, 0x370, 0x37D) || in(c, 0x37F, 0x1FFF) || in(c, 0x200C, 0x200D) ||
           in(c, 0x2070, 0x218F) || in(c, 0x2C00, 0x2FEF) || in(c, 0x3001, 0xD7FF) || in(c, 0xF900, 0xFDCF) ||
           in(c, 0xFDF0, 0xFFFD) || in(c, 0x10000, 0xEFFFF);
}

bool is_name_char(std::uint32_t c) {
    return is_name_start(c) || c == '-' || c == '.' || in(c, '0', '9') || c == 0xB7 || in(c, 0x300, 0x36F) ||
           in(c, 0x203F, 0x2040);
}

// Decodes one character of text that is well-formed UTF-8 (document text always is).
std::uint32_t next_code_point(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const std::size_t trailing = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    std::uint32_t c = lead & (0x3Fu >> trailing);
    for (std::size_t k = 0; k < trailing && at < text.size(); ++k)
        c = (c << 6) | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
    return c;
}

bool is_xml_name(std::string_view text) {
    std::size_t at = 0;
    if (text.empty() || !is_name_start(next_code_point(text, at))) return false;
    while (at < text.size())
        if (!is_name_char(next_code_point(text, at))) return false;
    return true;
}

// Document text of a name, refused when it is not an XML name.
std::string element_name(std::string_view name) {
    std::string text = to_document_text(name);
    if (!is_xml_name(text)) throw std::logic_error(format_message(messages::invalid_element_name, {text}));
    return text;
}

class StringWriter final : public pugi::xml_writer {
public:
    explicit StringWriter(std::string& out) : out_(out) {}
    void write(const void* data, std::size_t size) override { out_.append(static_cast<const char*>(data), size); }

private:
    std::string& out_;
};

void append_text_node(pugi::xml_node parent, std::string_view text) {
    pugi::xml_node node = parent.append_child(pugi::node_pcdata);
    assert(node);
    node.set_value(text.data(), text.size());
}

}  // namespace

DomElement DomElement::append_element(std::string_view name) {
    pugi::xml_node child = node_.append_child(element_name(name).c_str());
    assert(child);
    return DomElement(child);
}

void DomElement::append_text(std::string_view text) { append_text_node(node_, to_document_text(text)); }

void DomElement::set_attribute(std::string_view name, std::string_view value) {
    const std::string attribute_name = to_document_text(name);
    const std::string attribute_value = to_document_text(value);
    pugi::xml_attribute attribute = node_.attribute(attribute_name.c_str());
    if (!attribute) attribute = node_.append_attribute(attribute_name.c_str());
    attribute.set_value(attribute_value.data(), attribute_value.size());
}

void DomElement::indent(int level) {
    static constexpr std::string_view blanks = "                    ";  // 5 levels
    append_text_node(node_, "\n");
    if (level <= 0) return;
    if (level <= 5) {
        append_text_node(node_, blanks.substr(0, 4 * static_cast<std::size_t>(level)));
        return;
    }
    for (int i = 0; i < level; ++i) append_text_node(node_, blanks.substr(0, 4));
}

DomDocument::DomDocument() {
    pugi::xml_node declaration = document_.append_child(pugi::node_declaration);
    assert(declaration);
    declaration.append_attribute("version").set_value("1.0");
    declaration.append_attribute("encoding").set_value("UTF-8");
    append_text_node(document_, "\n");
}

DomElement DomDocument::create_root_element(std::string_view name) {
    const std::string text = element_name(name);
    pugi::xml_node old_root = document_.document_element();
    if (!old_root) {
        pugi::xml_node root = document_.append_child(text.c_str());
        assert(root);
        append_text_node(document_, "\n");
        return DomElement(root);
    }
    pugi::xml_node root = document_.insert_child_before(pugi::node_element, old_root);
    assert(root);
    root.set_name(text.c_str());
    document_.remove_child(old_root);
    return DomElement(root);
}

bool DomDocument::save(const std::string& file_name) const {
    return document_.save_file(file_name.c_str(), no_indent, save_flags, document_encoding);
}

std::string DomDocument::xml() const {
    std::string out;
    StringWriter writer(out);
    document_.save(writer, no_indent, save_flags, document_encoding);
    return out;
}

}  // namespace edd
