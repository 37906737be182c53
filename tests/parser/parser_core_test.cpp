// The parser core: the token reader's expectations with their exact wording and fatality,
// how tokens are drawn, the top level of a file, names and reserved words, duplicate items,
// profile refusal of item types and how a fatal error ends the parse.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/exceptions.hpp"
#include "frontend/lexer.hpp"
#include "frontend/token.hpp"
#include "frontend/token_kind.hpp"
#include "frontend/token_stream.hpp"
#include "parse_helpers.hpp"
#include "parser/token_reader.hpp"

namespace edd {
namespace {

using namespace parse_test;

// Opens the reader's protected operations to the tests.
class ProbeReader : public TokenReader {
public:
    using TokenReader::TokenReader;
    using TokenReader::advance;
    using TokenReader::current;
    using TokenReader::expect;
    using TokenReader::expect_float;
    using TokenReader::expect_integer;
    using TokenReader::expect_keyword;
    using TokenReader::expect_string_literal;
    using TokenReader::expect_token;
    using TokenReader::lookahead;
    using TokenReader::parse_identifier;
    using TokenReader::parse_integer;
    using TokenReader::parse_integer_or_fail;
    using TokenReader::parse_keyword;
    using TokenReader::parse_keyword_text;
    using TokenReader::parse_one_of;
    using TokenReader::parse_string_literal;
};

// Hands out a fixed sequence of tokens, then END_OF_FILE for ever.
class TokenList : public TokenStream {
public:
    explicit TokenList(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}
    Token next_token() override { return next_ < tokens_.size() ? tokens_[next_++] : Token(END_OF_FILE, ""); }
    int current_line() const override { return 1; }

private:
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
};

struct Outcome {
    std::string result;  // the operation's result as text
    std::string diagnostics;
    bool fatal = false;
    int errors = 0;
    std::string next;  // the look-ahead afterwards: shows how much was consumed
};

Outcome run_on(const std::string& source, const std::function<std::string(ProbeReader&)>& operation) {
    std::ostringstream diag;
    Lexer lexer = Lexer::from_text(source, "main.ddl", diag);
    ProbeReader reader(lexer, diag);
    Outcome outcome;
    try {
        outcome.result = operation(reader);
    } catch (const ParseError& e) {
        outcome.fatal = true;
        // The exception carries exactly the reported message.
        EXPECT_EQ("main.ddl(1): error: " + std::string(e.what()) + "\n", diag.str());
    }
    outcome.diagnostics = diag.str();
    outcome.errors = reader.get_error_count();
    outcome.next = reader.lookahead().text();
    return outcome;
}

std::string text_of(const ValuePtr& value) {
    if (!value.is_set()) return "unset";
    return to_string(value->kind()) + ":" + value->to_string();
}

TEST(ParserTokenReader, ExpectationsReportTheirOwnWordingAndFatality) {
    using Op = std::function<std::string(ProbeReader&)>;
    const std::set<std::string, std::less<>> words = {"b", "a", "C"};
    struct Case {
        const char* name;
        std::string source;
        Op operation;
        std::string result;
        std::string message;  // empty: no report
        bool fatal;
    };
    const Case cases[] = {
        // Successes.
        {"expect matches by text, any kind", "\"x\" y", [](ProbeReader& r) { r.expect("x"); return std::string("-"); },
         "-", "", false},
        {"expect_token", "{ y", [](ProbeReader& r) { r.expect_token(Token(LEFT_CURLY_BRACKET, "{")); return std::string("-"); },
         "-", "", false},
        {"expect_integer keeps the text", "0x1F y", [](ProbeReader& r) { return text_of(r.expect_integer()); },
         "INTEGER:0x1F", "", false},
        {"expect_float", "1.5 y", [](ProbeReader& r) { return text_of(r.expect_float()); }, "FLOAT:1.5", "", false},
        {"expect_keyword", "LABEL y", [](ProbeReader& r) { return text_of(r.expect_keyword()); }, "KEYWORD:LABEL", "",
         false},
        {"expect_string_literal", "\"s\" y", [](ProbeReader& r) { return r.expect_string_literal(); }, "s", "", false},
        {"parse_string_literal", "\"s\" y", [](ProbeReader& r) { return r.parse_string_literal(); }, "s", "", false},
        {"parse_integer_or_fail converts", "0x10 y",
         [](ProbeReader& r) { return std::to_string(r.parse_integer_or_fail()); }, "16", "", false},
        {"parse_integer converts", "017 y", [](ProbeReader& r) { return std::to_string(r.parse_integer()); }, "15", "",
         false},
        {"parse_keyword_text", "LABEL y", [](ProbeReader& r) { return r.parse_keyword_text(); }, "LABEL", "", false},
        {"parse_keyword", "IF y", [](ProbeReader& r) { return text_of(r.parse_keyword("IF")); }, "KEYWORD:IF", "",
         false},
        {"parse_one_of", "a y", [&](ProbeReader& r) { return text_of(r.parse_one_of(words)); }, "KEYWORD:a", "",
         false},
        {"parse_identifier", "name y", [](ProbeReader& r) { return r.parse_identifier(true); }, "name", "", false},

        // Failures, fatal ones first.
        {"expect", "x y", [](ProbeReader& r) { r.expect("{"); return std::string("-"); }, "",
         "Expected { but got x", true},
        {"expect does not take a keyword of another spelling", "LABEL y",
         [](ProbeReader& r) { r.expect(";"); return std::string("-"); }, "", "Expected ; but got LABEL", true},
        {"expect_token prints both tokens", "x y",
         [](ProbeReader& r) { r.expect_token(Token(LEFT_CURLY_BRACKET, "{")); return std::string("-"); }, "",
         "Expected LEFT_CURLY_BRACKET({) but got IDENTIFIER(x)", true},
        {"expect_token compares the kind too", "\"{\" y",
         [](ProbeReader& r) { r.expect_token(Token(LEFT_CURLY_BRACKET, "{")); return std::string("-"); }, "",
         "Expected LEFT_CURLY_BRACKET({) but got STRING({)", true},
        {"expect_integer", "x y", [](ProbeReader& r) { return text_of(r.expect_integer()); }, "",
         "Expected integer but got x", true},
        {"expect_float", "1 y", [](ProbeReader& r) { return text_of(r.expect_float()); }, "",
         "Expected float but got 1", true},
        {"expect_keyword", "x y", [](ProbeReader& r) { return text_of(r.expect_keyword()); }, "",
         "Expected keyword but got x", true},
        {"expect_string_literal", "1 y", [](ProbeReader& r) { return r.expect_string_literal(); }, "",
         "Expected string literal but got INTEGER(1).", true},
        {"parse_string_literal", "1 y", [](ProbeReader& r) { return r.parse_string_literal(); }, "",
         "Expected string literal and got INTEGER(1).", true},
        {"parse_integer_or_fail keeps the string wording", "x y",
         [](ProbeReader& r) { return std::to_string(r.parse_integer_or_fail()); }, "",
         "Expected string literal and got IDENTIFIER(x).", true},
        {"parse_one_of lists its words in byte order", "x y",
         [&](ProbeReader& r) { return text_of(r.parse_one_of(words)); }, "", "Expected keywords C, a, b but got: x.",
         true},

        // Failures that let the parse go on.
        {"parse_integer", "x y", [](ProbeReader& r) { return std::to_string(r.parse_integer()); }, "0",
         "Expected integer", false},
        {"parse_keyword_text", "x y", [](ProbeReader& r) { return r.parse_keyword_text(); }, "",
         "Expected Keyword but got x.", false},
        {"parse_keyword", "ELSE y", [](ProbeReader& r) { return text_of(r.parse_keyword("IF")); }, "unset",
         "Expected keyword IF but got ELSE.", false},
        {"parse_identifier", "5 y", [](ProbeReader& r) { return r.parse_identifier(true); }, "",
         "Expected identifier but got 5", false},
        {"parse_identifier without warnings still reports", "; y",
         [](ProbeReader& r) { return r.parse_identifier(false); }, "", "Expected identifier but got ;", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Outcome outcome = run_on(c.source, c.operation);
        EXPECT_EQ(outcome.fatal, c.fatal);
        if (!c.fatal) {
            EXPECT_EQ(outcome.result, c.result);
        }
        EXPECT_EQ(outcome.diagnostics, c.message.empty() ? std::string() : error_line(1, c.message));
        EXPECT_EQ(outcome.errors, c.message.empty() ? 0 : 1);
        // Exactly one token consumed, matched or not.
        EXPECT_EQ(outcome.next, "y");
    }
}

TEST(ParserTokenReader, ReservedWordsAreNamesWithAWarningOnRequest) {
    struct Case {
        std::string source;
        std::string warning;
    };
    const Case cases[] = {
        {"LABEL", "LABEL is a reseved EDDL keyword."},
        {"while", "while is a reseved METHOD keyword."},
        {"static", "static is a reseved keyword."},
        {"plain", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        for (const bool warn : {true, false}) {
            std::ostringstream diag;
            Lexer lexer = Lexer::from_text(c.source, "main.ddl", diag);
            ProbeReader reader(lexer, diag);
            EXPECT_EQ(reader.parse_identifier(warn), c.source);
            const bool warned = warn && !c.warning.empty();
            EXPECT_EQ(diag.str(), warned ? warning_line(1, c.warning) : std::string());
            EXPECT_EQ(reader.get_warning_count(), warned ? 1 : 0);
            EXPECT_EQ(reader.get_error_count(), 0);
        }
    }
}

TEST(ParserTokenReader, AdvanceSkipsBlanksAndCountsEachErrorToken) {
    TokenList tokens({Token(WHITESPACE, " "), Token(ERROR, "lexer error"), Token(IDENTIFIER, "a"),
                      Token(COMMENT, "// c"), Token(ERROR, "preprocessor error"), Token(NEWLINE, "\n"),
                      Token(ERROR, "lexer error"), Token(IDENTIFIER, "b")});
    std::ostringstream diag;
    ProbeReader reader(tokens, diag);
    // Construction primes the look-ahead; nothing is current yet.
    EXPECT_EQ(reader.lookahead().text(), "a");
    EXPECT_TRUE(reader.current().is(UNDEFINED));
    EXPECT_EQ(reader.get_error_count(), 1);
    reader.advance();
    EXPECT_EQ(reader.current().text(), "a");
    EXPECT_EQ(reader.lookahead().text(), "b");
    EXPECT_EQ(reader.get_error_count(), 3);
    reader.advance();
    EXPECT_TRUE(reader.lookahead().is(END_OF_FILE));
    EXPECT_EQ(diag.str(), "");  // the producers printed their lines; nothing is added
    EXPECT_EQ(reader.get_warning_count(), 0);
}

TEST(ParserTopLevel, IdentificationAloneIsAnEmptyDescription) {
    const Parsed parsed = parse_source(std::string(header));
    EXPECT_TRUE(parsed.result);
    EXPECT_TRUE(parsed.description.items.empty());
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(parsed.errors, 0);
}

TEST(ParserTopLevel, EmptyFileFailsInTheIdentification) {
    const Parsed parsed = parse_source("");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, error_line(1, "Expected identification but got "));
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_TRUE(parsed.description.items.empty());
}

TEST(ParserTopLevel, WarningsAloneDoNotFailTheParse) {
    const Parsed parsed = parse_body("VARIABLE LABEL { LABEL \"x\"; }\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.warnings, 1);
    EXPECT_EQ(parsed.errors, 0);
}

// A fatal error ends the parse at once: there is no resynchronisation, so an error further
// on is never reported, and the items read before stay.
TEST(ParserTopLevel, FatalErrorEndsTheParseAndKeepsEarlierItems) {
    const Parsed parsed = parse_body(
        "VARIABLE first { LABEL \"a\"; }\n"
        "VARIABLE second { LABEL \"b\" ) }\n"
        "VARIABLE third { LABLE \"c\"; }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.item_names(), std::vector<std::string>{"first"});
    EXPECT_EQ(parsed.diagnostics, error_line(3, "Expected identifier but got )") +
                                      error_line(3, " is not a valid attribute id"));
    EXPECT_EQ(parsed.errors, 2);
}

TEST(ParserTopLevel, UnknownItemTypeWordIsFatal) {
    const Parsed parsed = parse_body("VARIABLE a { }\nVARIABEL b { }\nVARIABLE c { }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, error_line(3, "Expected edd object but got VARIABEL."));
    EXPECT_EQ(parsed.item_names(), std::vector<std::string>{"a"});
}

TEST(ParserTopLevel, MissingClosingBraceAtEndOfFile) {
    const Parsed parsed = parse_body("VARIABLE v {\n    LABEL \"x\";\n");
    EXPECT_FALSE(parsed.result);
    // The end token is taken for an attribute name: its empty text in both messages.
    EXPECT_EQ(parsed.diagnostics,
              error_line(4, "Expected identifier but got ") + error_line(4, " is not a valid attribute id"));
    EXPECT_EQ(parsed.errors, 2);
    EXPECT_FALSE(parsed.has("v"));
}

TEST(ParserTopLevel, ErrorTokensAreSkippedButCounted) {
    // The preprocessor reports the directive and hands over an ERROR token in the middle of
    // an attribute; the parser steps over it and the attribute is read as if it were absent.
    const Parsed parsed = parse_body(
        "VARIABLE v {\n"
        "    LABEL\n"
        "#bogus\n"
        "    \"x\";\n"
        "    HELP \"h\";\n"
        "}\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_EQ(parsed.diagnostics, "main.ddl(4): error: Unknown preprocessor directive bogus.\n");
    ASSERT_TRUE(parsed.has("v"));
    EXPECT_EQ(dumped(parsed.item("v")), "VARIABLE v\n{\n    HELP \"h\";\n    LABEL \"x\";\n}\n");
}

TEST(ParserNames, ReservedWordsAsItemNamesWarnAndRegister) {
    struct Case {
        std::string name;
        std::string warning;
    };
    const Case cases[] = {
        {"LABEL", "LABEL is a reseved EDDL keyword."},
        {"VARIABLE", "VARIABLE is a reseved EDDL keyword."},
        {"while", "while is a reseved METHOD keyword."},
        {"DD_STRING", "DD_STRING is a reseved METHOD keyword."},
        {"static", "static is a reseved keyword."},
        {"void", "void is a reseved keyword."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Parsed parsed = parse_body("VARIABLE " + c.name + " { LABEL \"x\"; }\n");
        EXPECT_TRUE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, warning_line(2, c.warning));
        EXPECT_EQ(parsed.warnings, 1);
        EXPECT_EQ(parsed.item_names(), std::vector<std::string>{c.name});
    }
}

// Item-type words, attribute names and the names inside a reference are read without the
// reserved-word warning.
TEST(ParserNames, WordsOtherThanNewNamesDoNotWarn) {
    const Parsed parsed = parse_body(
        "COLLECTION OF VARIABLE c { LABEL a.LABEL->HELP; }\n"
        "ARRAY OF VARIABLE arr { LABEL \"x\"; }\n");
    EXPECT_TRUE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(shape(parsed.attribute("c", AttributeId::LABEL)), "@a.LABEL->HELP");
    EXPECT_EQ(parsed.attribute("arr", AttributeId::of_type).to_string(), "VARIABLE");
}

TEST(ParserNames, NonNameIsAnErrorButTheItemIsStillRead) {
    const Parsed parsed = parse_body("VARIABLE 5 { LABEL \"x\"; }\nVARIABLE w { }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.diagnostics, error_line(2, "Expected identifier but got 5"));
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_EQ(parsed.item_names(), (std::vector<std::string>{"", "w"}));
}

TEST(ParserItems, DuplicateDefinitionKeepsTheFirstAndNamesItsPosition) {
    const Parsed parsed = parse_body(
        "VARIABLE x { LABEL \"first\"; }\n"
        "\n"
        "VARIABLE x {\n"
        "    LABEL \"second\";\n"
        "}\n"
        "VARIABLE y { }\n");
    EXPECT_FALSE(parsed.result);
    EXPECT_EQ(parsed.errors, 1);
    // Reported at the closing brace of the second body; the text ends with its own line
    // break, so an empty line follows.
    EXPECT_EQ(parsed.diagnostics,
              "main.ddl(6): error: Duplicate definition of Object \"x\" Object \"x\" is initialy defined at "
              "main.ddl(2)\n\n");
    EXPECT_EQ(parsed.item_names(), (std::vector<std::string>{"x", "y"}));
    EXPECT_EQ(parsed.attribute("x", AttributeId::LABEL).to_string(), "\"first\"");
}

TEST(ParserItems, DuplicateOfAnotherTypeIsStillADuplicate) {
    const Parsed parsed = parse_body("VARIABLE x { }\nMENU x { }\n");
    EXPECT_EQ(parsed.errors, 1);
    EXPECT_EQ(parsed.item("x").type(), ItemType::VARIABLE);
    EXPECT_EQ(parsed.description.items.size(), 1U);
}

TEST(ParserItems, ProfileRefusesItemTypesButTheItemIsKept) {
    struct Case {
        std::string profile;
        std::string type;
        std::string message;  // empty: accepted
    };
    const Case cases[] = {
        {"HART", "VARIABLE_LIST", "Object of type VARIABLE_LIST is not allowed in HART."},
        {"HART", "CONNECTION", "Object of type CONNECTION is not allowed in HART."},
        {"HART", "VARIABLE", ""},
        {"PROFIBUS", "VARIABLE_LIST", ""},
        {"", "CONNECTION", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.profile + " " + c.type);
        const Parsed parsed = parse_body(c.type + " item {\n}\n", c.profile);
        EXPECT_EQ(parsed.result, c.message.empty());
        EXPECT_EQ(parsed.diagnostics, c.message.empty() ? std::string() : error_line(2, c.message));
        ASSERT_TRUE(parsed.has("item"));
        EXPECT_EQ(parsed.item("item").type(), find_item_type(c.type));
    }
}

}  // namespace
}  // namespace edd
