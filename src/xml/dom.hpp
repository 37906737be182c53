// The document tree the writer fills: a pugixml document and element handles. It owns the
// declaration, the text rule for every string handed in, and serialisation; layout is the writer's.
#pragma once

#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace edd {

// A handle to one element; cheap to copy, it owns nothing. Every string passed in is model
// text and is converted by the document text rule here, so no caller can forget it.
class DomElement {
public:
    explicit DomElement(pugi::xml_node node) : node_(node) {}

    // Throws std::logic_error when the name is not an XML name: the document refuses it
    // and the build stops, rather than writing a tag no parser would read.
    DomElement append_element(std::string_view name);
    // An element that stays on this element's line in an indented document: empty texts on
    // both sides of it stand where line breaks would go.
    DomElement append_inline_element(std::string_view name);
    // Always adds a text node, an empty one included, so the element never collapses to <x/>.
    void append_text(std::string_view text);
    void set_attribute(std::string_view name, std::string_view value);
    // A line end, then four blanks per level: one node up to level 5, one node per level
    // beyond. The serialised text is the same either way.
    void indent(int level);

    pugi::xml_node node() const { return node_; }

private:
    pugi::xml_node node_;
};

// How the document is serialised. `as_built` writes exactly the nodes that were added, layout
// included. `indented` puts every element on a line of its own, four blanks per level of
// depth, except next to a text node: there the text decides and nothing is added, so an
// element with text stays on one line and a text node keeps its neighbours on its line.
enum class DomLayout { as_built, indented };

class DomDocument {
public:
    // The declaration and a line end after it.
    explicit DomDocument(DomLayout layout = DomLayout::as_built);
    DomDocument(const DomDocument&) = delete;
    DomDocument& operator=(const DomDocument&) = delete;

    // Replaces an earlier root; a line end follows the root, so the file ends with one.
    DomElement create_root_element(std::string_view name);
    // UTF-8 without byte-order mark; false when the file cannot be written.
    bool save(const std::string& file_name) const;
    std::string xml() const;

    const pugi::xml_document& tree() const { return document_; }

private:
    pugi::xml_document document_;
    DomLayout layout_;
};

}  // namespace edd
