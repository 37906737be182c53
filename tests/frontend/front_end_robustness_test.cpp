// Lexer and preprocessor over random, truncated and hostile input: every run must reach
// END_OF_FILE without crashing, hanging or reading out of bounds (the sanitizer build runs
// this too).
#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/pp_helpers.hpp"

namespace edd {
namespace {

using test::TempDir;

constexpr std::size_t kTokenLimit = 10'000'000;

// Drains `text` to END_OF_FILE; false when the token limit is reached first.
bool drains(const std::string& text, const std::string& include_dir) {
    std::ostringstream diag;
    Lexer lexer = Lexer::from_text(text, "main.ddl", diag);
    Preprocessor pp(lexer, {include_dir}, diag);
    for (std::size_t i = 0; i < kTokenLimit; ++i) {
        if (pp.next_token().is(END_OF_FILE)) return true;
    }
    return false;
}

// Prints the input of a failing run in a form that can be pasted back into a test.
std::string escaped(std::string_view text) {
    std::string out;
    static const char hex[] = "0123456789abcdef";
    for (unsigned char c : text) {
        if (c == '\\' || c == '"') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c >= 0x20 && c < 0x7F) {
            out += static_cast<char>(c);
        } else {
            out += "\\x";
            out += hex[c >> 4];
            out += hex[c & 0xF];
        }
    }
    return out;
}

void expect_drains(const std::string& text, const std::string& include_dir) {
    EXPECT_TRUE(drains(text, include_dir)) << "token limit reached for \"" << escaped(text) << "\"";
}

const std::vector<std::string> kFragments = {
    "#define", "#undef", "#if", "#ifdef", "#ifndef", "#else", "#endif", "#include", "#line", "#pragma",
    "\n#define A x A\n", "\n#define F(x) x F\n", "\n#define P(a,b) a##b #a\n", "P(", "#endif\n",
    "#", "##", "#x", "(", ")", ",", " ", "\t", "\n", "\r\n", "\r", "\\", "\\\n", "\"", "\"inc.ddl\"",
    "\"\"", "<", ">", "/*", "*/", "//", "A", "B", "F", "x", "F(", "A(a)", "a##b", "#a", "0", "00", "0x",
    "0x1F", "1", "1.", ".5e", "1e+", "017", "0b", "VARIABLE", "MENU", "if", "else", "while", "{", "}",
    ";", "=", "+", "-", "<<=", "...", std::string(1, '\0'), "\xFF", "\xEF\xBB\xBF", "\x80",
};

std::string random_input(std::mt19937& rng) {
    std::uniform_int_distribution<int> length(0, 160);
    std::uniform_int_distribution<int> choice(0, 3);
    std::uniform_int_distribution<std::size_t> fragment(0, kFragments.size() - 1);
    std::uniform_int_distribution<int> byte(0, 255);
    std::string text;
    for (int n = length(rng); n > 0; --n) {
        if (choice(rng) == 0) {
            text += static_cast<char>(byte(rng));
        } else {
            text += kFragments[fragment(rng)];
        }
    }
    return text;
}

TEST(FrontEndRobustness, RandomInputsDrain) {
    TempDir empty;
    std::mt19937 rng(20240611u);
    for (int i = 0; i < 12000; ++i) expect_drains(random_input(rng), empty.str());
}

TEST(FrontEndRobustness, PurelyRandomBytesDrain) {
    TempDir empty;
    std::mt19937 rng(7u);
    std::uniform_int_distribution<int> length(0, 400);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int i = 0; i < 500; ++i) {
        std::string text;
        for (int n = length(rng); n > 0; --n) text += static_cast<char>(byte(rng));
        expect_drains(text, empty.str());
    }
}

const std::string kSources[] = {
    "#include \"standard.ddl\"\n"
    "#define VALUE(name, label) VARIABLE name { LABEL #label; TYPE FLOAT; }\n"
    "#define CAT(a, b) a ## b\n"
    "#ifndef GUARD\n"
    "#define GUARD 1\n"
    "VALUE(temperature, Temperature)\n"
    "VARIABLE CAT(pres, sure) {\n"
    "    LABEL \"Pressure\"; /* kPa */\n"
    "    HELP \"line one \\\n"
    "line two\";\n"
    "    TYPE FLOAT { DEFAULT_VALUE 1.5e-3f; MIN_VALUE 0x10; MAX_VALUE 017; }\n"
    "}\n"
    "#else\n"
    "#line 12\n"
    "#endif\n",

    "MANUFACTURER 0x00001A, DEVICE_TYPE 0x0F, DEVICE_REVISION 1, DD_REVISION 2\n"
    "#define MAX(a,b) ((a) > (b) ? (a) : (b))\n"
    "#if 0\n#define HIDDEN_MACRO\n#endif\n"
    "METHOD reset {\n"
    "    DEFINITION {\n"
    "        int i; // counter\n"
    "        for (i = 0; i < MAX(3, 4); i++) { if (i == 2) break; else continue; }\n"
    "        ACKNOWLEDGE(\"done\");\n"
    "    }\n"
    "}\n"
    "#undef MAX\n",

    "\xEF\xBB\xBF#define A x A\n#define F(x) x F\nA F(1)(2) #\n#include <none>\n#include nothing\n"
    "#ifdef A\n#if 00\nz\n#else\ny\n#endif\n#endif\n\"unterminated\\",
};

TEST(FrontEndRobustness, EveryPrefixAndSuffixOfRealisticSourcesDrains) {
    TempDir empty;
    for (const std::string& source : kSources) {
        for (std::size_t n = 0; n <= source.size(); ++n) {
            expect_drains(source.substr(0, n), empty.str());
            expect_drains(source.substr(n), empty.str());
        }
    }
}

// Nesting is bounded only by the input's size: neither conditionals nor unfinished macro
// calls may run the front end out of stack.
TEST(FrontEndRobustness, DeeplyNestedInputDrains) {
    TempDir empty;
    constexpr int depth = 20000;
    std::string conditionals;
    for (int i = 0; i < depth; ++i) conditionals += "#if 1\n";
    EXPECT_TRUE(drains(conditionals, empty.str())) << "unterminated conditionals";
    for (int i = 0; i < depth; ++i) conditionals += "#endif\n";
    EXPECT_TRUE(drains(conditionals, empty.str())) << "closed conditionals";

    std::string calls = "#define F(a) a\n";
    for (int i = 0; i < depth; ++i) calls += "F(";
    EXPECT_TRUE(drains(calls, empty.str())) << "unfinished calls";

    std::string parentheses = "#define F(a) a\nF(" + std::string(depth, '(') + std::string(depth, ')') + ")";
    EXPECT_TRUE(drains(parentheses, empty.str())) << "nested parentheses";
}

}  // namespace
}  // namespace edd
