// SPDX-License-Identifier: Apache-2.0
// Writes an XML document as a stream, in order, into a buffer handed on in large chunks.
// It owns everything about the bytes: the open elements, indentation (four blanks per
// level), escaping and the text rule by which every model string becomes document text.
// The caller says only what to write. The per-element steps are inline: a document has an
// element for every value. Each step finds room for all its bytes ready and writes them
// through a local cursor, so the bytes it stores need not be followed by reloads of the
// writer's own fields; it makes the room again at its end, where handing on the buffer is
// the last thing it does (see step_room).
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "files/reserved_range.hpp"
#include "text/byte_copy.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace edd {

class XmlOutput {
public:
    // Receives the document in chunks of about 64 KiB; may throw to abandon it.
    using Deliver = std::function<void(std::string_view chunk)>;

    explicit XmlOutput(Deliver deliver);
    XmlOutput(const XmlOutput&) = delete;
    XmlOutput& operator=(const XmlOutput&) = delete;

    // The declaration and its line end.
    void declaration();
    // Element names stay where they are until the document is written (the program's own
    // texts and the model's): a name met at the same place before is not checked again.
    //
    // An element on a line of its own whose children each stand on their own lines; it
    // closes on a line of its own too, even when it has no children.
    XmlOutput& open_block(std::string_view name) { return open(name, Layout::block, false); }
    // An element on a line of its own that holds text or inline elements, or nothing (then
    // it closes itself: <NAME/>).
    XmlOutput& open_line(std::string_view name) { return open(name, Layout::line, false); }
    // An element that stays on its parent's line.
    XmlOutput& open_inline(std::string_view name) { return open(name, Layout::inline_, false); }
    // The program's own names, given as literals, are valid as they stand.
    template <std::size_t N>
    XmlOutput& open_block(const char (&name)[N]) {
        return open({name, N - 1}, Layout::block, true);
    }
    template <std::size_t N>
    XmlOutput& open_line(const char (&name)[N]) {
        return open({name, N - 1}, Layout::line, true);
    }
    template <std::size_t N>
    XmlOutput& open_inline(const char (&name)[N]) {
        return open({name, N - 1}, Layout::inline_, true);
    }
    // A name of the program's own (from its tables of item types and attributes, or a word
    // the parser names entries with), valid as it stands.
    struct OwnName {
        std::string_view text;
    };
    XmlOutput& open_block(OwnName name) { return open(name.text, Layout::block, true); }
    // Whole elements on lines of their own, opened and closed in one step: the leaves, most
    // of a document's elements. Each writes the bytes that opening, text or attribute, and
    // closing would.
    //
    // <NAME>content</NAME>, with a name given as a literal.
    template <std::size_t N>
    void line_text(const char (&name)[N], std::string_view content) {
        static_assert(opened_bytes + leaf_bytes + short_text + N + 2 <= step_room);
        if (!leaf_fits({name, N - 1}, true)) return line_text_slow({name, N - 1}, content);
        char* at = start_leaf({name, N - 1});
        *at++ = '>';
        at = leaf_content(at, content, false);
        *at++ = '<';
        *at++ = '/';
        at = copy(at, name, N - 1);
        *at++ = '>';
        settle(at);
    }
    // <NAME/>
    void line_empty(std::string_view name) {
        if (!leaf_fits(name, false)) return line_empty_slow(name);
        char* const at = start_leaf(name);
        at[0] = '/';
        at[1] = '>';
        settle(at + 2);
    }
    // <NAME ATTRIBUTE="value"/>, with the names given as literals.
    template <std::size_t N, std::size_t M>
    void line_empty(const char (&name)[N], const char (&attribute_name)[M], std::string_view value) {
        static_assert(opened_bytes + leaf_bytes + M + 2 + short_text + 3 <= step_room);
        if (!leaf_fits({name, N - 1}, true)) return line_empty_slow({name, N - 1}, {attribute_name, M - 1}, value);
        char* at = start_leaf({name, N - 1});
        *at++ = ' ';
        at = copy(at, attribute_name, M - 1);
        *at++ = '=';
        *at++ = '"';
        at = leaf_content(at, value, true);
        at[0] = '"';
        at[1] = '/';
        at[2] = '>';
        settle(at + 3);
    }
    // Only right after opening an element: it goes before the start tag's '>'.
    XmlOutput& attribute(std::string_view name, std::string_view value) {
        assert(tag_end_ == at_);
        if (name.size() > short_text) return long_attribute(name, value);
        char* at = at_ - 1;
        *at++ = ' ';
        at = copy_short(at, name);
        *at++ = '=';
        *at++ = '"';
        at_ = at;
        put_escaped(value, true);
        at = at_;
        *at++ = '"';
        *at++ = '>';
        tag_end_ = at;
        settle(at);
        return *this;
    }
    // Text content, possibly empty: the element then no longer closes itself.
    XmlOutput& text(std::string_view content) {
        tag_end_ = nullptr;
        put_escaped(content, false);
        return *this;
    }
    // Closes the innermost element, which the caller names as it opened it: a block on a
    // line of its own; a line or inline element after its content, or as <NAME/> when it
    // has none. Opening the short way stores nothing for the close.
    void close_block(std::string_view name) { close(name, Layout::block); }
    void close_line(std::string_view name) { close(name, Layout::line); }
    // Hands on what is buffered; the document is complete when every element is closed.
    void flush();
    // An empty string to put a text together in before it is written (the source form of a
    // condition, say): one for the whole document spares an allocation per text.
    std::string& scratch() {
        scratch_.clear();
        return scratch_;
    }
    // Room for `size` bytes to put a text together in, as they are (not cleared first):
    // valid until the next call.
    char* scratch_bytes(std::size_t size) {
        if (size > scratch_bytes_size_) {
            scratch_bytes_.reset(new char[size]);
            scratch_bytes_size_ = size;
        }
        return scratch_bytes_.get();
    }

private:
    enum class Layout : unsigned char { block, line, inline_ };
    // An element opened the slow way (see open_slow).
    struct Open {  // sixteen bytes
        const char* name;  // the caller's text, or the last of converted_names_
        std::uint32_t size;
        Layout layout;
        bool converted;
        std::string_view name_view() const { return {name, size}; }
    };

