// Writes an XML document as a stream, in order, into a buffer handed on in large chunks.
// It owns everything about the bytes: the open elements, indentation (four blanks per
// level), escaping and the text rule by which every model string becomes document text.
// The caller says only what to write.
#pragma once

#include <array>
#include <cstddef>
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
    XmlOutput& open_block(std::string_view name);
    // An element on a line of its own that holds text or inline elements, or nothing (then
    // it closes itself: <NAME/>).
    XmlOutput& open_line(std::string_view name);
    // An element that stays on its parent's line.
    XmlOutput& open_inline(std::string_view name);
    // Only right after opening an element.
    XmlOutput& attribute(std::string_view name, std::string_view value);
    // Text content, possibly empty: the element then no longer closes itself.
    XmlOutput& text(std::string_view text);
    void close();
    // Hands on what is buffered; the document is complete when every element is closed.
    void flush();

private:
    enum class Layout : unsigned char { block, line, inline_ };
    struct Open {
        std::string_view name;  // the caller's text, or the last of converted_names_
        Layout layout;
        bool converted;
    };
    XmlOutput& open(std::string_view name, Layout layout);
    void end_start_tag();
    void line_break(std::size_t depth);
    void put(std::string_view bytes) {
        if (bytes.size() > capacity - used_) return put_slow(bytes);
        std::memcpy(buffer_.get() + used_, bytes.data(), bytes.size());
        used_ += bytes.size();
    }
    void put(char c) {
        if (used_ == capacity) flush();
        buffer_[used_++] = c;
    }
    void put_slow(std::string_view bytes);
    bool is_valid_name(std::string_view name);
    void put_escaped(std::string_view text, unsigned char context);

    static constexpr std::size_t capacity = std::size_t{1} << 16;
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
