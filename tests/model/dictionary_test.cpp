// The dictionary store: lookups by exact key, the duplicate check of add and its absence in
// append_all, the error texts, and the source form of an entry.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/dictionary.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

std::vector<std::string> keys_in_order(const Dictionary& dictionary) {
    std::vector<std::string> keys;
    for (const DictionaryEntry& entry : dictionary.entries()) keys.push_back(entry.key + "=" + entry.text);
    return keys;
}

TEST(Dictionary, LooksUpByExactKey) {
    Dictionary dictionary;
    dictionary.add({"pressure", "Pressure"});
    dictionary.add({"Pressure", "upper case"});
    dictionary.add({"empty", ""});
    EXPECT_EQ(dictionary.size(), 3u);
    EXPECT_TRUE(dictionary.contains("pressure"));
    EXPECT_FALSE(dictionary.contains("PRESSURE"));
    EXPECT_FALSE(dictionary.contains("press"));
    EXPECT_EQ(dictionary.text("pressure"), "Pressure");
    EXPECT_EQ(dictionary.text("Pressure"), "upper case");
    EXPECT_EQ(dictionary.text("empty"), "");
    EXPECT_EQ(dictionary.entry("pressure"), (DictionaryEntry{"pressure", "Pressure"}));
    EXPECT_EQ(keys_in_order(dictionary), (std::vector<std::string>{"pressure=Pressure", "Pressure=upper case", "empty="}));
}

TEST(Dictionary, MissingKeysAndDuplicatesNameTheDictionary) {
    Dictionary unnamed;
    unnamed.add({"k", "first"});
    EXPECT_EQ(outcome([&] { unnamed.add({"k", "second"}); }), "invalid_argument: k is already defined in dictionary ");
    EXPECT_EQ(outcome([&] { (void)unnamed.entry("x"); }), "invalid_argument: x is not defined in dictionary ");
    EXPECT_EQ(outcome([&] { (void)unnamed.text("K"); }), "invalid_argument: K is not defined in dictionary ");
    EXPECT_EQ(unnamed.size(), 1u);
    EXPECT_EQ(unnamed.text("k"), "first");

    Dictionary named("standard.dct");
    named.add({"k", "first"});
    EXPECT_EQ(outcome([&] { named.add({"k", "first"}); }),
              "invalid_argument: k is already defined in dictionary standard.dct");
    EXPECT_EQ(outcome([&] { (void)named.text("x"); }), "invalid_argument: x is not defined in dictionary standard.dct");
}

TEST(Dictionary, AppendAllKeepsDuplicatesAndTheFirstEntryWins) {
    Dictionary merged;
    merged.add({"shared", "from the start"});

    Dictionary first;
    first.add({"a", "first a"});
    first.add({"shared", "first shared"});
    Dictionary second;
    second.add({"a", "second a"});
    second.add({"b", "second b"});

    merged.append_all(first);
    merged.append_all(second);
    EXPECT_EQ(merged.size(), 5u);
    EXPECT_EQ(keys_in_order(merged),
              (std::vector<std::string>{"shared=from the start", "a=first a", "shared=first shared", "a=second a",
                                        "b=second b"}));
    EXPECT_EQ(merged.text("shared"), "from the start");
    EXPECT_EQ(merged.text("a"), "first a");
    EXPECT_EQ(merged.text("b"), "second b");
    // The duplicate check of add still sees every appended key.
    EXPECT_EQ(outcome([&] { merged.add({"b", "again"}); }), "invalid_argument: b is already defined in dictionary ");

    Dictionary empty;
    merged.append_all(empty);
    EXPECT_EQ(merged.size(), 5u);
}

TEST(DictionaryEntry, SourceFormWritesZeroNumbersAndQuotesTheTextVerbatim) {
    const std::pair<DictionaryEntry, std::string> cases[] = {
        {{"pressure", "Pressure"}, "[0, 0] pressure \"Pressure\""},
        {{"empty", ""}, "[0, 0] empty \"\""},
        {{"quoted", "say \"hi\"\\n"}, "[0, 0] quoted \"say \"hi\"\\n\""},
    };
    for (const auto& [entry, text] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(to_string(entry), text);
    }
    EXPECT_FALSE((DictionaryEntry{"k", "a"}) == (DictionaryEntry{"k", "b"}));
    EXPECT_FALSE((DictionaryEntry{"k", "a"}) == (DictionaryEntry{"K", "a"}));
}

}  // namespace
}  // namespace edd
