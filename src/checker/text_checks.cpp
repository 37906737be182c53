// SPDX-License-Identifier: Apache-2.0
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

namespace edd {

namespace {

// A text where it stands: a string or a dictionary key.
struct Text {
    const Item* item;
    const Value* value;
    bool key;
    std::string_view text;  // the string, or the key
};

// How a text is named in a finding: the string in quotes, cut short, or the key in brackets.
std::string text_label(const Text& text) {
    constexpr std::size_t longest = 40;
    if (text.key) return concat({"[", text.text, "]"});
    return concat({"\"", text.text.substr(0, longest), text.text.size() > longest ? "...\"" : "\""});
}

class TextChecks {
public:
    TextChecks(const CheckContext& context, Findings& findings) : context_(context), findings_(findings) {}

    void run() {
        walk_items(context_.parsed.items(), [this](const Found& found) {
            if (found.naming == Naming::dictionary_key) key(found);
            if (found.place == Place::text && (found.naming == Naming::dictionary_key || found.naming == Naming::string))
                texts_.push_back({&found.item, &found.value, found.naming == Naming::dictionary_key, found.text});
        });
        if (findings_.wanted(CheckId::missing_language)) languages();
    }

private:
    void key(const Found& found) {
        if (context_.dictionary == nullptr || context_.dictionary->contains(found.text)) return;
        findings_.add(CheckId::undefined_dictionary_key, context_.positions.of(found.value, found.item.origin()),
                      {found.text});
    }

    // The string itself, or the key's text; nothing for a key without one.
    std::optional<std::string_view> body_of(const Text& text) const {
        if (!text.key) return text.text;
        if (context_.dictionary != nullptr && context_.dictionary->contains(text.text))
            return context_.dictionary->text(text.text);
        return std::nullopt;
    }

    // Every language any text marks; a text without marks, or its unmarked start, is taken
    // to be in the first language that the first marked text names.
    void languages() {
        std::vector<std::string_view> all;
        for (const Text& text : texts_)
            if (const std::optional<std::string_view> body = body_of(text))
                for (const LanguageText& part : split_languages(*body))
                    if (!part.language.empty() && std::ranges::find(all, part.language) == all.end())
                        all.push_back(part.language);
        if (all.size() < 2) return;
        std::unordered_set<std::string_view> keys_reported;
        for (const Text& text : texts_) {
            const std::optional<std::string_view> body = body_of(text);
            if (!body || (text.key && !keys_reported.insert(text.text).second)) continue;
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
                      {text_label(text), absent});
    }

    const CheckContext& context_;
    Findings& findings_;
    std::vector<Text> texts_;
};

}  // namespace

void check_texts(const CheckContext& context, Findings& findings) { TextChecks(context, findings).run(); }

}  // namespace edd
