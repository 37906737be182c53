// Tokens: printed form, equality and construction from a punctuator spelling.
#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "frontend/token.hpp"

namespace edd {
namespace {

TEST(Token, DefaultIsUndefinedAtLineZero) {
    const Token token;
    EXPECT_EQ(token.kind(), UNDEFINED);
    EXPECT_EQ(token.text(), "");
    EXPECT_EQ(token.file_name(), "");
    EXPECT_EQ(token.line(), 0);
    EXPECT_EQ(to_string(token), "UNDEFINED()");
}

TEST(Token, PrintsKindNameOrNumberThenText) {
    struct Case {
        Token token;
        std::string_view printed;
    };
    const Case cases[] = {
        {Token(":"), "58(:)"},  // the colon has no name
        {Token(SHIFT_LEFT_ASSIGN, "<<="), "535(<<=)"},
        {Token(MINUS_MINUS, "--"), "528(--)"},
        {Token(ARROW, "->"), "592(->)"},
        {Token(METHOD_KEYWORD, "while"), "265(while)"},
        {Token(RESERVED_WORD, "static"), "272(static)"},
        {Token(0x20A, "x"), "522(x)"},  // a value inside the unused gap
        {Token(LESS_THEN, "<"), "LESS_THEN(<)"},
        {Token(GRATER_THEN, ">"), "GRATER_THEN(>)"},
        {Token(HORIZONTAL_LINE, "|"), "HORIZONTAL_LINE(|)"},
        {Token(PREPROCESSOR_ESCAPE, "\\"), "PREPROCESSOR_ESCAPE(\\)"},
        {Token(PREPROCESSOR_PASTE, "##"), "PREPROCESSOR_PASTE(##)"},
        {Token(EDDL_KEYWORD, "MENU"), "EDDL_KEYWORD(MENU)"},
        {Token(END_OF_FILE, ""), "END_OF_FILE()"},
        {Token(NEWLINE, "\n"), "NEWLINE(\n)"},
        {Token(ERROR, "lexer error"), "ERROR(lexer error)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.printed);
        EXPECT_EQ(to_string(c.token), c.printed);
    }
}

TEST(Token, EqualityComparesKindAndTextOnly) {
    const Token a(IDENTIFIER, "x", "a.ddl", 3);
    EXPECT_TRUE(a == Token(IDENTIFIER, "x", "b.ddl", 70));
    EXPECT_TRUE(a == Token(IDENTIFIER, "x"));
    EXPECT_FALSE(a != Token(IDENTIFIER, "x", "a.ddl", 4));
    EXPECT_TRUE(a != Token(IDENTIFIER, "y", "a.ddl", 3));
    EXPECT_TRUE(a != Token(STRING, "x", "a.ddl", 3));
    EXPECT_FALSE(a == Token(STRING, "x", "a.ddl", 3));
}

TEST(Token, FromSpellingFindsKind) {
    struct Case {
        std::string_view spelling;
        std::uint32_t kind;
    };
    const Case cases[] = {
        {"{", '{'}, {":", 58},  {"\\", 92},  {"|", 124},  {"=", 61},   {"<<", 513}, {"<=", 515},
        {"||", 520}, {"++", 521}, {"--", 528}, {"+=", 530}, {"%=", 534}, {"<<=", 535}, {">>=", 536},
        {"&=", 537}, {"^=", 544}, {"|=", 545}, {"->", 592},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.spelling);
        const Token token(c.spelling);
        EXPECT_EQ(token.kind(), c.kind);
        EXPECT_EQ(token.text(), c.spelling);
        EXPECT_EQ(token.line(), 0);
    }
}

TEST(Token, FromUnknownSpellingThrows) {
    try {
        Token token("$");
        FAIL() << "no exception for \"$\"";
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "Token: The token \"$\" is not uniquly identifiable.");
    }
    // "##" is recognised by the lexer alone; the punctuator table does not hold it.
    for (std::string_view spelling : {"##", "", "a", "<<<", "===", "=<", "/*"}) {
        SCOPED_TRACE(spelling);
        EXPECT_THROW(Token{spelling}, std::invalid_argument);
    }
}

}  // namespace
}  // namespace edd
