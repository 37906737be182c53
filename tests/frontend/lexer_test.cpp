// The lexer: source text to the sequence of (kind, text, line), blanks and comments included.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/lexer.hpp"
#include "frontend/token.hpp"
#include "frontend/token_kind.hpp"

namespace edd {
namespace {

using namespace std::string_view_literals;

struct Lexed {
    std::uint32_t kind;
    std::string text;
    int line;
    friend bool operator==(const Lexed&, const Lexed&) = default;
};

std::string escaped(std::string_view text) {
    std::string out;
    for (unsigned char c : text) {
        if (c >= 0x20 && c < 0x7F) {
            out += static_cast<char>(c);
        } else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%02X", c);
            out += hex;
        }
    }
    return out;
}

void PrintTo(const Lexed& t, std::ostream* os) {
    *os << kind_to_string(t.kind) << "(" << escaped(t.text) << ")@" << t.line;
}

struct LexResult {
    std::vector<Lexed> tokens;  // END_OF_FILE not included
    std::string diagnostics;
};

LexResult lex(std::string_view text) {
    std::ostringstream diag;
    Lexer lexer = Lexer::from_text(std::string(text), "name.ddl", diag);
    LexResult result;
    for (int i = 0; i < 10'000; ++i) {
        const Token token = lexer.next_token();
        if (token.is(END_OF_FILE)) break;
        result.tokens.push_back({token.kind(), std::string(token.text()), token.line()});
    }
    result.diagnostics = diag.str();
    return result;
}

struct Case {
    std::string_view input;
    std::vector<Lexed> tokens;
};

// Every case lexes to exactly its tokens and prints nothing.
void check_cases(const std::vector<Case>& cases) {
    for (const auto& c : cases) {
        SCOPED_TRACE(escaped(c.input));
        const LexResult result = lex(c.input);
        EXPECT_EQ(result.tokens, c.tokens);
        EXPECT_EQ(result.diagnostics, "");
    }
}

constexpr std::uint32_t ID = IDENTIFIER, INT = INTEGER, FLT = FLOAT, STR = STRING, WS = WHITESPACE, NL = NEWLINE,
                        CMT = COMMENT, UNDEF = UNDEFINED, KEYWORD = EDDL_KEYWORD, METHOD = METHOD_KEYWORD,
                        RESERVED = RESERVED_WORD;

TEST(Lexer, BlanksAndLineEnds) {
    check_cases({
        {"a\r\nb", {{ID, "a", 1}, {WS, "\r", 1}, {NL, "\n", 1}, {ID, "b", 2}}},
        {"\t\v  x", {{WS, "\t", 1}, {WS, "\v", 1}, {WS, " ", 1}, {WS, " ", 1}, {ID, "x", 1}}},
        {"\n\n", {{NL, "\n", 1}, {NL, "\n", 2}}},
        {"a\rb", {{ID, "a", 1}, {WS, "\r", 1}, {ID, "b", 1}}},  // a lone carriage return ends no line
        {"\f", {{UNDEF, "\f", 1}}},
        {"", {}},
    });
}

// How the preprocessor reads its lexers: a run of blanks is one token. Line ends, line
// continuations and any other character end a run.
TEST(Lexer, BlankRunsAreOneTokenWhenAsked) {
    const std::pair<std::string_view, std::vector<Lexed>> cases[] = {
        {"\t\v  x \r\n  y",
         {{WS, "\t\v  ", 1}, {ID, "x", 1}, {WS, " \r", 1}, {NL, "\n", 1}, {WS, "  ", 2}, {ID, "y", 2}}},
        {"a \\\n b", {{ID, "a", 1}, {WS, " ", 1}, {WS, " ", 2}, {ID, "b", 2}}},
        {" \f ", {{WS, " ", 1}, {UNDEF, "\f", 1}, {WS, " ", 1}}},
    };
    for (const auto& [input, expected] : cases) {
        SCOPED_TRACE(escaped(input));
        std::ostringstream diag;
        Lexer lexer = Lexer::from_text(std::string(input), "name.ddl", diag);
        lexer.set_blank_runs(true);
        std::vector<Lexed> tokens;
        for (Token token = lexer.next_token(); !token.is(END_OF_FILE); token = lexer.next_token())
            tokens.push_back({token.kind(), std::string(token.text()), token.line()});
        EXPECT_EQ(tokens, expected);
    }
}

TEST(Lexer, SkipsByteOrderMarkAtStartOnly) {
    check_cases({
        {"\xEF\xBB\xBF" "a", {{ID, "a", 1}}},
        {"\xEF" "a", {{ID, "a", 1}}},
        {"\xBB" "a", {{ID, "a", 1}}},
        {"\xBF" "a", {{ID, "a", 1}}},
        {"\xEF\xBF" "a", {{ID, "a", 1}}},
        {"\xBB\xBF" "a", {{ID, "a", 1}}},
        {"\xEF\xBB" "a", {{ID, "a", 1}}},
        {"\xEF\xBB\xBF", {}},
        {"\xEF\xBB\xBF\n", {{NL, "\n", 1}}},
        // Out of order or repeated, the extra byte stays.
        {"\xBF\xBB" "a", {{UNDEF, "\xBB", 1}, {ID, "a", 1}}},
        {"\xEF\xEF" "a", {{UNDEF, "\xEF", 1}, {ID, "a", 1}}},
        {"\xEF\xBB\xBF\xEF" "a", {{UNDEF, "\xEF", 1}, {ID, "a", 1}}},
        {"a\xEF\xBB\xBF", {{ID, "a", 1}, {UNDEF, "\xEF", 1}, {UNDEF, "\xBB", 1}, {UNDEF, "\xBF", 1}}},
        {" \xEF", {{WS, " ", 1}, {UNDEF, "\xEF", 1}}},
    });
}

TEST(Lexer, IntegersInEveryBase) {
    check_cases({
        {"123", {{INT, "123", 1}}},
        {"0", {{INT, "0", 1}}},
        {"0x1F", {{INT, "0x1F", 1}}},
        {"0X1fu", {{INT, "0X1fu", 1}}},
        {"0xabcdefUL", {{INT, "0xabcdefUL", 1}}},
        {"0x1G", {{INT, "0x1", 1}, {ID, "G", 1}}},
        {"10UL", {{INT, "10UL", 1}}},
        {"10lu", {{INT, "10lu", 1}}},
        {"10ULL", {{INT, "10UL", 1}, {ID, "L", 1}}},
        {"7u+1", {{INT, "7u", 1}, {PLUS, "+", 1}, {INT, "1", 1}}},
        {"017", {{INT, "017", 1}}},
        {"0170", {{INT, "0170", 1}}},
        {"017u", {{INT, "017u", 1}}},
        {"0179", {{INT, "017", 1}, {INT, "9", 1}}},
        {"0b101", {{INT, "0b101", 1}}},
        {"0B1L", {{INT, "0B1L", 1}}},
        {"0b12", {{INT, "0b1", 1}, {INT, "2", 1}}},
        {"09", {{INT, "0", 1}, {INT, "9", 1}}},
        {"08", {{INT, "0", 1}, {INT, "8", 1}}},
        {"00", {{INT, "0", 1}, {INT, "0", 1}}},
        {"12abc", {{INT, "12", 1}, {ID, "abc", 1}}},
        {"1,2", {{INT, "1", 1}, {COMMA, ",", 1}, {INT, "2", 1}}},
    });
}

TEST(Lexer, FloatingLiterals) {
    check_cases({
        {"1.5e-3f", {{FLT, "1.5e-3f", 1}}},
        {".5", {{FLT, ".5", 1}}},
        {"0.5", {{FLT, "0.5", 1}}},
        {"0.5e2", {{FLT, "0.5e2", 1}}},
        {"2e3", {{FLT, "2.e3", 1}}},
        {"2E+3L", {{FLT, "2.E+3L", 1}}},
        {"1.5F", {{FLT, "1.5F", 1}}},
        {"5.", {{FLT, "5.", 1}}},
        {"1e", {{FLT, "1.e", 1}}},
        {"1.2.3", {{FLT, "1.2", 1}, {FLT, ".3", 1}}},
        {"1.5ff", {{FLT, "1.5f", 1}, {ID, "f", 1}}},
        {"1.x", {{FLT, "1.", 1}, {ID, "x", 1}}},
        {"00.5", {{INT, "0", 1}, {FLT, "0.5", 1}}},
        {"0e5", {{INT, "0", 1}, {ID, "e5", 1}}},
        {"x.y", {{ID, "x", 1}, {DOT, ".", 1}, {ID, "y", 1}}},
        {".e3", {{DOT, ".", 1}, {ID, "e3", 1}}},
    });
}

TEST(Lexer, SingleOperators) {
    const std::pair<std::string_view, std::uint32_t> cases[] = {
        {"!", '!'},   {"!=", 518},  {"#", '#'},   {"##", 769},  {"%", '%'},   {"%=", 534},  {"&", '&'},
        {"&&", 519},  {"&=", 537},  {"*", '*'},   {"*=", 532},  {"+", '+'},   {"++", 521},  {"+=", 530},
        {"-", '-'},   {"--", 528},  {"-=", 531},  {"->", 592},  {".", '.'},   {"/", '/'},   {"/=", 533},
        {"<", '<'},   {"<<", 513},  {"<=", 515},  {"<<=", 535}, {">", '>'},   {">>", 514},  {">=", 516},
        {">>=", 536}, {"^", '^'},   {"^=", 544},  {"=", '='},   {"==", 517},  {"|", '|'},   {"||", 520},
        {"|=", 545},  {"~", '~'},   {"(", '('},   {")", ')'},   {",", ','},   {":", ':'},   {";", ';'},
        {"?", '?'},   {"[", '['},   {"]", ']'},   {"{", '{'},   {"}", '}'},
    };
    for (const auto& [spelling, kind] : cases) {
        SCOPED_TRACE(spelling);
        const LexResult result = lex(spelling);
        EXPECT_EQ(result.tokens, (std::vector<Lexed>{{kind, std::string(spelling), 1}}));
    }
}

TEST(Lexer, OperatorsTakeLongestMatch) {
    check_cases({
        {"a<<=b", {{ID, "a", 1}, {535, "<<=", 1}, {ID, "b", 1}}},
        {"a<<b", {{ID, "a", 1}, {513, "<<", 1}, {ID, "b", 1}}},
        {"a< <b", {{ID, "a", 1}, {'<', "<", 1}, {WS, " ", 1}, {'<', "<", 1}, {ID, "b", 1}}},
        {"a >>= b", {{ID, "a", 1}, {WS, " ", 1}, {536, ">>=", 1}, {WS, " ", 1}, {ID, "b", 1}}},
        {"<<<", {{513, "<<", 1}, {'<', "<", 1}}},
        {"<<==", {{535, "<<=", 1}, {'=', "=", 1}}},
        {">>>=", {{514, ">>", 1}, {516, ">=", 1}}},
        {"-->", {{528, "--", 1}, {'>', ">", 1}}},
        {"->>", {{592, "->", 1}, {'>', ">", 1}}},
        {"+++", {{521, "++", 1}, {'+', "+", 1}}},
        {"===", {{517, "==", 1}, {'=', "=", 1}}},
        {"|||", {{520, "||", 1}, {'|', "|", 1}}},
        {"###", {{769, "##", 1}, {'#', "#", 1}}},
        {"a##b", {{ID, "a", 1}, {769, "##", 1}, {ID, "b", 1}}},
        {"~=", {{'~', "~", 1}, {'=', "=", 1}}},
        {"...", {{'.', ".", 1}, {'.', ".", 1}, {'.', ".", 1}}},
        {"a-1", {{ID, "a", 1}, {'-', "-", 1}, {INT, "1", 1}}},
        {"<\n=", {{'<', "<", 1}, {NL, "\n", 1}, {'=', "=", 2}}},
    });
}

TEST(Lexer, Comments) {
    check_cases({
        {"/* a\nb */x", {{CMT, "/* a\nb */", 1}, {ID, "x", 2}}},
        {"x\n/*\n\n*/y", {{ID, "x", 1}, {NL, "\n", 1}, {CMT, "/*\n\n*/", 2}, {ID, "y", 4}}},
        {"/**/", {{CMT, "/**/", 1}}},
        {"/*/x*/", {{CMT, "/*/x*/", 1}}},  // the opening star does not also close
        {"/* a **/b", {{CMT, "/* a **/", 1}, {ID, "b", 1}}},
        {"/* \"x */\"", {{CMT, "/* \"x */", 1}, {STR, "", 1}}},
        {"/* open\n\n", {{CMT, "/* open\n\n", 1}}},
        {"/* open *", {{CMT, "/* open *", 1}}},
        {"// hi\nx", {{CMT, "// hi", 1}, {NL, "\n", 1}, {ID, "x", 2}}},
        {"// hi\r\nx", {{CMT, "// hi\r", 1}, {NL, "\n", 1}, {ID, "x", 2}}},
        {"//", {{CMT, "//", 1}}},
        {"// a /* b\nc */", {{CMT, "// a /* b", 1}, {NL, "\n", 1}, {ID, "c", 2}, {WS, " ", 2}, {'*', "*", 2},
                             {'/', "/", 2}}},
        {"a//b", {{ID, "a", 1}, {CMT, "//b", 1}}},
        {"a/b", {{ID, "a", 1}, {'/', "/", 1}, {ID, "b", 1}}},
    });
}

TEST(Lexer, StringsKeepTheirTextAsWritten) {
    check_cases({
        {R"("abc")", {{STR, "abc", 1}}},
        {R"("")", {{STR, "", 1}}},
        {R"("a\"b" c)", {{STR, R"(a\"b)", 1}, {WS, " ", 1}, {ID, "c", 1}}},
        {R"("a\nb")", {{STR, R"(a\nb)", 1}}},
        {R"("a\\"b)", {{STR, R"(a\\)", 1}, {ID, "b", 1}}},
        {R"("a""b")", {{STR, "a", 1}, {STR, "b", 1}}},
        {R"("/* x */ // y")", {{STR, "/* x */ // y", 1}}},
        {"\"a\nb\" c\nd", {{STR, "a\nb", 1}, {WS, " ", 1}, {ID, "c", 1}, {NL, "\n", 1}, {ID, "d", 2}}},
        {"\"open", {{STR, "open", 1}}},
        {"\"open\\", {{STR, "open\\", 1}}},
        {"\"open\\\"", {{STR, "open\\\"", 1}}},
    });
}

