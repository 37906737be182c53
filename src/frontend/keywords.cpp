// SPDX-License-Identifier: Apache-2.0
#include "frontend/keywords.hpp"

namespace edd {

namespace {

using keyword_table::word_table;

Word number_of(const keyword_table::ClassifiedWord& entry) {
    return Word::numbered(static_cast<std::uint16_t>(first_table_word + (&entry - word_table.data())));
}

}  // namespace

WordClass classify_word(std::string_view word) {
    const keyword_table::ClassifiedWord* found = keyword_table::find_word(word);
    return found != nullptr ? WordClass{found->kind, number_of(*found)} : WordClass{IDENTIFIER, Word()};
}

std::string_view keyword_spelling(std::string_view word) {
    const keyword_table::ClassifiedWord* found = keyword_table::find_word(word);
    return found != nullptr ? found->word : std::string_view();
}

std::string_view spelling_of(Word word) {
    if (word.number() >= first_table_word) return word_table[word.number() - first_table_word].word;
    for (const Punctuator& punctuator : punctuators)
        if (punctuator.kind == word.number()) return punctuator.spelling;
    return {};
}

Word word_of(std::uint32_t kind, std::string_view text) {
    if (kind == STRING) return Word();
    if (const auto punctuator = match_punctuator(text); punctuator && punctuator->spelling.size() == text.size())
        return Word::numbered(static_cast<std::uint16_t>(punctuator->kind));
    const keyword_table::ClassifiedWord* found = keyword_table::find_word(text);
    return found != nullptr ? number_of(*found) : Word();
}

}  // namespace edd
