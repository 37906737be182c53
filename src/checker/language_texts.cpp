// SPDX-License-Identifier: Apache-2.0
#include "checker/language_texts.hpp"

#include <cstddef>

namespace edd {

namespace {

bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// The length of the mark at `at` ("|de|" gives 4), or 0 where none starts.
std::size_t mark_length(std::string_view text, std::size_t at) {
    constexpr std::size_t shortest = 2, longest = 5;
    if (text[at] != '|') return 0;
    std::size_t end = at + 1;
    while (end < text.size() && end - at - 1 < longest &&
           (is_letter(text[end]) || (end - at - 1 >= shortest && (text[end] == '_' || text[end] == '-'))))
        ++end;
    const std::size_t length = end - at - 1;
    return end < text.size() && text[end] == '|' && length >= shortest ? length + 2 : 0;
}

}  // namespace

std::vector<LanguageText> split_languages(std::string_view text) {
    std::vector<LanguageText> parts;
    std::string_view language;
    std::size_t start = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t length = mark_length(text, at);
        if (length == 0) continue;
        if (at > start || !language.empty()) parts.push_back({language, text.substr(start, at - start)});
        language = text.substr(at + 1, length - 2);
        start = at + length;
        at = start - 1;
    }
    if (start < text.size() || !language.empty() || parts.empty()) parts.push_back({language, text.substr(start)});
    return parts;
}

}  // namespace edd
