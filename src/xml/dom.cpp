// Element creation with name checks, text conversion, indentation nodes and serialisation.
#include "xml/dom.hpp"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "xml/document_text.hpp"

namespace edd {

namespace {

constexpr std::string_view indentation = "    ";  // per level of an indented document

bool in(std::uint32_t c, std::uint32_t low, std::uint32_t high) { return c >= low && c <= high; }

// A NUL-terminated copy of a name for pugixml, on the stack unless it is long.
class CName {
public:
    explicit CName(std::string_view text) {
        if (text.size() < sizeof short_) {
            text.copy(short_, text.size());
            short_[text.size()] = '\0';
            pointer_ = short_;
        } else {
            long_.assign(text);
            pointer_ = long_.c_str();
        }
    }
    CName(const CName&) = delete;
    CName& operator=(const CName&) = delete;
    const char* c_str() const { return pointer_; }

private:
    char short_[64];
    std::string long_;
    const char* pointer_;
};

// Document text of a model string, copied only when the rule changes it.
class DocumentText {
public:
    explicit DocumentText(std::string_view text) : view_(text) {
        if (!is_plain_document_text(text)) {
            converted_ = to_document_text(text);
            view_ = converted_;
        }
    }
    DocumentText(const DocumentText&) = delete;
    DocumentText& operator=(const DocumentText&) = delete;
    std::string_view view() const { return view_; }

private:
    std::string converted_;
    std::string_view view_;
};

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

// Names made of ASCII letters, digits and "_:.-" are the common case; the table answers for them.
bool is_ascii_xml_name(std::string_view text) {
    constexpr std::uint8_t start = 1, part = 2;
    static constexpr auto classes = [] {
        std::array<std::uint8_t, 128> t{};
        for (int c = 'a'; c <= 'z'; ++c) t[c] = t[c - 'a' + 'A'] = start | part;
        for (int c = '0'; c <= '9'; ++c) t[c] = part;
        t['_'] = t[':'] = start | part;
        t['-'] = t['.'] = part;
        return t;
    }();
    auto is = [](char c, std::uint8_t cls) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 128 && (classes[byte] & cls) != 0;
    };
    if (text.empty() || !is(text.front(), start)) return false;
    return std::ranges::all_of(text.substr(1), [&](char c) { return is(c, part); });
}

bool is_xml_name(std::string_view text) {
    if (is_ascii_xml_name(text)) return true;
    std::size_t at = 0;
    if (text.empty() || !is_name_start(next_code_point(text, at))) return false;
    while (at < text.size())
        if (!is_name_char(next_code_point(text, at))) return false;
    return true;
}

// Refuses document text that is not an XML name.
void check_element_name(std::string_view text) {
    if (!is_xml_name(text)) throw std::logic_error(format_message(messages::invalid_element_name, {text}));
}

// ---- Serialisation ----------------------------------------------------------------------
// The document is written here rather than by pugixml: its indenting mode writes "<x />"
// and indents beside text, and building the layout as text nodes costs more than the rest
// of the tree. Escapes are pugixml's: '&', '<' and '>' in text; '&', '<' and '"' in attribute
// values; other control characters than tab, LF and CR (and these too in attribute values)
// as "&#NN;". Output is UTF-8 without a byte-order mark.

constexpr std::uint8_t escaped_in_text = 1, escaped_in_attribute = 2;
constexpr auto escapes = [] {
    std::array<std::uint8_t, 256> t{};
    for (int c = 1; c < 0x20; ++c) t[c] = escaped_in_text | escaped_in_attribute;
    t['\t'] = t['\n'] = t['\r'] = escaped_in_attribute;
    t['&'] = t['<'] = escaped_in_text | escaped_in_attribute;
    t['>'] = escaped_in_text;
    t['"'] = escaped_in_attribute;
    return t;
}();

// The serialised text, handed to `deliver` in chunks of about 64 KiB.
template <class Deliver>
class ChunkedOutput {
public:
    explicit ChunkedOutput(Deliver deliver) : deliver_(std::move(deliver)), buffer_(new char[capacity]) {}
    ChunkedOutput(const ChunkedOutput&) = delete;
    ChunkedOutput& operator=(const ChunkedOutput&) = delete;

