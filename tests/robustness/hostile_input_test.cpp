// Hostile input through the whole program (edd::run, as main calls it): deep nesting,
// include and import cycles, macro bombs, stray bytes, huge lines and binary garbage all
// end with their documented message and exit status instead of a crash or a hang. Large
// inputs are generated here; ctest's time limit bounds every run, the sanitizer build's too.
#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "driver/driver.hpp"
#include "driver/exit_status.hpp"
#include "frontend/preprocessor.hpp"
#include "frontend/pp_helpers.hpp"
#include "xml/document_text.hpp"

namespace edd {
namespace {

using test::TempDir;

constexpr std::string_view header = "MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 1, DD_REVISION 1\n";
constexpr std::string_view item = "VARIABLE v { LABEL \"x\"; CLASS CONTAINED; TYPE INTEGER; }\n";

std::string repeat(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

struct Conversion {
    int status = 0;
    std::string diagnostics;
    std::string xml;  // empty when no document was written
};

// Each test gets a directory of its own; main.ddl is the input, and the input's directory
// is an include path, as for any run.
class HostileInput : public ::testing::Test {
protected:
    Conversion convert(std::string_view source, std::vector<std::string> options = {}) {
        dir_.write("main.ddl", source);
        const std::filesystem::path output = dir_.path() / "main.xml";
        std::filesystem::remove(output);
        // Options after the input: an option takes the next argument, flags included.
        std::vector<std::string> arguments{"tarnwick", "-p", "HART", "-o", output.string(), main_file()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        std::ostringstream out;
        std::ostringstream err;
        Conversion result;
        result.status = run(arguments, out, err);
        result.diagnostics = err.str();
        std::ifstream written(output, std::ios::binary);
        result.xml.assign(std::istreambuf_iterator<char>(written), std::istreambuf_iterator<char>());
        return result;
    }

    std::string main_file() const { return dir_.str() + "/main.ddl"; }
    // The start of an error line of the parser or the preprocessor.
    std::string error_at(std::string_view file, int line) const {
        return dir_.str() + "/" + std::string(file) + "(" + std::to_string(line) + "): error: ";
    }

    TempDir dir_;
};

// A written document must be one an XML reader accepts.
void expect_well_formed(const std::string& xml) {
    if (xml.empty()) return;
    EXPECT_TRUE(is_well_formed_utf8(xml));
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
    EXPECT_TRUE(parsed) << parsed.description();
}

TEST_F(HostileInput, DeepNestingIsFatalNotAStackOverflow) {
    constexpr std::size_t depth = 100'000;
    const std::pair<std::string, std::string> cases[] = {
        {"parentheses", "VARIABLE v { LABEL " + repeat("(", depth) + "1 }"},
        {"prefix operators", "VARIABLE v { LABEL " + repeat("-!~", depth / 3) + "1 }"},
        {"calls", "VARIABLE v { LABEL " + repeat("f(", depth) + "1 }"},
        {"indexes", "VARIABLE v { LABEL " + repeat("a[", depth) + "1 }"},
        {"a flat chain of operators", "VARIABLE v { LABEL " + repeat("1 + ", depth) + "1 }"},
        {"IF in a value", "VARIABLE v { LABEL " + repeat("IF (x) { ", depth) + "\"a\" }"},
        {"IF in a condition", "VARIABLE v { LABEL IF (" + repeat("(", depth) + "x) { \"a\" } }"},
        {"IF in menu items", "MENU m { ITEMS { " + repeat("IF (x) { ", depth) + "a } }"},
        {"SELECT in menu items", "MENU m { ITEMS { " + repeat("SELECT (x) { CASE 1: ", depth) + "a } }"},
        {"IF in enumerators", "VARIABLE v { TYPE ENUMERATED { " + repeat("IF (x) { ", depth) + "{1, \"a\"} } }"},
        {"IF in members", "COLLECTION c { MEMBERS { " + repeat("IF (x) { ", depth) + "a, b; } }"},
    };
    for (const auto& [name, body] : cases) {
        SCOPED_TRACE(name);
        const Conversion result = convert(std::string(header) + body + "\n");
        EXPECT_EQ(result.status, exit_status::parse_failed);
        EXPECT_EQ(result.diagnostics, error_at("main.ddl", 2) + "Nesting too deep.\n");
    }
}

// Method code is kept as flat tokens, so its braces may nest without limit; conditional
// directives and macro calls in arguments stop at the preprocessor's guard.
TEST_F(HostileInput, NestingOutsideTheGrammarIsBoundedToo) {
    const Conversion code =
        convert(std::string(header) + "METHOD m { DEFINITION { " + repeat("{", 100'000) + repeat("}", 100'000) + " } }\n");
    EXPECT_EQ(code.status, exit_status::success);
    EXPECT_EQ(code.diagnostics, "");
    expect_well_formed(code.xml);

    const Conversion conditionals = convert(std::string(header) + repeat("#if 1\n", 1000) + repeat("#endif\n", 1000));
    EXPECT_EQ(conditionals.status, exit_status::parse_failed);
    EXPECT_TRUE(conditionals.diagnostics.starts_with(error_at("main.ddl", 258) + "Nesting too deep.\n"))
        << conditionals.diagnostics.substr(0, 300);

    const Conversion calls =
        convert(std::string(header) + "#define F(a) a\nVARIABLE v { LABEL " + repeat("F(", 100'000) + "\"a\" }\n");
    EXPECT_EQ(calls.status, exit_status::parse_failed);
    EXPECT_TRUE(calls.diagnostics.starts_with(error_at("main.ddl", 3) + "Nesting too deep.\n"))
        << calls.diagnostics.substr(0, 300);
}

// Conditionals nested up to the guard around a large body: each level delivers its kept
// tokens again, which must not mean reading the body once per level (that took seconds).
TEST_F(HostileInput, DeepConditionalsAroundALargeBodyStayFast) {
    const std::size_t depth = Preprocessor::max_nesting - 6;
    std::string body;
    for (int i = 0; i < 20'000; ++i)
        body += "VARIABLE v" + std::to_string(i) + " { LABEL \"x\"; CLASS CONTAINED; TYPE INTEGER; }\n";
    std::string plain;
    std::string defining;  // a definition on every level: the body is looked at again
    for (std::size_t i = 0; i < depth; ++i) {
        plain += "#if 1\n";
        defining += "#if 1\n#define D" + std::to_string(i) + "\n";
    }
    for (const std::string& levels : {plain, defining}) {
        const auto start = std::chrono::steady_clock::now();
        const Conversion result = convert(std::string(header) + levels + body + repeat("#endif\n", depth));
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        EXPECT_EQ(result.status, exit_status::success);
        EXPECT_EQ(result.diagnostics, "");
        // Generous for a loaded machine and a sanitizer build; the slow way took far longer.
        EXPECT_LT(elapsed.count(), 10.0);
    }
}

// However the files include one another, reading stops at the first include beyond the
// guard and goes on in the input file: one message, no matter how often a file includes itself.
TEST_F(HostileInput, IncludeCyclesStopAtTheNestingGuard) {
    dir_.write("self.h", "#include \"self.h\"\n#include \"self.h\"\n");
    dir_.write("a.h", "#include \"b.h\"\n#include \"b.h\"\n#include \"b.h\"\n");
    dir_.write("b.h", "#include \"a.h\"\n#include \"a.h\"\n");
    const Conversion twice = convert(std::string(header) + "#include \"self.h\"\n" + std::string(item));
    EXPECT_EQ(twice.status, exit_status::parse_failed);
    EXPECT_EQ(twice.diagnostics, error_at("self.h", 1) + "Include nesting too deep.\n");

    const Conversion mutual = convert(std::string(header) + "#include \"a.h\"\n" + std::string(item));
    EXPECT_EQ(mutual.status, exit_status::parse_failed);
    EXPECT_EQ(mutual.diagnostics, error_at("b.h", 1) + "Include nesting too deep.\n");

    // A file that ran past the guard is not read down the chain again: a later include of
    // it fails at once (inside a conditional, read eagerly, this took half a minute).
    const auto start = std::chrono::steady_clock::now();
    const Conversion again = convert("#if 1\n" + std::string(item) + repeat("#include \"main.ddl\"\n", 200) + "#endif\n");
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_LT(elapsed.count(), 10.0);
    std::size_t count = 0;
    for (std::size_t at = again.diagnostics.find("Include nesting too deep."); at != std::string::npos;
         at = again.diagnostics.find("Include nesting too deep.", at + 1))
        ++count;
    EXPECT_EQ(count, 200u);
    EXPECT_EQ(again.status, exit_status::parse_failed);

    // Every nested copy stops at its first line, so the text after it is read once.
    const Conversion main_itself = convert("#include \"main.ddl\"\n" + std::string(header) + std::string(item));
    EXPECT_EQ(main_itself.status, exit_status::parse_failed);
    EXPECT_EQ(main_itself.diagnostics, error_at("main.ddl", 1) + "Include nesting too deep.\n");
}

// A cycle is found however long it is, up to the guard on imported files open at once.
TEST_F(HostileInput, ImportChainsEndWithACycleOrTheNestingGuard) {
    auto write_chain = [this](int length, std::string_view last) {
        for (int i = 0; i < length; ++i) {
            const std::string next = i + 1 < length ? "f" + std::to_string(i + 1) + ".ddl" : std::string(last);
            dir_.write("f" + std::to_string(i) + ".ddl", std::string(header) + "IMPORT \"" + next + "\" { EVERYTHING; }\n");
        }
    };
    const std::string source = std::string(header) + "IMPORT \"f0.ddl\" { EVERYTHING; }\n" + std::string(item);

    write_chain(200, "main.ddl");
    const Conversion cycle = convert(source);
    EXPECT_EQ(cycle.status, exit_status::parse_failed);
    EXPECT_EQ(cycle.diagnostics, error_at("f199.ddl", 2) + "Recursive import of main.ddl.\n");

    write_chain(250, "main.ddl");
    const Conversion chain = convert(source);
    EXPECT_EQ(chain.status, exit_status::parse_failed);
    EXPECT_EQ(chain.diagnostics, error_at("f199.ddl", 2) + "Nesting too deep.\n");
}

// Files that import the next one twice, level under level: 2^20 conversions without the
// guard on imported files per run.
TEST_F(HostileInput, ImportsThatDoubleEndAtTheImportGuard) {
    constexpr int levels = 20;
    for (int i = 0; i < levels; ++i) {
        std::string text(header);
        if (i + 1 < levels) {
            const std::string next =
                std::string("IMPORT \"d").append(std::to_string(i + 1)).append(".ddl\" { EVERYTHING; }\n");
            text += next;
            text += next;
        } else {
            text += item;
        }
        dir_.write(std::string("d").append(std::to_string(i)).append(".ddl"), text);
    }
    const auto start = std::chrono::steady_clock::now();
    const Conversion result = convert(std::string(header) + "IMPORT \"d0.ddl\" { EVERYTHING; }\n");
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(result.status, exit_status::parse_failed);
    EXPECT_NE(result.diagnostics.find("): error: Nesting too deep.\n"), std::string::npos);
    EXPECT_LT(elapsed.count(), 20.0);
}

// Definitions that double one another, and calls that double their argument, stop at the
// expansion guard within a fraction of a second; macros that name themselves expand once.
TEST_F(HostileInput, MacroBombsEndWithExpansionTooLarge) {
    std::string doubling = "#define A0 x x\n";
    for (int i = 1; i <= 40; ++i)
        doubling += "#define A" + std::to_string(i) + " A" + std::to_string(i - 1) + " A" + std::to_string(i - 1) + "\n";
    std::string bombs[] = {
        std::string(header) + doubling + "VARIABLE v { LABEL A40; }\n",
        std::string(header) + "#define F(a) a a\nVARIABLE v { LABEL " + repeat("F(", 40) + "1" + repeat(")", 40) + "; }\n",
        std::string(header) + "#define F(a) a a a a\n#define G(a) F(F(F(F(a))))\n#define H(a) G(G(G(G(a))))\n"
                              "VARIABLE v { LABEL H(H(H(1))); }\n",
    };
    for (const std::string& source : bombs) {
        const Conversion result = convert(source);
        EXPECT_EQ(result.status, exit_status::parse_failed);
        EXPECT_NE(result.diagnostics.find("error: Macro expansion too large.\n"), std::string::npos)
            << result.diagnostics.substr(0, 300);
    }

    const Conversion self = convert(std::string(header) +
                                    "#define v v\n#define LABEL_OF(x) LABEL_OF(x) x\n#define A B\n#define B A\n"
                                    "VARIABLE v { LABEL \"x\"; CLASS CONTAINED; TYPE INTEGER; }\n");
    EXPECT_EQ(self.status, exit_status::success);
    EXPECT_EQ(self.diagnostics, "");
}

// A byte 0xFF ends the text; a NUL is a character like any other: in a string it reaches the
// document as U+FFFD, elsewhere it is a token no rule accepts.
TEST_F(HostileInput, StrayBytes) {
    const Conversion clean = convert(std::string(header) + std::string(item));
    ASSERT_EQ(clean.status, exit_status::success);

    const Conversion cut = convert(std::string(header) + std::string(item) + "\xFF" + "VARIABLE w {");
    EXPECT_EQ(cut.status, exit_status::success);
    EXPECT_EQ(cut.xml, clean.xml);

    const Conversion only_ff = convert(std::string(1000, '\xFF'));
    EXPECT_EQ(only_ff.status, exit_status::parse_failed);
    EXPECT_EQ(only_ff.diagnostics, error_at("main.ddl", 1) + "Expected identification but got \n");

    using namespace std::string_literals;
    const Conversion nul_in_string =
        convert(std::string(header) + "VARIABLE v { LABEL \"a\0b\"; CLASS CONTAINED; TYPE INTEGER; }\n"s);
    EXPECT_EQ(nul_in_string.status, exit_status::success);
    EXPECT_NE(nul_in_string.xml.find("a\xEF\xBF\xBD" "b"), std::string::npos);
    expect_well_formed(nul_in_string.xml);

    const Conversion nuls = convert(std::string(header) + std::string(1000, '\0'));
    EXPECT_EQ(nuls.status, exit_status::parse_failed);
    EXPECT_FALSE(nuls.diagnostics.empty());
}

TEST_F(HostileInput, TenMegabyteLines) {
    constexpr std::size_t size = 10'000'000;
    const Conversion label =
        convert(std::string(header) + "VARIABLE v { LABEL \"" + std::string(size, 'a') + "\"; CLASS CONTAINED; TYPE INTEGER; }\n");
    EXPECT_EQ(label.status, exit_status::success);
    EXPECT_EQ(label.diagnostics, "");
    EXPECT_NE(label.xml.find(std::string(size, 'a')), std::string::npos);

    const Conversion comment = convert(std::string(header) + "// " + std::string(size, 'c') + "\n" + std::string(item));
    EXPECT_EQ(comment.status, exit_status::success);
    EXPECT_EQ(comment.diagnostics, "");

    const Conversion operators = convert(std::string(header) + "VARIABLE v { LABEL " + repeat("1 + ", size / 4) + "1; }\n");
    EXPECT_EQ(operators.status, exit_status::parse_failed);
    EXPECT_EQ(operators.diagnostics, error_at("main.ddl", 2) + "Nesting too deep.\n");
}

// Garbage fails the parse; with -c the writer still runs on whatever was parsed, and any
// document it writes is well-formed.
TEST_F(HostileInput, BinaryGarbage) {
    std::mt19937 random(20240612u);
    std::uniform_int_distribution<int> byte(0, 254);  // 0xFF would end the text early
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        std::string garbage(round % 2 == 0 ? std::string(header) : std::string());
        for (int i = 0; i < 16'384; ++i) garbage += static_cast<char>(byte(random));
        const Conversion plain = convert(garbage);
        EXPECT_EQ(plain.status, exit_status::parse_failed);
        EXPECT_FALSE(plain.diagnostics.empty());
        const Conversion continued = convert(garbage, {"-c"});
        EXPECT_TRUE(continued.status == exit_status::success || continued.status == exit_status::fatal)
            << continued.status;
        expect_well_formed(continued.xml);
    }
}

// A sample of the prefixes of real descriptions and of a header they include: each run ends
// in success or a parse failure, and with -c any document written is well-formed.
TEST_F(HostileInput, TruncatedFiles) {
    const std::filesystem::path examples = std::filesystem::path(TARNWICK_SOURCE_DIR) / "examples";
    auto read = [](const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    };
    for (const char* header_name : {"hart_common.h", "unit_codes.h"})
        dir_.write(header_name, read(examples / "hart" / header_name));
    const std::string full = read(examples / "hart" / "temperature_transmitter.ddl");
    ASSERT_FALSE(full.empty());

    std::mt19937 random(5u);
    std::uniform_int_distribution<std::size_t> cut(0, full.size());
    for (int sample = 0; sample < 30; ++sample) {
        const std::size_t length = cut(random);
        SCOPED_TRACE(length);
        for (const bool keep_going : {false, true}) {
            const Conversion result = convert(full.substr(0, length), keep_going ? std::vector<std::string>{"-c"}
                                                                                  : std::vector<std::string>{});
            EXPECT_TRUE(result.status == exit_status::success || result.status == exit_status::parse_failed ||
                        (keep_going && result.status == exit_status::fatal))
                << result.status << "\n" << result.diagnostics.substr(0, 300);
            expect_well_formed(result.xml);
        }
    }

    const std::string common = read(examples / "hart" / "hart_common.h");
    std::uniform_int_distribution<std::size_t> cut_header(0, common.size());
    for (int sample = 0; sample < 10; ++sample) {
        const std::size_t length = cut_header(random);
        SCOPED_TRACE(length);
        dir_.write("hart_common.h", common.substr(0, length));
        const Conversion result = convert(full, {"-c"});
        EXPECT_TRUE(result.status == exit_status::success || result.status == exit_status::fatal) << result.status;
        expect_well_formed(result.xml);
    }
}

}  // namespace
}  // namespace edd