    // Inline everywhere, though the compiler would rather not: a call per element costs
    // more than the element's own bytes.
    // The depth is counted before the bytes are stored, as close() explains; nothing else
    // is kept (the caller names the element it closes). The start tag is ended at once; an
    // attribute or an empty element's close takes the '>' back (tag_end_). The root and
    // elements deeper than one run of blanks indents go the slow way.
    [[gnu::always_inline]] XmlOutput& open(std::string_view name, Layout layout, bool valid) {
        const std::size_t depth = depth_;
        if (name.size() > short_text || depth - 1 >= max_line_depth || !(valid || is_known_name(name)))
            return open_slow(name, layout);
        depth_ = depth + 1;
        char* at = at_;
        if (layout != Layout::inline_) at = line_break(at, depth);
        *at++ = '<';
        at = copy_short(at, name);
        *at++ = '>';
        tag_end_ = at;
        at_ = at;  // no room made: see step_room
        return *this;
    }
    // The depth is read before the first byte is stored: a store through a char pointer
    // could change it, as far as the compiler knows. The root is opened the slow way, so
    // the line end after it is close_slow's.
    [[gnu::always_inline]] void close(std::string_view name, Layout layout) {
        assert(depth_ != 0);
        const std::size_t depth = depth_ - 1;
        if (depth > max_line_depth || ((slow_depths_ >> depth) & 1) != 0) return close_slow();
        depth_ = depth;
        char* at = at_;
        if (layout == Layout::block) {
            at = line_break(at, depth);
        } else if (at == tag_end_) {  // nothing since the start tag: <NAME/>
            at[-1] = '/';
            *at++ = '>';
            return settle(at);
        }
        *at++ = '<';
        *at++ = '/';
        at = copy_short(at, name);
        *at++ = '>';
        settle(at);
    }
    // A leaf goes the short way under an open element, at a depth one run of blanks can
    // indent, and with a name that needs no change; else it is opened and closed as usual.
    bool leaf_fits(std::string_view name, bool valid) {
        return depth_ - 1 < max_line_depth && name.size() <= short_text && (valid || is_known_name(name));
    }
    // The line end, indentation and "<NAME", in the room every step finds; leaf_bytes at
    // most.
    char* start_leaf(std::string_view name) {
        const std::size_t depth = depth_;
        char* at = at_;
        at = line_break(at, depth);
        *at++ = '<';
        return copy_short(at, name);
    }
    // A leaf's text or attribute value, escaped, at `at`, in the room of the step for a
    // short one: most take no step of their own. Returns the cursor, with the room of a step
    // less what a leaf wrote before its content.
    char* leaf_content(char* at, std::string_view content, bool attribute) {
        if (content.size() <= short_text) {
            copy(at, content.data(), content.size());
            const std::size_t plain = plain_length(at, content.size(), attribute);
            if (plain == content.size()) return at + plain;
            at_ = at + plain;
            put_escaped_rest(content.substr(plain), attribute);
        } else {
            at_ = at;
            put_escaped_rest(content, attribute);  // takes any text, in pieces
        }
        return at_;
    }
    // A short name and its place as one number, never zero (an empty slot): the place in
    // the upper 56 bits (where user addresses fit), the size plus one in the lowest eight.
    static std::uint64_t name_key(std::string_view name) {
        return (std::uint64_t{reinterpret_cast<std::uintptr_t>(name.data())} << 8) | (name.size() + 1);
    }
    // The program's texts lie close together: a multiplicative hash spreads their places
    // over pairs of slots, the name last found valid first, so that two names of one pair
    // that take turns (an element and its member, say) both stay.
    std::uint64_t* name_pair(std::uint64_t key) { return &checked_names_[((key * 0x9E3779B97F4A7C15u) >> 54) * 2]; }
    // A short name found valid before, at the same place: the common case, answered without
    // a call. Any other goes the slow way, where is_valid_name looks at it.
    bool is_known_name(std::string_view name) {
        const std::uint64_t key = name_key(name);
        const std::uint64_t* const pair = name_pair(key);
        return pair[0] == key || pair[1] == key;
    }
    bool is_valid_name(std::string_view name);
    static bool is_plain_name(std::string_view name);
    // The rare cases, byte by byte: names the text rule changes or that are long, and
    // elements deeper than one run of blanks can indent.
    XmlOutput& open_slow(std::string_view name, Layout layout);
    // The leaves that do not fit the short way, opened and closed as usual; out of line,
    // so that the short way keeps its registers.
    [[gnu::noinline]] void line_text_slow(std::string_view name, std::string_view content);
    [[gnu::noinline]] void line_empty_slow(std::string_view name);
    [[gnu::noinline]] void line_empty_slow(std::string_view name, std::string_view attribute_name,
                                           std::string_view value);
    void close_slow();
    void put_line_break(std::size_t depth);
    std::string_view converted_name(std::string_view name);
    XmlOutput& long_attribute(std::string_view name, std::string_view value);
    // The cursor, after making room for `size` bytes; `size` is at most `capacity`.
    char* room(std::size_t size) {
        if (size > static_cast<std::size_t>(end_ - at_)) hand_on();
        return at_;
    }
    // Ends a step at `at`, with room for the next.
    void settle(char* at) {
        at_ = at;
        if (at > last_step_) hand_on();
    }
    // A line end and the blanks of `depth` levels, copied in one fixed-size piece from a
    // run of blanks longer than needed: room() was asked for line_room, and only the
    // blanks needed are kept.
    static char* line_break(char* at, std::size_t depth) {
        *at = '\n';
        std::memcpy(at + 1, blanks, sizeof blanks - 1);
        return at + 1 + depth * indentation;
    }
    void put(std::string_view bytes) {
        if (bytes.size() > static_cast<std::size_t>(end_ - at_)) return put_slow(bytes);
        at_ = copy(at_, bytes.data(), bytes.size());
    }
    void put(char c) {
        room(1);
        *at_++ = c;
    }
    void put_slow(std::string_view bytes);
    void hand_on();
    // The text is copied whole and then looked at where it landed, so that the look may
    // read past its end; most texts need nothing more. Leaves the room of a step after it.
    void put_escaped(std::string_view bytes, bool attribute) {
        if (bytes.size() > capacity - step_room) return put_escaped_rest(bytes, attribute);
        char* const to = room(bytes.size() + step_room);
        copy(to, bytes.data(), bytes.size());
        const std::size_t plain = plain_length(to, bytes.size(), attribute);
        at_ = to + plain;
        if (plain != bytes.size()) put_escaped_rest(bytes.substr(plain), attribute);
    }
    void put_escaped_rest(std::string_view bytes, bool attribute);
    // The length of the plain start of `bytes`: the place of the first byte that may need
    // an escape or the text rule, or `size`. It may read up to 15 bytes past the end. The
    // vector form finds a superset of those bytes (every control and byte above 0x7F);
    // put_escaped_rest decides by its table.
#if defined(__SSE2__)
    static std::size_t plain_length(const char* bytes, std::size_t size, bool attribute) {
        const __m128i below = _mm_set1_epi8(0x20);  // as signed bytes: controls and every byte above 0x7F
        // Two of the three special bytes differ in one bit, which makes them one value when
        // set: '<' and '>' in text, '"' and '&' in attribute values.
        const __m128i fold = _mm_set1_epi8(attribute ? 0x04 : 0x02);
        const __m128i pair = _mm_set1_epi8(attribute ? '&' : '>');
        const __m128i single = _mm_set1_epi8(attribute ? '<' : '&');
        for (std::size_t at = 0; at < size; at += 16) {
            const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
            const __m128i found = _mm_or_si128(_mm_or_si128(_mm_cmpgt_epi8(below, x), _mm_cmpeq_epi8(x, single)),
                                               _mm_cmpeq_epi8(_mm_or_si128(x, fold), pair));
            const auto mask = static_cast<unsigned>(_mm_movemask_epi8(found));
            if (mask != 0) return std::min(size, at + static_cast<std::size_t>(std::countr_zero(mask)));
        }
        return size;
    }
#else
    static std::size_t plain_length(const char* bytes, std::size_t size, bool attribute);
#endif
    void put_escape(unsigned char c);
    static char* copy_short(char* to, std::string_view text) { return copy(to, text.data(), text.size()); }
    static char* copy(char* to, const char* from, std::size_t size) { return copy_bytes(to, from, size); }

