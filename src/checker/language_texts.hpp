// SPDX-License-Identifier: Apache-2.0
// Texts in several languages, as descriptions and dictionaries write them:
// "|en|Main menu|de|Hauptmenü", or "Main menu|de|Hauptmenü" with the first language unmarked.
#pragma once

#include <string_view>
#include <vector>

namespace edd {

struct LanguageText {
    std::string_view language;  // empty for an unmarked start
    std::string_view text;
};

// The parts of a text in order; a text without marks is one unmarked part. A mark is a
// '|', two to five letters ('_' and '-' allowed after the first two) and a '|'.
std::vector<LanguageText> split_languages(std::string_view text);

}  // namespace edd