TEST(Lexer, WordsAndKeywordClasses) {
    check_cases({
        {"VARIABLE", {{KEYWORD, "VARIABLE", 1}}},
        {"IF", {{KEYWORD, "IF", 1}}},
        {"MAX_VALUE7", {{KEYWORD, "MAX_VALUE7", 1}}},
        {"TRUE", {{KEYWORD, "TRUE", 1}}},
        {"if", {{METHOD, "if", 1}}},
        {"while", {{METHOD, "while", 1}}},
        {"DD_STRING", {{METHOD, "DD_STRING", 1}}},
        {"static", {{RESERVED, "static", 1}}},
        {"volatile", {{RESERVED, "volatile", 1}}},
        {"Variable", {{ID, "Variable", 1}}},
        {"While", {{ID, "While", 1}}},
        {"STATIC", {{ID, "STATIC", 1}}},
        {"VARIABLES_", {{ID, "VARIABLES_", 1}}},
        {"_x1", {{ID, "_x1", 1}}},
        {"whilex", {{ID, "whilex", 1}}},
        {"a1.b", {{ID, "a1", 1}, {DOT, ".", 1}, {ID, "b", 1}}},
        {"if(x)", {{METHOD, "if", 1}, {'(', "(", 1}, {ID, "x", 1}, {')', ")", 1}}},
    });
}

