// SPDX-License-Identifier: Apache-2.0
// The lexer classifies words by loading their first sixteen bytes whole. That must agree
// with the byte-wise lookup for every word of the table and for words that differ from one
// in a single byte on either side of each load's edge, or in length.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "frontend/keywords.hpp"

namespace edd {
namespace {

TEST(Keywords, LoadedLookupAgreesWithByteLookup) {
    std::vector<std::string> words;
    for (const auto& entry : keyword_table::word_table) {
        if (entry.word.empty()) continue;
        const std::string word(entry.word);
        words.push_back(word);
        words.push_back(word + "X");
        words.push_back(word.substr(0, word.size() - 1));
        for (const std::size_t at : {std::size_t{0}, std::size_t{7}, std::size_t{8}, std::size_t{15}, std::size_t{16},
                                     word.size() - 1}) {
            if (at >= word.size()) continue;
            std::string changed = word;
            changed[at] = changed[at] == 'Z' ? 'Y' : 'Z';
            words.push_back(changed);
        }
    }
    for (const std::string& word : words) {
        if (word.empty()) continue;
        SCOPED_TRACE(word);
        // Followed by bytes a word cannot hold, as in a source text.
        const std::string text = word + std::string(16, '\0');
        const WordClass loaded = classify_word_with_room(std::string_view(text.data(), word.size()));
        const WordClass byte_wise = classify_word(word);
        EXPECT_EQ(loaded.kind, byte_wise.kind);
        EXPECT_EQ(loaded.word, byte_wise.word);
    }
}

}  // namespace
}  // namespace edd
