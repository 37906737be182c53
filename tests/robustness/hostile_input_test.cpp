// SPDX-License-Identifier: Apache-2.0
// Hostile input: deep nesting, include and import cycles, macro bombs, stray bytes, huge
// lines and garbage end with their documented message and status, within bounds, through
// the whole program (edd::run, as main calls it); and the front end drains whatever bytes
// it is given. ctest's time limit bounds every test, the sanitizer build's too.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#ifdef TARNWICK_PUGIXML
#include <pugixml.hpp>
#endif

#include "driver/driver.hpp"
#include "driver/exit_status.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "test_support.hpp"
#include "xml/document_text.hpp"

namespace edd {
namespace {

constexpr std::string_view header = "MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 1, DD_REVISION 1\n";
constexpr std::string_view item = "VARIABLE v { LABEL \"x\"; CLASS CONTAINED; TYPE INTEGER; }\n";
constexpr int parse_failed = exit_status::parse_failed, fatal = exit_status::fatal;

std::string repeat(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

// "f7.ddl" and the like (built with append: GCC 12 warns wrongly about "f" + text).
std::string numbered(const char* prefix, int i) { return std::string(prefix).append(std::to_string(i)).append(".ddl"); }

std::string read(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

struct Conversion {
    int status = 0;
    std::string diagnostics;
    std::string xml;  // empty when no document was written
    double seconds = 0;
};

class HostileInput : public ::testing::Test {
protected:
    // main.ddl in a directory of its own, which is an include path as for any run.
    Conversion convert(std::string_view source, std::vector<std::string> options = {}) {
        dir_.write("main.ddl", source);
        const std::string output = dir_.str() + "/main.xml";
        std::filesystem::remove(output);
        std::vector<std::string> arguments{"tarnwick", "-p", "HART", "-o", output, dir_.str() + "/main.ddl"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        std::ostringstream out, err;
        const auto start = std::chrono::steady_clock::now();
        Conversion result;
        result.status = run(arguments, out, err);
        result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        result.diagnostics = err.str();
        result.xml = read(output);
        // A written document is one an XML reader accepts.
        if (!result.xml.empty()) {
            EXPECT_TRUE(is_well_formed_utf8(result.xml));
#ifdef TARNWICK_PUGIXML
            pugi::xml_document document;
            EXPECT_TRUE(document.load_buffer(result.xml.data(), result.xml.size()));
#endif
        }
        return result;
    }
    // The same in a child process of its own, whose peak memory the kernel reports.
    // With a bound on the child's address space, when one is given.
    Conversion convert_measured(std::string_view source, long& peak_mib, std::vector<std::string> options = {},
                                rlim_t address_space = RLIM_INFINITY) {
        int pipe_ends[2];
        EXPECT_EQ(pipe(pipe_ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            const rlimit bound{address_space, address_space};
            if (address_space != RLIM_INFINITY) setrlimit(RLIMIT_AS, &bound);
            close(pipe_ends[0]);
            const Conversion result = convert(source, options);
            const std::string report = std::to_string(result.seconds) + "\n" + result.diagnostics;
            [[maybe_unused]] const auto written = ::write(pipe_ends[1], report.data(), report.size());
            _exit(result.status);
        }
        close(pipe_ends[1]);
        std::string report;
        char chunk[4096];
        for (ssize_t n; (n = ::read(pipe_ends[0], chunk, sizeof chunk)) > 0;) report.append(chunk, static_cast<std::size_t>(n));
        close(pipe_ends[0]);
        int status = 0;
        rusage usage{};
        wait4(child, &status, 0, &usage);
        peak_mib = usage.ru_maxrss / 1024;
        Conversion result;
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.seconds = std::stod(report.substr(0, report.find('\n')));
        result.diagnostics = report.substr(report.find('\n') + 1);
        return result;
    }
    std::string error_at(std::string_view file, int line) const {
        return dir_.str() + "/" + std::string(file) + "(" + std::to_string(line) + "): error: ";
    }
    void expect(const Conversion& result, int status, const std::string& diagnostics, double seconds = 20) {
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.diagnostics, diagnostics) << result.diagnostics.substr(0, 300);
        EXPECT_LT(result.seconds, seconds);  // far above what these take; the naive ways took minutes
    }
    test::TempDir dir_;
};

TEST_F(HostileInput, DeepNestingIsFatalNotAStackOverflow) {
    constexpr std::size_t depth = 100'000;
    const std::string cases[] = {
        "VARIABLE v { LABEL " + repeat("(", depth) + "1 }",
        "VARIABLE v { LABEL " + repeat("-!~", depth / 3) + "1 }",
        "VARIABLE v { LABEL " + repeat("f(", depth) + "1 }",
        "VARIABLE v { LABEL " + repeat("a[", depth) + "1 }",
        "VARIABLE v { LABEL " + repeat("1 + ", depth) + "1 }",  // operators group to the right
        "VARIABLE v { LABEL " + repeat("IF (x) { ", depth) + "\"a\" }",
        "VARIABLE v { LABEL IF (" + repeat("(", depth) + "x) { \"a\" } }",
        "MENU m { ITEMS { " + repeat("IF (x) { ", depth) + "a } }",
        "MENU m { ITEMS { " + repeat("SELECT (x) { CASE 1: ", depth) + "a } }",
        "VARIABLE v { TYPE ENUMERATED { " + repeat("IF (x) { ", depth) + "{1, \"a\"} } }",
        "COLLECTION c { MEMBERS { " + repeat("IF (x) { ", depth) + "a, b; } }",
    };
    for (const std::string& body : cases) {
        SCOPED_TRACE(body.substr(0, 40));
        expect(convert(std::string(header) + body + "\n"), parse_failed, error_at("main.ddl", 2) + "Nesting too deep.\n");
    }
}

std::size_t occurrences(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
    return count;
}

// Method code keeps its braces as flat tokens; conditional directives and macro calls in
// arguments stop at the preprocessor's guard, at a depth of 256, which reports once
// however many levels lie beyond it.
TEST_F(HostileInput, NestingOutsideTheGrammar) {
    expect(convert(std::string(header) + "METHOD m { DEFINITION { " + repeat("{", 100'000) + repeat("}", 100'000) + " } }\n"),
           0, "");
    const Conversion conditionals = convert(std::string(header) + repeat("#ifdef X\n", 100'000) + repeat("#endif\n", 100'000));
    EXPECT_EQ(conditionals.status, parse_failed);
    EXPECT_TRUE(conditionals.diagnostics.starts_with(error_at("main.ddl", 258) + "Nesting too deep.\n"));
    EXPECT_EQ(occurrences(conditionals.diagnostics, "\n"), 3u) << conditionals.diagnostics;  // and 2 of the parser
    const Conversion calls = convert(std::string(header) + "#define F(a) a\nVARIABLE v { LABEL " + repeat("F(", 100'000) + "\"a\" }\n");
    EXPECT_EQ(calls.status, parse_failed);
    EXPECT_EQ(calls.diagnostics, error_at("main.ddl", 3) + "Nesting too deep.\n");
}

// Each level of nested conditionals delivers its kept tokens again; around a large body
// that must not mean reading the body once per level.
TEST_F(HostileInput, DeepConditionalsAroundALargeBody) {
    std::string body, plain, defining;
    for (int i = 0; i < 20'000; ++i) body += "VARIABLE v" + std::to_string(i) + " { LABEL \"x\"; TYPE INTEGER; }\n";
    for (std::size_t i = 0; i < PreprocessorLimits::max_nesting - 6; ++i) {
        plain += "#if 1\n";
        defining += "#if 1\n#define D" + std::to_string(i) + "\n";  // the body is looked at again
    }
    for (const std::string& levels : {plain, defining})
        expect(convert(std::string(header) + levels + body + repeat("#endif\n", PreprocessorLimits::max_nesting - 6)), 0, "", 10);
}

// Reading stops at the first include beyond the guard and goes on in the input file: one
// message however often the files include themselves; a file that ran past the guard
// fails at once when included again.
TEST_F(HostileInput, IncludeCycles) {
    dir_.write("self.h", "#include \"self.h\"\n#include \"self.h\"\n");
    dir_.write("a.h", "#include \"b.h\"\n#include \"b.h\"\n#include \"b.h\"\n");
    dir_.write("b.h", "#include \"a.h\"\n#include \"a.h\"\n");
    const std::string text(item);
    expect(convert(std::string(header) + "#include \"self.h\"\n" + text), parse_failed,
           error_at("self.h", 1) + "Include nesting too deep.\n");
    expect(convert(std::string(header) + "#include \"a.h\"\n" + text), parse_failed,
           error_at("b.h", 1) + "Include nesting too deep.\n");
    expect(convert("#include \"main.ddl\"\n" + std::string(header) + text), parse_failed,
           error_at("main.ddl", 1) + "Include nesting too deep.\n");
    const Conversion again = convert("#if 1\n" + text + repeat("#include \"main.ddl\"\n", 200) + "#endif\n");
    EXPECT_EQ(again.status, parse_failed);
    EXPECT_EQ(occurrences(again.diagnostics, "nesting too deep"), 200u);
    EXPECT_LT(again.seconds, 10);
}

// A cycle is found however long it is, up to the guard on imported files open at once;
// files that import the next one twice, level under level, are converted once each
// instead of 2^20 times.
TEST_F(HostileInput, ImportChains) {
    auto write_chain = [this](int length) {
        for (int i = 0; i < length; ++i) {
            const std::string next = i + 1 < length ? numbered("f", i + 1) : "main.ddl";
            dir_.write(numbered("f", i), std::string(header) + "IMPORT \"" + next + "\" { EVERYTHING; }\n");
        }
    };
    const std::string source = std::string(header) + "IMPORT \"f0.ddl\" { EVERYTHING; }\n" + std::string(item);
    write_chain(200);
    expect(convert(source), parse_failed, error_at("f199.ddl", 2) + "Recursive import of main.ddl.\n");
    write_chain(250);
    expect(convert(source), parse_failed, error_at("f199.ddl", 2) + "Nesting too deep.\n");

    for (int i = 0; i < 20; ++i) {
        const std::string next = "IMPORT \"" + numbered("d", i + 1) + "\" { EVERYTHING; }\n";
        dir_.write(numbered("d", i), std::string(header) + (i + 1 < 20 ? next + next : std::string(item)));
    }
    const Conversion doubling = convert(std::string(header) + "IMPORT \"d0.ddl\" { EVERYTHING; }\n");
    EXPECT_EQ(doubling.status, 0);
    EXPECT_EQ(occurrences(doubling.diagnostics, "Duplicate definition of object v."), 19u);
    EXPECT_LT(doubling.seconds, 5);
}

// Definitions that double one another and calls that double their argument stop at the
// expansion guard; macros that name themselves expand once.
TEST_F(HostileInput, MacroBombs) {
    std::string doubling = "#define A0 x x\n";
    for (int i = 1; i <= 40; ++i)
        doubling += "#define A" + std::to_string(i) + " A" + std::to_string(i - 1) + " A" + std::to_string(i - 1) + "\n";
    const std::string bombs[] = {
        doubling + "VARIABLE v { LABEL A40; }\n",
        "#define F(a) a a\nVARIABLE v { LABEL " + repeat("F(", 40) + "1" + repeat(")", 40) + "; }\n",
        "#define F(a) a a a a\n#define G(a) F(F(F(F(a))))\n#define H(a) G(G(G(G(a))))\nVARIABLE v { LABEL H(H(H(1))); }\n",
    };
    for (const std::string& bomb : bombs) {
        const Conversion result = convert(std::string(header) + bomb);
        EXPECT_EQ(result.status, parse_failed);
        EXPECT_NE(result.diagnostics.find("error: Macro expansion too large.\n"), std::string::npos);
        EXPECT_LT(result.seconds, 10);
    }
    expect(convert(std::string(header) + "#define v v\n#define LABEL_OF(x) LABEL_OF(x) x\n#define A B\n#define B A\n" +
                   std::string(item)),
           0, "");
}

#if defined(__SANITIZE_ADDRESS__)
constexpr long memory_factor = 4;  // shadow memory and quarantine
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr long memory_factor = 4;
#else
constexpr long memory_factor = 1;
#endif
#else
constexpr long memory_factor = 1;
#endif

// A body of half a million tokens taken into another forty times is held once; expanding it
// stops at the guard. Read lazily into a kept branch, the tokens it would hold stop at the
// memory guard, reported once. Both took gigabytes once.
TEST_F(HostileInput, MacroMemory) {
    const std::string body = "#define A" + repeat(" x", 250'000) + "\n";
    long peak_mib = 0;
    const Conversion taken_over =
        convert_measured(body + "#define B" + repeat(" A", 40) + "\n" + std::string(header) + "B\n", peak_mib);
    expect(taken_over, parse_failed & 255, error_at("main.ddl", 4) + "Macro expansion too large.\n");
    EXPECT_LT(peak_mib, 100 * memory_factor);
    const Conversion kept = convert_measured(body + std::string(header) + "#ifndef G\n" + repeat("A\n", 30) + "#endif\n", peak_mib);
    expect(kept, parse_failed & 255, error_at("main.ddl", 1) + "Macro expansion too large.\n");
    EXPECT_LT(peak_mib, 256 * memory_factor);
}

// Bodies doubled up to 2^18 pastes or 2^19 tokens, and a long string pasted again at every
// call: each use in a branch not taken (where failures cost nothing but time) walks the
// body or makes a text only while the guards allow, and a use that fails uses up what is
// left.
TEST_F(HostileInput, MacroAmplification) {
    auto doubling = [](std::string_view first) {
        std::string text = std::string(20'000, ' ') + "\n#define A0 " + std::string(first) + "\n";
        for (int i = 1; i <= 18; ++i)
            text += "#define A" + std::to_string(i) + " A" + std::to_string(i - 1) + " A" + std::to_string(i - 1) + "\n";
        return text;
    };
    const std::string pasting = "#define S \"" + std::string(1'000'000, 's') + "\"\n#define P(a) a ## x\n";
    for (const auto& [definitions, use] : {std::pair{doubling("x ## y"), "A18\n"},
                                           std::pair{doubling("x y") + "#define F(a) A18\n", "F(1)\n"},
                                           std::pair{pasting, "P(S)\n"}}) {
        long peak_mib = 0;
        const Conversion result =
            convert_measured(std::string(header) + definitions + "#if 0\n" + repeat(use, 1'000) + "#endif\n", peak_mib);
        EXPECT_NE(result.diagnostics.find("error: Macro expansion too large.\n"), std::string::npos);
        EXPECT_LT(result.seconds, 10);
        EXPECT_LT(peak_mib, 128 * memory_factor);
    }
}

// A library imported a thousand times, an item each time, is read and converted once, and
// its items are held once.
TEST_F(HostileInput, OneLibraryImportedOften) {
    std::string library(header), imports(header);
    for (int i = 0; i < 20'000; ++i)
        library.append("VARIABLE v").append(std::to_string(i)).append(" { LABEL \"v\"; CLASS LOCAL; TYPE INTEGER; }\n");
    for (int i = 0; i < 1000; ++i) imports.append("IMPORT \"library.ddl\" { v").append(std::to_string(i)).append("; }\n");
    dir_.write("library.ddl", library);
    long peak_mib = 0;
    const Conversion result = convert_measured(imports, peak_mib);
    expect(result, 0, "", 5);
    EXPECT_LT(peak_mib, 100 * memory_factor);
}

// An image named by many items, under several spellings, is read once and embedded from
// its bytes, never held encoded; images beyond the bound are refused from their size
// before they are read, naming the path as written.
TEST_F(HostileInput, ImagesHeldOnce) {
    dir_.write("img/big.bin", std::string(8u << 20, 'i'));
    std::string images(header);
    for (const char* path : {"img/big.bin", "img/./big.bin", "./img/big.bin", "img//big.bin"})
        for (int i = 0; i < 2; ++i) images.append("IMAGE i").append(std::to_string(images.size())).append(" { PATH \"").append(path).append("\"; }\n");
    long peak_mib = 0;
    expect(convert_measured(images, peak_mib, {"-o", "/dev/null"}), 0, "");
    EXPECT_LT(peak_mib, 70 * memory_factor);  // eight encoded copies took 100 MiB more

    std::filesystem::resize_file(dir_.path() / "img" / "big.bin", std::uint64_t{1} << 30);  // sparse
    const Conversion huge = convert(std::string(header) + "IMAGE i { PATH \"img/../img/big.bin\"; }\n");
    expect(huge, exit_status::file_not_opened, "Image file img/../img/big.bin takes the embedded images beyond 512 MiB.\n", 5);
}

// Running out of memory says what the run was doing, not only the exception's name. The
// sanitizers reserve far more address space than any bound here would allow.
TEST_F(HostileInput, OutOfMemoryNamesTheStep) {
    if (memory_factor != 1) GTEST_SKIP() << "an address-space bound and the sanitizers exclude each other";
    dir_.write("img/big.bin", "");
    std::filesystem::resize_file(dir_.path() / "img" / "big.bin", std::uint64_t{480} << 20);  // sparse
    long peak_mib = 0;
    const Conversion result = convert_measured(std::string(header) + "IMAGE i { PATH \"img/big.bin\"; }\n", peak_mib,
                                               {"-o", "/dev/null"}, rlim_t{384} << 20);
    EXPECT_EQ(result.status, fatal & 255);
    EXPECT_EQ(result.diagnostics, "Encountered a fatal error: Out of memory while reading the image files and ordering "
                                  "the items.(std::bad_alloc)\n");
}

// Dictionaries merged file after file: linear, and a key's first file still wins.
TEST_F(HostileInput, ManyDictionaries) {
    std::vector<std::string> options;
    for (int file = 0; file < 400; ++file) {
        std::string text;
        for (int entry = 0; entry < 500; ++entry)
            text.append("[0, 0] k").append(std::to_string(entry)).append(" \"").append(std::to_string(file)).append("\"\n");
        const std::string name = numbered("d", file);
        dir_.write(name, text);
        options.insert(options.end(), {"-d", dir_.str() + "/" + name});
    }
    const Conversion result = convert(std::string(header) + "VARIABLE v { LABEL [k7]; CLASS LOCAL; TYPE INTEGER; }\n", options);
    expect(result, 0, "", 10);
    EXPECT_NE(result.xml.find("<DICTIONARY_KEY id=\"k7\"><DICTIONARY_STRING><string>0</string>"), std::string::npos);
}

// Every REDEFINE and DELETE of an import finds its item through the index.
TEST_F(HostileInput, ManyRedefinitions) {
    constexpr int count = 160'000;
    std::string library(header), redefinitions;
    for (int i = 0; i < count; ++i) {
        const std::string name = std::to_string(i);
        library.append("VARIABLE v").append(name).append(" { LABEL \"v\"; CLASS LOCAL; TYPE INTEGER; }\n");
        if (i % 2 == 0) redefinitions.append("REDEFINE VARIABLE v").append(name).append(" { HELP \"h\"; }\n");
        else redefinitions.append("DELETE VARIABLE v").append(name).append(";\n");
    }
    // One name selected again and again, then deleted as often.
    const std::string again = repeat("v1; ", count);
    redefinitions += repeat("DELETE VARIABLE v1;\n", count);
    dir_.write("library.ddl", library);
    const Conversion result = convert(std::string(header) + "IMPORT \"library.ddl\" { EVERYTHING; " + again +
                                      "REDEFINITIONS {\n" + redefinitions + "} }\n");
    expect(result, 0, "", 20);
    EXPECT_NE(result.xml.find("<VARIABLE id=\"v159998\">"), std::string::npos);
    EXPECT_EQ(result.xml.find("<VARIABLE id=\"v159999\">"), std::string::npos);
}

// 0xFF ends the text; a NUL is a character like any other: in a string it reaches the
// document as U+FFFD, elsewhere it is a token no rule accepts. Lines of ten megabytes pass,
// and so does a text that is all bytes to escape.
TEST_F(HostileInput, StrayBytesAndHugeLines) {
    const Conversion clean = convert(std::string(header) + std::string(item));
    EXPECT_EQ(convert(std::string(header) + std::string(item) + "\xFFVARIABLE w {").xml, clean.xml);
    expect(convert(std::string(1000, '\xFF')), parse_failed, error_at("main.ddl", 1) + "Expected identification but got \n");
    using namespace std::string_literals;
    const Conversion nul = convert(std::string(header) + "VARIABLE v { LABEL \"a\0b\"; }\n"s);
    EXPECT_NE(nul.xml.find("a\xEF\xBF\xBD" "b"), std::string::npos);
    EXPECT_EQ(convert(std::string(header) + std::string(1000, '\0')).status, parse_failed);

    constexpr std::size_t size = 10'000'000;
    const Conversion label = convert(std::string(header) + "VARIABLE v { LABEL \"" + std::string(size, 'a') + "\"; }\n");
    EXPECT_NE(label.xml.find(std::string(size, 'a')), std::string::npos);
    // Every byte escaped: the writer once copied the rest of its buffer again after each.
    const Conversion escapes = convert(std::string(header) + "VARIABLE v { LABEL \"" + std::string(size / 4, '&') + "\"; }\n");
    expect(escapes, 0, "");
    EXPECT_NE(escapes.xml.find(repeat("&amp;", size / 4)), std::string::npos);
    expect(convert(std::string(header) + "// " + std::string(size, 'c') + "\n" + std::string(item)), 0, "");
    expect(convert(std::string(header) + "VARIABLE v { LABEL " + repeat("1 + ", size / 4) + "1; }\n"), parse_failed,
           error_at("main.ddl", 2) + "Nesting too deep.\n");
}

// Garbage and cut-off descriptions fail the parse or pass; with -c the writer runs on
// whatever was parsed, and any document it writes is well-formed (checked in convert).
TEST_F(HostileInput, GarbageAndTruncatedFiles) {
    std::mt19937 random(20240612u);
    std::uniform_int_distribution<int> byte(0, 254);
    for (int round = 0; round < 20; ++round) {
        std::string garbage(round % 2 == 0 ? std::string(header) : std::string());
        for (int i = 0; i < 16'384; ++i) garbage += static_cast<char>(byte(random));
        EXPECT_EQ(convert(garbage).status, parse_failed);
        const int status = convert(garbage, {"-c"}).status;
        EXPECT_TRUE(status == 0 || status == fatal) << status;
    }
    const auto examples = std::filesystem::path(TARNWICK_SOURCE_DIR) / "examples" / "hart";
    for (const char* name : {"hart_common.h", "unit_codes.h"}) dir_.write(name, read(examples / name));
    const std::string full = read(examples / "temperature_transmitter.ddl");
    std::uniform_int_distribution<std::size_t> cut(0, full.size());
    for (int sample = 0; sample < 20; ++sample) {
        const std::string part = full.substr(0, cut(random));
        const int status = convert(part).status;
        EXPECT_TRUE(status == 0 || status == parse_failed) << part.size();
        const int continued = convert(part, {"-c"}).status;
        EXPECT_TRUE(continued == 0 || continued == fatal) << part.size();
    }
}

// The lexer and preprocessor reach END_OF_FILE on any bytes: random pieces of directives,
// macros and literals, and every prefix and suffix of a source that uses them all.
TEST(FrontEndRobustness, DrainsAnyInput) {
    const test::TempDir empty;
    auto drains = [&](const std::string& text) {
        std::ostringstream diag;
        Diagnostics sink(diag, diag);
        InputFiles files;
        Lexer lexer = Lexer::from_text(text, "main.ddl", sink);
        Preprocessor pp(lexer, {empty.str()}, files, sink);
        for (int i = 0; i < 10'000'000; ++i)
            if (pp.next_token().is(END_OF_FILE)) return true;
        return false;
    };
    const std::vector<std::string> pieces = {
        "#define", "#undef", "#if", "#ifdef", "#ifndef", "#else", "#endif", "#include", "#line", "#pragma",
        "\n#define A x A\n", "\n#define F(x) x F\n", "\n#define P(a,b) a##b #a\n", "P(", "#endif\n", "#", "##",
        "(", ")", ",", " ", "\n", "\r\n", "\\", "\\\n", "\"", "\"inc.ddl\"", "<", "/*", "*/", "//", "A", "F(",
        "0x", "1.", ".5e", "017", "{", "}", std::string(1, '\0'), "\xFF", "\xEF\xBB\xBF", "\x80",
    };
    std::mt19937 random(20240611u);
    std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
    std::uniform_int_distribution<int> length(0, 160), byte(0, 255), choice(0, 3);
    for (int i = 0; i < 4000; ++i) {
        std::string text;
        for (int n = length(random); n > 0; --n) text += choice(random) == 0 ? std::string(1, char(byte(random))) : pieces[piece(random)];
        EXPECT_TRUE(drains(text)) << text;
    }
    const std::string source =
        "\xEF\xBB\xBF#include \"standard.ddl\"\n#define VALUE(name, label) VARIABLE name { LABEL #label; }\n"
        "#define CAT(a, b) a ## b\n#ifndef GUARD\n#define GUARD 1\nVALUE(t, T)\nVARIABLE CAT(p, q) {\n"
        "    HELP \"one \\\ntwo\"; /* c */ TYPE FLOAT { DEFAULT_VALUE 1.5e-3f; MIN_VALUE 0x10; }\n}\n#else\n#line 12\n"
        "#endif\n#define A x A\n#define F(x) x F\nA F(1)(2) #\n#include <none>\n#if 00\nz\n#else\ny\n#endif\n\"open\\";
    for (std::size_t n = 0; n <= source.size(); ++n) {
        EXPECT_TRUE(drains(source.substr(0, n))) << n;
        EXPECT_TRUE(drains(source.substr(n))) << n;
    }
    for (const std::string& deep : {repeat("#if 1\n", 20000), repeat("#if 1\n", 20000) + repeat("#endif\n", 20000),
                                    "#define F(a) a\n" + repeat("F(", 20000),
                                    "#define F(a) a\nF(" + repeat("(", 20000) + repeat(")", 20000) + ")"})
        EXPECT_TRUE(drains(deep));
}

}  // namespace
}  // namespace edd
