// SPDX-License-Identifier: Apache-2.0
#include "xml/xml_output.hpp"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "xml/document_text.hpp"

namespace edd {

namespace {

// ---- Names ---------------------------------------------------------------------------

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

// One character of document text, which is well-formed UTF-8.
std::uint32_t next_code_point(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const std::size_t trailing = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    std::uint32_t c = lead & (0x3Fu >> trailing);
    for (std::size_t k = 0; k < trailing && at < text.size(); ++k)
        c = (c << 6) | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
    return c;
}

// Names of ASCII letters, digits and "_:.-" are the common case; a table answers for them.
constexpr unsigned char name_start = 1, name_part = 2;
constexpr auto name_classes = [] {
    std::array<unsigned char, 256> t{};
    for (int c = 'a'; c <= 'z'; ++c) t[c] = t[c - 'a' + 'A'] = name_start | name_part;
    for (int c = '0'; c <= '9'; ++c) t[c] = name_part;
    t['_'] = t[':'] = name_start | name_part;
    t['-'] = t['.'] = name_part;
    return t;
}();

bool is_ascii_xml_name(std::string_view text) {
    if (text.empty() || !(name_classes[static_cast<unsigned char>(text[0])] & name_start)) return false;
    for (const char c : text)
        if (!(name_classes[static_cast<unsigned char>(c)] & name_part)) return false;
    return true;
}

bool is_xml_name(std::string_view text) {
    std::size_t at = 0;
    if (text.empty() || !is_name_start(next_code_point(text, at))) return false;
    while (at < text.size())
        if (!is_name_char(next_code_point(text, at))) return false;
    return true;
}

// ---- Escaping --------------------------------------------------------------------------
// '&', '<' and '>' in text; '&', '<' and '"' in attribute values, and there tab, line feed
// and carriage return as "&#NN;" too, so that a reader gives them back as they were. A byte
// the text rule may change (above 0x7F, a control) sends the rest of the text through it.

constexpr unsigned char in_text = 1, in_attribute = 2, not_plain = 4;
constexpr auto escapes = [] {
    std::array<unsigned char, 256> t{};
    for (int c = 0; c < 0x20; ++c) t[c] = not_plain;
    for (int c = 0x80; c < 0x100; ++c) t[c] = not_plain;
    t['\t'] = t['\n'] = t['\r'] = in_attribute;
    t['&'] = t['<'] = in_text | in_attribute;
    t['>'] = in_text;
    t['"'] = in_attribute;
    return t;
}();

}  // namespace

#if !defined(__SSE2__)
std::size_t XmlOutput::plain_length(const char* bytes, std::size_t size, bool attribute) {
    const unsigned char stop = (attribute ? in_attribute : in_text) | not_plain;
    for (std::size_t at = 0; at < size; ++at)
        if (escapes[static_cast<unsigned char>(bytes[at])] & stop) return at;
    return size;
}
#endif

XmlOutput::XmlOutput(Deliver deliver)
    : deliver_(std::move(deliver)),
      buffer_(ReservedRange::cleared(capacity + scan_slack)),
      at_(buffer_.bytes()),
      end_(buffer_.bytes() + capacity),
      last_step_(end_ - step_room) {}

void XmlOutput::put_slow(std::string_view bytes) {
    hand_on();
    if (bytes.size() > capacity) {
        deliver_(bytes);
        return;
    }
    at_ = copy(at_, bytes.data(), bytes.size());
}

void XmlOutput::flush() {
    char* const start = buffer_.bytes();
    if (at_ != start) deliver_(std::string_view(start, static_cast<std::size_t>(at_ - start)));
    at_ = start;
    tag_end_ = nullptr;
}

// Like flush, but the last byte stays while it may still change: the '>' of a start tag
// that nothing follows yet.
void XmlOutput::hand_on() {
    char* const start = buffer_.bytes();
    const bool keep = at_ == tag_end_ && at_ != start;
    char* const end = keep ? at_ - 1 : at_;
    if (end != start) deliver_(std::string_view(start, static_cast<std::size_t>(end - start)));
    if (keep) start[0] = *end;
    at_ = keep ? start + 1 : start;
    tag_end_ = keep ? at_ : nullptr;
}

// Piece by piece, as put_escaped does it; only the bytes that need it are replaced. The
// text rule is the exception: the ASCII before the first byte it may change reads the same
// either way, so only the rest goes through it. The bytes after a special one are copied
// again, so a piece starts small after one and grows while none is met: a text full of
// them costs time in proportion to its length.
void XmlOutput::put_escaped_rest(std::string_view bytes, bool attribute) {
    constexpr std::size_t first_piece = 64;
    const unsigned char context = attribute ? in_attribute : in_text;
    unsigned char stop = context | not_plain;
    std::string converted;
    std::size_t most = first_piece;
    while (!bytes.empty()) {
        const std::size_t piece = std::min(bytes.size(), most);
        char* const to = room(piece);
        copy(to, bytes.data(), piece);
        const std::size_t plain = plain_length(to, piece, attribute);
        at_ = to + plain;
        if (plain == piece) {
            bytes.remove_prefix(piece);
            most = std::min(2 * most, capacity);
            continue;
        }
        most = first_piece;
        const auto c = static_cast<unsigned char>(bytes[plain]);
        const unsigned char kind = escapes[c] & stop;
        if (kind & not_plain) {
            converted = to_document_text(bytes.substr(plain));
            bytes = converted;
            stop = context;
            continue;
        }
        bytes.remove_prefix(plain + 1);
        if (kind == 0) {  // plain here after all, and already in place
            ++at_;
            continue;
        }
        put_escape(c);
    }
    settle(at_);
}

void XmlOutput::put_escape(unsigned char c) {
    switch (c) {
    case '&': put("&amp;"); return;
    case '<': put("&lt;"); return;
    case '>': put("&gt;"); return;
    case '"': put("&quot;"); return;
    default: {
        const char reference[] = {'&', '#', static_cast<char>('0' + c / 10), static_cast<char>('0' + c % 10), ';'};
        put(std::string_view(reference, sizeof reference));
    }
    }
}

void XmlOutput::declaration() {
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    settle(at_);
}

void XmlOutput::put_line_break(std::size_t depth) {
    put('\n');
    for (std::size_t i = 0; i < depth; ++i) put(std::string_view(blanks, indentation));
}

XmlOutput& XmlOutput::open_slow(std::string_view name, Layout layout) {
    bool converted = false;
    if (!is_valid_name(name)) {
        name = converted_name(name);
        converted = true;
    }
    if (layout != Layout::inline_ && depth_ != 0) put_line_break(depth_);
    put('<');
    put(name);
    put('>');
    // Names come from inputs of at most 1 GiB: the size fits.
    slow_.push_back({name.data(), static_cast<std::uint32_t>(name.size()), layout, converted});
    if (depth_ <= max_line_depth) slow_depths_ |= std::uint32_t{1} << depth_;
    ++depth_;
    tag_end_ = at_;
    settle(at_);
    return *this;
}

void XmlOutput::line_text_slow(std::string_view name, std::string_view content) {
    open_line(name).text(content).close_line(name);
}

void XmlOutput::line_empty_slow(std::string_view name) { open_line(name).close_line(name); }

void XmlOutput::line_empty_slow(std::string_view name, std::string_view attribute_name, std::string_view value) {
    open_line(name).attribute(attribute_name, value).close_line(name);
}

void XmlOutput::close_slow() {
    const std::size_t depth = --depth_;
    const Open element = slow_.back();
    slow_.pop_back();
    if (depth <= max_line_depth) slow_depths_ &= ~(std::uint32_t{1} << depth);
    if (at_ == tag_end_ && element.layout != Layout::block) {
        at_[-1] = '/';
        put('>');
    } else {
        if (element.layout == Layout::block) put_line_break(depth);
        put("</");
        put(element.name_view());
        put('>');
        if (depth == 0) put('\n');  // the document ends with a line end
    }
    if (element.converted) converted_names_.pop_back();
    settle(at_);
}

XmlOutput& XmlOutput::long_attribute(std::string_view name, std::string_view value) {
    --at_;  // the start tag's '>', kept in the buffer (hand_on)
    put(' ');
    put(name);
    put("=\"");
    put_escaped(value, true);
    put("\">");
    tag_end_ = at_;
    settle(at_);
    return *this;
}

bool XmlOutput::is_plain_name(std::string_view name) { return is_ascii_xml_name(name); }

// Only short names are remembered: the size must fit beside the place in name_key.
bool XmlOutput::is_valid_name(std::string_view name) {
    if (name.size() > short_text) return is_plain_name(name);
    if (is_known_name(name)) return true;
    if (!is_plain_name(name)) return false;
    std::uint64_t* const pair = name_pair(name_key(name));
    pair[1] = pair[0];
    pair[0] = name_key(name);
    return true;
}

// A name XML cannot read would make the whole document unreadable.
std::string_view XmlOutput::converted_name(std::string_view name) {
    std::string text = to_document_text(name);
    if (!is_xml_name(text)) throw std::logic_error(format_message(messages::invalid_element_name, {text}));
    converted_names_.push_back(std::move(text));
    return converted_names_.back();
}

}  // namespace edd
