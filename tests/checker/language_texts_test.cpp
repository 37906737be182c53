// SPDX-License-Identifier: Apache-2.0
// Texts split into their languages: marks of two to five letters, an unmarked start, and
// bars that mark nothing.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "checker/language_texts.hpp"

namespace edd {
namespace {

std::string parts_of(std::string_view text) {
    std::string parts;
    for (const LanguageText& part : split_languages(text)) {
        parts += '<';
        parts += part.language;
        parts += ':';
        parts += part.text;
        parts += '>';
    }
    return parts;
}

TEST(LanguageTexts, Table) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"", "<:>"},
        {"Main menu", "<:Main menu>"},
        {"|en|Main menu|de|Hauptmenü", "<en:Main menu><de:Hauptmenü>"},
        {"Main menu|de|Hauptmenü", "<:Main menu><de:Hauptmenü>"},
        {"|en|", "<en:>"},
        {"|en||de|x", "<en:><de:x>"},
        {"|zh_CN|x|en-US|y", "<zh_CN:x><en-US:y>"},
        {"a|b|c", "<:a|b|c>"},                  // one letter marks nothing
        {"|german|x", "<:|german|x>"},          // nor six
        {"|e-|x|e_s|y", "<:|e-|x|e_s|y>"},      // nor "-" or "_" before two letters
        {"|_x|y", "<:|_x|y>"},                  // nor a start that is no letter
        {"x|de", "<:x|de>"},                    // nor an unclosed mark
        {"1|2|en|3", "<:1|2><en:3>"},
    };
    for (const auto& [text, parts] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(parts_of(text), parts);
    }
}

}  // namespace
}  // namespace edd
