// SPDX-License-Identifier: Apache-2.0
#include "model/code_value.hpp"

#include "text/byte_copy.hpp"

namespace edd {

namespace {

// One pass with a memory of two tokens: an identifier after "[" is a key unless an
// identifier stands before the bracket (that is indexing); an identifier after
// "get_dictionary_string(" is a key too. `found` hears of each key; it stops the scan by
// returning false.
template <class Found>
void scan_keys(std::span<const CodeToken> tokens, Found found) {
    constexpr std::string_view lookup_function = "get_dictionary_string";
    std::uint32_t previous = UNDEFINED;
    std::uint32_t before_previous = UNDEFINED;
    bool previous_is_lookup = false;
    bool before_previous_is_lookup = false;
    for (const CodeToken& token : tokens) {
        if (token.kind == IDENTIFIER) {
            const bool key = (previous == LEFT_SQUARE_BRACKET && before_previous != IDENTIFIER) ||
                             (previous == LEFT_BRACKET && before_previous_is_lookup);
            if (key && !found(token.text())) return;
        }
        before_previous = previous;
        before_previous_is_lookup = previous_is_lookup;
        previous = token.kind;
        previous_is_lookup = token.kind == IDENTIFIER && token.text() == lookup_function;
    }
}

}  // namespace

CodeValue::CodeValue(Arena& arena, std::span<const CodeToken> tokens)
    : Value(ValueKind::CODE), count_(static_cast<std::uint32_t>(tokens.size())) {
    if (tokens.empty()) return;
    tokens_ = arena.copy_array(tokens, tokens.size());
    std::size_t text_size = 0;
    for (const CodeToken& token : tokens) text_size += arena.keeps(token.text()) ? 0 : token.size;
    if (text_size != 0) {
        char* text = static_cast<char*>(arena.allocate(text_size, 1));
        for (CodeToken& token : std::span<CodeToken>(tokens_, count_)) {
            if (arena.keeps(token.text())) continue;
            const char* source = token.data;
            token.data = text;
            text = copy_bytes(text, source, token.size);
        }
    }
    bool keys = false;
    scan_keys(this->tokens(), [&keys](std::string_view) { return !(keys = true); });
    set_has_keys(keys);
}

ValuePtr CodeValue::clone(Arena& arena) const {
    auto* copy = arena.make<CodeValue>();
    copy->count_ = count_;
    // The texts stay in the arena they are in.
    if (count_ != 0) copy->tokens_ = arena.copy_array(tokens(), count_);
    copy->set_has_keys(has_keys());
    return copy;
}

// The tokens' texts in order, strings quoted again, each token followed by a blank.
std::string CodeValue::to_string() const {
    std::string text;
    for (const CodeToken& token : tokens()) {
        if (token.kind == STRING) {
            text += '"';
            text += token.text();
            text += '"';
        } else {
            text += token.text();
        }
        text += ' ';
    }
    return text;
}

void CodeValue::collect_dictionary_keys(KeySet& keys) const {
    scan_keys(tokens(), [&keys](std::string_view key) {
        keys.emplace(key);
        return true;
    });
}

}  // namespace edd
