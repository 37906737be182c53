// The dictionary file reader: entries with concatenated texts, the skipped marker keys, and
// the ways a file fails (a malformed entry on the diagnostics, a repeated key on standard error).
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "frontend/lexer.hpp"
#include "import_helpers.hpp"
#include "parser/dictionary_reader.hpp"

namespace edd {
namespace {

using import_test::CerrCapture;

struct Load {
    bool ok = false;
    std::vector<std::string> entries;  // "key=text" in file order
    std::string diagnostics;
    std::string error_output;
};

Load load(std::string text) {
    std::ostringstream diagnostics;
    Load result;
    {
        CerrCapture error_output;
        Lexer lexer = Lexer::from_text(std::move(text), "texts.dct", diagnostics);
        DictionaryReader reader(lexer, diagnostics);
        result.ok = reader.load();
        for (const DictionaryEntry& entry : reader.dictionary().entries())
            result.entries.push_back(entry.key + "=" + entry.text);
        result.error_output = error_output.str();
    }
    result.diagnostics = diagnostics.str();
    return result;
}

TEST(DictionaryReader, ReadsEntriesInFileOrder) {
    const Load result = load(
        "// texts of the pressure device\n"
        "[1, 2] first \"one\"\n"
        "[0,0] second \"two \" \"parts\"\n"
        "   \"\" \"!\"\n"
        "[3, 4] xxx_highestoffset \"999\"\n"
        "[5, 6] xxx_highoffset \"998\"\n"
        "/* an empty text */ [7, 8] third \"\"\n"
        "[0, 0] First \"case matters\"\n");
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.diagnostics, "");
    EXPECT_EQ(result.error_output, "");
    EXPECT_EQ(result.entries,
              (std::vector<std::string>{"first=one", "second=two parts!", "third=", "First=case matters"}));
}

TEST(DictionaryReader, FilesWithoutEntriesLoad) {
    for (const char* text : {"", "\n\n", "// nothing yet\n/* still nothing */"}) {
        SCOPED_TRACE(text);
        const Load result = load(text);
        EXPECT_TRUE(result.ok);
        EXPECT_TRUE(result.entries.empty());
        EXPECT_EQ(result.diagnostics, "");
    }
}

TEST(DictionaryReader, RepeatedKeyFailsOnStandardError) {
    const Load result = load("[0, 0] label \"first\"\n[0, 1] other \"x\"\n[0, 2] label \"second\"\n");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.diagnostics, "");
    EXPECT_EQ(result.error_output, "failure in parser:label is already defined in dictionary \n");

    // The marker keys are dropped before the check, so they may come twice.
    const Load markers = load("[0, 0] xxx_highoffset \"1\"\n[0, 0] xxx_highoffset \"2\"\n");
    EXPECT_TRUE(markers.ok);
    EXPECT_TRUE(markers.entries.empty());
}

TEST(DictionaryReader, MalformedEntriesAreFatal) {
    const struct {
        const char* text;
        const char* diagnostics;
    } cases[] = {
        {"[0, 0] 5 \"x\"", "texts.dct(1): error: Expected identifier but got INTEGER(5).\n"},
        {"[0, 0] \"key\" \"x\"", "texts.dct(1): error: Expected identifier but got STRING(key).\n"},
        {"[0, 0] key 5", "texts.dct(1): error: Expected string literal but got INTEGER(5).\n"},
        {"[0, 0] key\n", "texts.dct(2): error: Expected string literal but got END_OF_FILE().\n"},
        {"[0, 0] key other \"x\"", "texts.dct(1): error: Expected string literal but got IDENTIFIER(other).\n"},
        {"0, 0] key \"x\"", "texts.dct(1): error: Expected [ but got 0\n"},
        {"key \"x\"", "texts.dct(1): error: Expected [ but got key\n"},
        {"[x, 0] key \"x\"", "texts.dct(1): error: Expected integer but got x\n"},
        {"[0, 1.5] key \"x\"", "texts.dct(1): error: Expected integer but got 1.5\n"},
        {"[0; 0] key \"x\"", "texts.dct(1): error: Expected , but got ;\n"},
        {"[0, 0 key \"x\"", "texts.dct(1): error: Expected ] but got key\n"},
        {"[0, 0] a \"a\"\n\n[0, 0] b \"b\" ]", "texts.dct(3): error: Expected [ but got ]\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const Load result = load(c.text);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.diagnostics, c.diagnostics);
        EXPECT_EQ(result.error_output, "");
    }
}

}  // namespace
}  // namespace edd
