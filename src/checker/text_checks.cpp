// The checks on texts: dictionary keys that have none, and texts that lack a language the
// description's other texts have.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "checker/check_context.hpp"
#include "checker/language_texts.hpp"
#include "checker/model_walk.hpp"
#include "diagnostics/format.hpp"
#include "model/simple_value.hpp"

namespace edd {

namespace {

// How a text is named in a finding: the string in quotes, cut short, or the key in brackets.
std::string text_label(const SimpleValue& value) {
    constexpr std::size_t longest = 40;
    if (value.kind() == ValueKind::DICTIONARY_REFERENCE) return concat({"[", value.text(), "]"});
    const std::string_view text = value.text();
    return concat({"\"", text.substr(0, longest), text.size() > longest ? "...\"" : "\""});
}

class TextChecks {
public:
    TextChecks(const CheckContext& context, Findings& findings) : context_(context), findings_(findings) {}

    void run() {
        walk_items(context_.parsed.items(), [this](const Found& found) {
            if (found.value.kind() == ValueKind::DICTIONARY_REFERENCE) key(found);
            if (found.place == Place::text && found.value.kind() != ValueKind::REFERENCE)
                texts_.push_back({&found.item, static_cast<const SimpleValue*>(&found.value)});
        });
        if (findings_.wanted(CheckId::missing_language)) languages();
    }

private:
    struct Text {
        const Item* item;
        const SimpleValue* value;
    };

    void key(const Found& found) {
        const auto& value = static_cast<const SimpleValue&>(found.value);
        if (context_.dictionary == nullptr || context_.dictionary->contains(value.text())) return;
        findings_.add(CheckId::undefined_dictionary_key, context_.positions.of(value, found.item.origin()),
                      {value.text()});
    }

    // The text itself, or the dictionary's; nothing for a key without one.
    std::optional<std::string_view> text_of(const SimpleValue& value) const {
        if (value.kind() == ValueKind::STRING) return value.text();
        if (context_.dictionary != nullptr && context_.dictionary->contains(value.text()))
            return context_.dictionary->text(value.text());
        return std::nullopt;
    }

    // Every language any text marks; a text without marks, or its unmarked start, is taken
    // to be in the first language that the first marked text names.
    void languages() {
        std::vector<std::string_view> all;
        for (const Text& text : texts_)
            if (const std::optional<std::string_view> body = text_of(*text.value))
                for (const LanguageText& part : split_languages(*body))
                    if (!part.language.empty() && std::ranges::find(all, part.language) == all.end())
                        all.push_back(part.language);
        if (all.size() < 2) return;
        std::unordered_set<std::string_view> keys_reported;
        for (const Text& text : texts_) {
            const std::optional<std::string_view> body = text_of(*text.value);
            if (!body) continue;
            if (text.value->kind() == ValueKind::DICTIONARY_REFERENCE && !keys_reported.insert(text.value->text()).second)
                continue;
            missing(text, split_languages(*body), all);
        }
    }

    void missing(const Text& text, const std::vector<LanguageText>& parts, const std::vector<std::string_view>& all) {
        std::string absent;
        for (std::string_view language : all) {
            const bool has = std::ranges::any_of(parts, [&](const LanguageText& part) {
                return part.language == language || (part.language.empty() && language == all.front());
            });
            if (has) continue;
            if (!absent.empty()) absent += ", ";
            absent += language;
        }
        if (absent.empty()) return;
        findings_.add(CheckId::missing_language, context_.positions.of(*text.value, text.item->origin()),
                      {text_label(*text.value), absent});
    }

    const CheckContext& context_;
    Findings& findings_;
    std::vector<Text> texts_;
};

}  // namespace

void check_texts(const CheckContext& context, Findings& findings) { TextChecks(context, findings).run(); }

}  // namespace edd
