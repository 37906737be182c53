#include "model/code_value.hpp"

#include <cstdint>

namespace edd {

std::string render_tokens(const std::vector<Token>& tokens, bool quote_strings, bool separate) {
    std::string text;
    for (const Token& token : tokens) {
        if (quote_strings && token.is(STRING)) {
            text += '"';
            text += token.text();
            text += '"';
        } else {
            text += token.text();
        }
        if (separate) text += ' ';
    }
    return text;
}

bool CodeValue::equals(const Value& other) const {
    if (other.kind() != ValueKind::CODE) return false;
    const auto* code = dynamic_cast<const CodeValue*>(&other);
    return code != nullptr && tokens_ == code->tokens_ && text_ == code->text_;
}

std::string CodeValue::to_string() const { return has_tokens() ? render_tokens(tokens_, true, true) : text_; }

// One pass with a memory of two tokens: an identifier after "[" is a key unless an
// identifier stands before the bracket (that is indexing); an identifier after
// "get_dictionary_string(" is a key too.
void CodeValue::collect_dictionary_keys(KeySet& keys) const {
    constexpr std::string_view lookup_function = "get_dictionary_string";
    std::uint32_t previous = UNDEFINED;
    std::uint32_t before_previous = UNDEFINED;
    bool previous_is_lookup = false;
    bool before_previous_is_lookup = false;
    for (const Token& token : tokens_) {
        if (token.is(IDENTIFIER)) {
            if (previous == LEFT_SQUARE_BRACKET && before_previous != IDENTIFIER)
                keys.emplace(token.text());
            else if (previous == LEFT_BRACKET && before_previous_is_lookup)
                keys.emplace(token.text());
        }
        before_previous = previous;
        before_previous_is_lookup = previous_is_lookup;
        previous = token.kind();
        previous_is_lookup = token.is(IDENTIFIER) && token.text() == lookup_function;
    }
}

}  // namespace edd