    void put(char c) {
        if (used_ == capacity) flush();
        buffer_[used_++] = c;
    }
    void put(std::string_view text) {
        if (text.size() > capacity - used_) {
            flush();
            if (text.size() > capacity) {
                deliver_(text);
                return;
            }
        }
        std::memcpy(buffer_.get() + used_, text.data(), text.size());
        used_ += text.size();
    }
    void flush() {
        if (used_ != 0) deliver_(std::string_view(buffer_.get(), used_));
        used_ = 0;
    }

private:
    static constexpr std::size_t capacity = std::size_t{1} << 16;
    Deliver deliver_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
};

// Characters are written up to the terminating NUL, as pugixml keeps its strings.
template <class Output>
void write_escaped(Output& out, const char* text, std::uint8_t context) {
    for (;;) {
        const char* run = text;
        while (*text != '\0' && (escapes[static_cast<unsigned char>(*text)] & context) == 0) ++text;
        out.put(std::string_view(run, static_cast<std::size_t>(text - run)));
        switch (*text) {
        case '\0': return;
        case '&': out.put("&amp;"); break;
        case '<': out.put("&lt;"); break;
        case '>': out.put("&gt;"); break;
        case '"': out.put("&quot;"); break;
        default: {
            const auto code = static_cast<unsigned char>(*text);
            const char reference[] = {'&', '#', static_cast<char>('0' + code / 10), static_cast<char>('0' + code % 10), ';'};
            out.put(std::string_view(reference, sizeof reference));
        }
        }
        ++text;
    }
}

template <class Output>
void write_attributes(Output& out, pugi::xml_node node) {
    for (pugi::xml_attribute attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute()) {
        out.put(' ');
        out.put(attribute.name());
        out.put("=\"");
        write_escaped(out, attribute.value(), escaped_in_attribute);
        out.put('"');
    }
}

template <class Output>
void write_line_break(Output& out, int depth) {
    static const std::string line_breaks = '\n' + std::string(16 * indentation.size(), ' ');
    const std::size_t blanks = static_cast<std::size_t>(depth) * indentation.size();
    if (blanks < line_breaks.size()) {
        out.put(std::string_view(line_breaks).substr(0, blanks + 1));
        return;
    }
    out.put('\n');
    for (int i = 0; i < depth; ++i) out.put(indentation);
}

// A walk without recursion, so that a deep document cannot exhaust the stack.
template <class Output>
void serialise(const pugi::xml_document& document, DomLayout layout, Output& out) {
    const bool indented = layout == DomLayout::indented;
    int depth = 0;            // of the current node's children
    bool after_text = false;  // the sibling before the current node is a text
    pugi::xml_node node = document.first_child();
    while (node) {
        const pugi::xml_node_type type = node.type();
        switch (type) {
        case pugi::node_pcdata: write_escaped(out, node.value(), escaped_in_text); break;
        case pugi::node_declaration:
            out.put("<?");
            out.put(node.name());
            write_attributes(out, node);
            out.put("?>");
            break;
        case pugi::node_element:
            if (indented && depth > 0 && !after_text) write_line_break(out, depth);
            out.put('<');
            out.put(node.name());
            write_attributes(out, node);
            if (pugi::xml_node child = node.first_child()) {
                out.put('>');
                node = child;
                ++depth;
                after_text = false;
                continue;
            }
            out.put("/>");
            break;
        default: throw std::logic_error("DomDocument: a node of a kind it never creates");
        }
        after_text = type == pugi::node_pcdata;
        pugi::xml_node next = node.next_sibling();
        while (!next) {
            node = node.parent();
            if (node == document) return;
            --depth;
            // The last child, just written, decides as the previous sibling does above.
            if (indented && !after_text) write_line_break(out, depth);
            out.put("</");
            out.put(node.name());
            out.put('>');
            after_text = false;
            next = node.next_sibling();
        }
        node = next;
    }
}

pugi::xml_node append_child_checked(pugi::xml_node parent, std::string_view name) {
    pugi::xml_node child = parent.append_child(CName(name).c_str());
    assert(child);
    return child;
}

void append_text_node(pugi::xml_node parent, std::string_view text) {
    pugi::xml_node node = parent.append_child(pugi::node_pcdata);
    assert(node);
    node.set_value(text.data(), text.size());
}

}  // namespace

DomElement DomElement::append_element(std::string_view name) {
    // An ASCII name is its own document text: the common case needs no conversion.
    if (is_ascii_xml_name(name)) return DomElement(append_child_checked(node_, name));
    const DocumentText text(name);
    check_element_name(text.view());
    return DomElement(append_child_checked(node_, text.view()));
}

DomElement DomElement::append_inline_element(std::string_view name) {
    append_text_node(node_, {});
    DomElement child = append_element(name);
    append_text_node(node_, {});
    return child;
}

void DomElement::append_text(std::string_view text) { append_text_node(node_, DocumentText(text).view()); }

void DomElement::set_attribute(std::string_view name, std::string_view value) {
    const CName attribute_name(DocumentText(name).view());
    const DocumentText attribute_value(value);
    pugi::xml_attribute attribute = node_.attribute(attribute_name.c_str());
    if (!attribute) attribute = node_.append_attribute(attribute_name.c_str());
    attribute.set_value(attribute_value.view().data(), attribute_value.view().size());
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

DomDocument::DomDocument(DomLayout layout) : layout_(layout) {
    pugi::xml_node declaration = document_.append_child(pugi::node_declaration);
    assert(declaration);
    declaration.append_attribute("version").set_value("1.0");
    declaration.append_attribute("encoding").set_value("UTF-8");
    append_text_node(document_, "\n");
}

DomElement DomDocument::create_root_element(std::string_view name) {
    const std::string text = to_document_text(name);
    check_element_name(text);
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
    std::unique_ptr<std::FILE, decltype(&std::fclose)> file(std::fopen(file_name.c_str(), "wb"), &std::fclose);
    if (!file) return false;
    ChunkedOutput out([&file](std::string_view chunk) { std::fwrite(chunk.data(), 1, chunk.size(), file.get()); });
    serialise(document_, layout_, out);
    out.flush();
    const bool written = std::ferror(file.get()) == 0;
    return std::fclose(file.release()) == 0 && written;
}

std::string DomDocument::xml() const {
    std::string text;
    ChunkedOutput out([&text](std::string_view chunk) { text += chunk; });
    serialise(document_, layout_, out);
    out.flush();
    return text;
}

}  // namespace edd