TEST(Lexer, UnknownBytesAreUndefined) {
    check_cases({
        {"$", {{UNDEF, "$", 1}}},
        {"`", {{UNDEF, "`", 1}}},
        {"@", {{UNDEF, "@", 1}}},
        {"\x7F", {{UNDEF, "\x7F", 1}}},
        {"\x80", {{UNDEF, "\x80", 1}}},
        {"\xFE", {{UNDEF, "\xFE", 1}}},
        {"a$b", {{ID, "a", 1}, {UNDEF, "$", 1}, {ID, "b", 1}}},
        {"a\0b"sv, {{ID, "a", 1}, {UNDEF, std::string(1, '\0'), 1}, {ID, "b", 1}}},
        {"\0"sv, {{UNDEF, std::string(1, '\0'), 1}}},
    });
}

TEST(Lexer, ByteFFEndsTheInput) {
    check_cases({
        {"a\xFF" "b\nc", {{ID, "a", 1}}},
        {"\xFF" "abc", {}},
        {"\"str\xFF" "ing\"", {{STR, "str", 1}}},
        {"/* c\xFF" " */x", {{CMT, "/* c", 1}}},
    });
}

TEST(Lexer, BackslashBeforeLineEndJoinsLines) {
    check_cases({
        {"a\\\nb", {{ID, "a", 1}, {ID, "b", 2}}},
        {"a\\\r\nb", {{ID, "a", 1}, {ID, "b", 2}}},
        {"a\\\rb", {{ID, "a", 1}, {ID, "b", 2}}},
        {"a \\\n b", {{ID, "a", 1}, {WS, " ", 1}, {WS, " ", 2}, {ID, "b", 2}}},
        {"\\\n\\\r\nx", {{ID, "x", 3}}},
        {"a\\\n\nb", {{ID, "a", 1}, {NL, "\n", 2}, {ID, "b", 3}}},
        {"a\\\r\n\r\nb", {{ID, "a", 1}, {WS, "\r", 2}, {NL, "\n", 2}, {ID, "b", 3}}},
    });
}

