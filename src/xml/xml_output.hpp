// SPDX-License-Identifier: Apache-2.0
// Writes an XML document as a stream, in order, into a buffer handed on in large chunks.
// It owns everything about the bytes: the open elements, indentation (four blanks per
// level), escaping and the text rule by which every model string becomes document text.
// The caller says only what to write. The per-element steps are inline: a document has an
// element for every value.
#pragma once

#include <array>
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
    XmlOutput& open_block(std::string_view name) { return open(name, Layout::block); }
    // An element on a line of its own that holds text or inline elements, or nothing (then
    // it closes itself: <NAME/>).
    XmlOutput& open_line(std::string_view name) { return open(name, Layout::line); }
    // An element that stays on its parent's line.
    XmlOutput& open_inline(std::string_view name) { return open(name, Layout::inline_); }
    // Only right after opening an element.
    XmlOutput& attribute(std::string_view name, std::string_view value) {
        assert(start_tag_open_);
        put(' ');
        put(name);
        put("=\"");
        put_escaped(value, true);
        put('"');
        return *this;
    }
    // Text content, possibly empty: the element then no longer closes itself.
    XmlOutput& text(std::string_view content) {
        end_start_tag();
        put_escaped(content, false);
        return *this;
    }
    void close() {
        assert(!open_.empty());
        const Open element = open_.back();
        open_.pop_back();
        if (start_tag_open_ && element.layout != Layout::block) {
            put("/>");
            start_tag_open_ = false;
        } else {
            end_start_tag();
            if (element.layout == Layout::block) line_break(open_.size());
            put("</");
            put(element.name);
            put('>');
            if (open_.empty()) put('\n');  // the document ends with a line end
        }
        if (element.converted) converted_names_.pop_back();
    }
    // Hands on what is buffered; the document is complete when every element is closed.
    void flush();

private:
    enum class Layout : unsigned char { block, line, inline_ };
    struct Open {
        std::string_view name;  // the caller's text, or the last of converted_names_
        Layout layout;
        bool converted;
    };

    XmlOutput& open(std::string_view name, Layout layout) {
        bool converted = false;
        if (!is_valid_name(name)) {
            name = converted_name(name);
            converted = true;
        }
        end_start_tag();
        if (layout != Layout::inline_ && !open_.empty()) line_break(open_.size());
        put('<');
        put(name);
        open_.push_back({name, layout, converted});
        start_tag_open_ = true;
        return *this;
    }
    bool is_valid_name(std::string_view name) {
        // The program's texts lie close together: a multiplicative hash spreads their places.
        const std::uint64_t place = reinterpret_cast<std::uintptr_t>(name.data());
        std::string_view& slot = checked_names_[(place * 0x9E3779B97F4A7C15u) >> 56];
        if (slot.data() == name.data() && slot.size() == name.size()) return true;
        if (!is_plain_name(name)) return false;
        slot = name;
        return true;
    }
    static bool is_plain_name(std::string_view name);
    std::string_view converted_name(std::string_view name);
    void end_start_tag() {
        if (!start_tag_open_) return;
        put('>');
        start_tag_open_ = false;
    }
    // Up to sixteen levels, the blanks are copied in one fixed-size piece from a run of
    // blanks longer than needed: the buffer keeps room for it, and only `count` are kept.
    void line_break(std::size_t depth) {
        const std::size_t count = depth * indentation;
        if (count > sizeof blanks - 1) return deep_line_break(depth);
        if (capacity - used_ < sizeof blanks) flush();
        buffer_[used_] = '\n';
        std::memcpy(buffer_.get() + used_ + 1, blanks, sizeof blanks - 1);
        used_ += count + 1;
    }
    void deep_line_break(std::size_t depth);
    void put(std::string_view bytes) {
        if (bytes.size() > capacity - used_) return put_slow(bytes);
        if (bytes.empty()) return;  // an empty view may have no data at all, which memcpy must not see
        std::memcpy(buffer_.get() + used_, bytes.data(), bytes.size());
        used_ += bytes.size();
    }
    void put(char c) {
        if (used_ == capacity) flush();
        buffer_[used_++] = c;
    }
    void put_slow(std::string_view bytes);
    void put_escaped(std::string_view text, bool in_attribute);

    static constexpr std::size_t capacity = std::size_t{1} << 16;
    static constexpr std::size_t indentation = 4;  // blanks per level
    static constexpr char blanks[] = "                                                                ";
    Deliver deliver_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
    std::vector<Open> open_;
    std::deque<std::string> converted_names_;  // names the text rule changed, innermost last; they stay put
    bool start_tag_open_ = false;
    // Names found valid as they stand, by a hash of their place.
    std::array<std::string_view, 256> checked_names_{};
};

}  // namespace edd
