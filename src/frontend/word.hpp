// SPDX-License-Identifier: Apache-2.0
// The number of a word the grammars test for, which its token carries, so that the parser
// compares numbers instead of texts. A punctuator's number is its kind; a word of the
// keyword table (keywords, and the other words the grammars know) is numbered above every
// punctuator; zero stands for none (every other text, and every string literal).
#pragma once

#include <cstdint>

namespace edd {

class Word {
public:
    constexpr Word() = default;
    // The word of a punctuator or of the keyword table, found when the program is compiled:
    // any other text does not compile. Defined in frontend/keywords.hpp.
    consteval Word(const char* spelling);  // NOLINT(google-explicit-constructor): at("IF") reads best
    static constexpr Word numbered(std::uint16_t number) {
        Word word;
        word.number_ = number;
        return word;
    }

    constexpr std::uint16_t number() const { return number_; }
    constexpr bool is_none() const { return number_ == 0; }
    // A word of the keyword table (not a punctuator), whose spelling lasts as long as the program.
    constexpr bool in_table() const;
    constexpr bool operator==(const Word&) const = default;

private:
    std::uint16_t number_ = 0;
};

// The numbers of the keyword table's words start here, above every punctuator kind.
inline constexpr std::uint16_t first_table_word = 1024;
// Every word number is below this.
inline constexpr std::uint16_t word_number_limit = 2 * first_table_word;

constexpr bool Word::in_table() const { return number_ >= first_table_word; }

}  // namespace edd