TEST(Lexer, TrailingBackslashSkipsLineAndCountsEverySkippedCharacter) {
    struct TrailingCase {
        std::string_view input;
        std::vector<Lexed> tokens;
        std::string_view diagnostics;
    };
    const TrailingCase cases[] = {
        // A blank and ten characters, then the line feed: 12 lines instead of 1.
        {"a\\ 0123456789\nb", {{ID, "a", 1}, {ID, "b", 13}}, "name.ddl (1): error: Trailing '\\'.\n"},
        {"x\n\\y\nz", {{ID, "x", 1}, {NL, "\n", 1}, {ID, "z", 4}}, "name.ddl (2): error: Trailing '\\'.\n"},
        {"a\\ \r\nb", {{ID, "a", 1}, {ID, "b", 4}}, "name.ddl (1): error: Trailing '\\'.\n"},
        // A second backslash inside the skipped text is skipped with it.
        {"\\ a\\ b\nc", {{ID, "c", 7}}, "name.ddl (1): error: Trailing '\\'.\n"},
        {"\"s\" \\ // c\n x", {{STR, "s", 1}, {WS, " ", 1}, {WS, " ", 7}, {ID, "x", 7}},
         "name.ddl (1): error: Trailing '\\'.\n"},
        {"\\ a\n\\ b\nc", {{ID, "c", 7}},
         "name.ddl (1): error: Trailing '\\'.\nname.ddl (4): error: Trailing '\\'.\n"},
        // The skip stops at the end of the input.
        {"\\x", {}, "name.ddl (1): error: Trailing '\\'.\n"},
        {"a\\", {{ID, "a", 1}}, "name.ddl (1): error: Trailing '\\'.\n"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(escaped(c.input));
        const LexResult result = lex(c.input);
        EXPECT_EQ(result.tokens, c.tokens);
        EXPECT_EQ(result.diagnostics, c.diagnostics);
    }
}

TEST(Lexer, EndOfFileCarriesLastLineAndRepeats) {
    const std::pair<std::string_view, int> cases[] = {
        {"", 1},         {"a", 1},           {"a\n", 2},   {"a\r\n\n", 3}, {"/* a\n\nb", 3},
        {"\"a\nb", 1},   {"a\\\n", 2},       {"\\xy", 3},  {"\\", 1},      {"x\xFF\n\n", 1},
    };
    for (const auto& [input, line] : cases) {
        SCOPED_TRACE(escaped(input));
        std::ostringstream diag;
        Lexer lexer = Lexer::from_text(std::string(input), "name.ddl", diag);
        Token token = lexer.next_token();
        for (int i = 0; i < 100 && !token.is(END_OF_FILE); ++i) token = lexer.next_token();
        for (int repeat = 0; repeat < 3; ++repeat) {
            EXPECT_EQ(token.kind(), END_OF_FILE);
            EXPECT_EQ(token.text(), "");
            EXPECT_EQ(token.line(), line);
            EXPECT_EQ(token.file_name(), "name.ddl");
            EXPECT_EQ(lexer.current_line(), line);
            token = lexer.next_token();
        }
    }
}

TEST(Lexer, TokensCarryTheFileName) {
    std::ostringstream diag;
    Lexer lexer = Lexer::from_text("a\n\"s\" 1", "dir/other.ddl", diag);
    for (Token token = lexer.next_token(); !token.is(END_OF_FILE); token = lexer.next_token()) {
        EXPECT_EQ(token.file_name(), "dir/other.ddl") << to_string(token);
    }
}

TEST(Lexer, ReadsFromStreamLikeFromText) {
    std::istringstream input("\xEF\xBB\xBF" "a /* x\n*/ 0x1Fu\n\"s\"");
    std::ostringstream diag;
    Lexer lexer(input, "name.ddl", diag);
    std::vector<Lexed> tokens;
    for (Token token = lexer.next_token(); !token.is(END_OF_FILE); token = lexer.next_token()) {
        tokens.push_back({token.kind(), std::string(token.text()), token.line()});
    }
    const std::vector<Lexed> expected = {{ID, "a", 1},    {WS, " ", 1},         {CMT, "/* x\n*/", 1}, {WS, " ", 2},
                                         {INT, "0x1Fu", 2}, {NL, "\n", 2}, {STR, "s", 3}};
    EXPECT_EQ(tokens, expected);
    EXPECT_EQ(diag.str(), "");
}

}  // namespace
}  // namespace edd