    static constexpr std::size_t indentation = 4;  // blanks per level
    static constexpr char blanks[] = "                                                                ";
    static constexpr std::size_t line_room = sizeof blanks;  // a line end and the blanks
    static constexpr std::size_t max_line_depth = (sizeof blanks - 1) / indentation;
    // Names up to this size go the inline way.
    static constexpr std::size_t short_text = 128;
    // The most a leaf writes before its content: the end of its parent's start tag, the
    // line end and blanks, and "<NAME".
    static constexpr std::size_t leaf_bytes = 1 + line_room + 1 + short_text;
    // The room every step finds: more than any step writes without asking for room of its
    // own (a leaf with a short content, an element closed, an attribute's name), after as
    // many elements opened the short way as can be in a row. Those make no room at their
    // end: each one opened deeper, so there are at most max_line_depth of them.
    static constexpr std::size_t open_bytes = line_room + 1 + short_text + 1;
    static constexpr std::size_t opened_bytes = max_line_depth * open_bytes;
    static constexpr std::size_t step_room = 4096;
    static_assert(opened_bytes + leaf_bytes + 2 * short_text + 8 <= step_room);
    // The buffer: what is handed on at a time is about 64 KiB, with a step's room beyond.
    static constexpr std::size_t capacity = (std::size_t{1} << 16) + step_room;
    static_assert(short_text + 1 < 256, "name_key keeps the size in eight bits");
    // Room behind the buffer that escaping may read (never write) past its text.
    static constexpr std::size_t scan_slack = 16;
    Deliver deliver_;
    // Its size is known, so its pages are taken cleared in one call rather than a fault each.
    ReservedRange buffer_;
    char* at_;
    char* end_;
    char* last_step_;  // the last place a step may start at: step_room before end_
    // How many elements are open; which of them, as far as one run of blanks indents, were
    // opened the slow way (a bit per depth: every deeper one was); those, innermost last.
    std::size_t depth_ = 0;
    std::uint32_t slow_depths_ = 0;
    static_assert(max_line_depth < 32);
    std::vector<Open> slow_;
    std::string scratch_;
    std::unique_ptr<char[]> scratch_bytes_;
    std::size_t scratch_bytes_size_ = 0;
    std::deque<std::string> converted_names_;  // names the text rule changed, innermost last; they stay put
    // Just after the '>' of the last start tag while nothing follows it: the cursor then
    // equals it, and close() makes the element <NAME/>. hand_on() keeps that '>' back.
    char* tag_end_ = nullptr;
    // Names found valid as they stand, as name_key, by a hash of their place.
    std::array<std::uint64_t, 2048> checked_names_{};
};

}  // namespace edd
