// IMPORT: finding the imported file (by name through the include paths, by identification
// through the profiles), the import list, REDEFINITIONS, collisions with names already
// defined, errors of the imported file, and imports that lead back to a file being read.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frontend/pp_helpers.hpp"
#include "import_helpers.hpp"

namespace edd {
namespace {

using namespace import_test;
using test::TempDir;

constexpr const char* library =
    "MANUFACTURER 1, DEVICE_TYPE 2\n"
    "VARIABLE a { LABEL \"lib a\"; HELP \"help a\"; }\n"
    "VARIABLE b { LABEL \"lib b\"; }\n"
    "MENU m { LABEL \"menu\"; }\n"
    "REFRESH r { a : b }\n";

const std::string lib_a = "VARIABLE a { HELP \"help a\"; LABEL \"lib a\"; }";
const std::string lib_b = "VARIABLE b { LABEL \"lib b\"; }";
const std::string lib_m = "MENU m { LABEL \"menu\"; }";
const std::string lib_r = "REFRESH r { cause_parameter a; effected_parameter b; }";

std::vector<std::string> names(const ItemTable& items) {
    std::vector<std::string> out;
    for (const Item& item : items.items()) out.push_back(item.name());
    return out;
}

TEST(ImportByName, TakesTheFirstIncludePathThatHoldsTheFile) {
    TempDir first, second, third;
    first.write("lib.ddl/placeholder", "");  // a directory of that name does not count
    second.write("lib.ddl", library);
    third.write("lib.ddl", "MANUFACTURER 1\nVARIABLE other { LABEL \"third\"; }\n");

    const ParseRun run =
        parse_text("MANUFACTURER 1\nIMPORT \"lib.ddl\" { EVERYTHING; }\n", {first.str(), second.str(), third.str()});
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");
    EXPECT_EQ(summaries(run.description.items), (std::vector<std::string>{lib_a, lib_b, lib_m, lib_r}));
    // Imported items remember the path their file was opened under.
    EXPECT_EQ(position_of(run.description.items.get("a")), second.str() + "/lib.ddl(2)");
    EXPECT_EQ(position_of(run.description.items.get("r")), second.str() + "/lib.ddl(5)");

    // A relative directory in the name is resolved below the include path as well.
    TempDir nested;
    nested.write("sub/dir/lib.ddl", library);
    const ParseRun below = parse_text("MANUFACTURER 1\nIMPORT \"sub/dir/lib.ddl\" { b; }\n", {nested.str()});
    EXPECT_TRUE(below.ok);
    EXPECT_EQ(summaries(below.description.items), (std::vector<std::string>{lib_b}));
    EXPECT_EQ(position_of(below.description.items.get("b")), nested.str() + "/sub/dir/lib.ddl(3)");
}

TEST(ImportByIdentification, ProfibusBuildsThePathFromTheNumbers) {
    TempDir library_root;
    library_root.write("001a/0030/0001/001a_0030_0001_0002.ddl", library);
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "IMPORT MANUFACTURER 0x1A, DEVICE_TYPE 0x30, DEVICE_REVISION 1, DD_REVISION 2 { VARIABLES }\n",
        {library_root.str()});
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");
    EXPECT_EQ(summaries(run.description.items), (std::vector<std::string>{lib_a, lib_b}));
    EXPECT_EQ(position_of(run.description.items.get("b")),
              library_root.str() + "/001a/0030/0001/001a_0030_0001_0002.ddl(3)");
    // The identification of the import is not the description's.
    EXPECT_FALSE(run.description.identification.device_type.is_set());
}

TEST(ImportByIdentification, HartSearchesTheLibraryTreesInIncludePathOrder) {
    TempDir empty_root, library_root;
    library_root.write("26/07/0102/device.ddl", library);
    const HartProfile hart;
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "IMPORT MANUFACTURER 0x26, DEVICE_TYPE 7, DEVICE_REVISION 1, DD_REVISION 2 { MENUS; REFRESHS }\n",
        {empty_root.str(), library_root.str()}, hart);
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");
    EXPECT_EQ(summaries(run.description.items), (std::vector<std::string>{lib_m, lib_r}));
    EXPECT_EQ(position_of(run.description.items.get("m")), library_root.str() + "/26/07/0102/device.ddl(4)");
}

TEST(ImportByIdentification, HartRefusesIdentifiersOnStandardError) {
    TempDir library_root;
    library_root.write("26/07/0102/device.ddl", library);
    const HartProfile hart;
    const ParseRun run = parse_text(
        "MANUFACTURER 1\nVARIABLE kept { LABEL \"k\"; }\n"
        "IMPORT MANUFACTURER acme, DEVICE_TYPE 7, DEVICE_REVISION 1, DD_REVISION 2 { EVERYTHING; }\n",
        {library_root.str()}, hart);
    EXPECT_FALSE(run.ok);
    EXPECT_EQ(run.errors, 0);
    EXPECT_EQ(run.diagnostics, "");
    EXPECT_EQ(run.error_output,
              "failure in parser: No Identifiers supported.(std::runtime_error)\nposition: main.ddl(3)\n");
    EXPECT_EQ(names(run.description.items), (std::vector<std::string>{"kept"}));
}

TEST(ImportNotFound, IsFatalAndNamesWhatWasLookedFor) {
    TempDir library_root;
    library_root.write("lib.ddl", library);
    library_root.write("26/07/0102/readme.txt", "not a description");
    const HartProfile hart;
    const NullProfile null;
    const struct {
        const char* import;
        const Profile& profile;
        std::string message;
    } cases[] = {
        {"IMPORT \"missing.ddl\" { EVERYTHING; }", profibus(), "Could not open import DD missing.ddl. File not found."},
        {"IMPORT \"\" { EVERYTHING; }", profibus(), "Could not open import DD . File not found."},
        {"IMPORT MANUFACTURER 0x1A, DEVICE_TYPE 0x30, DEVICE_REVISION 1, DD_REVISION 2", profibus(),
         "Could not open import DD 001a/0030/0001/001a_0030_0001_0002.ddl. File not found."},
        {"IMPORT MANUFACTURER 0x26, DEVICE_TYPE 7, DEVICE_REVISION 1, DD_REVISION 2", hart,
         "Could not open import DD . File not found."},
        {"IMPORT MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 3, DD_REVISION 4", null,
         "Could not open import DD . File not found."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.import);
        const ParseRun run = parse_text(std::string("MANUFACTURER 1\nVARIABLE before { LABEL \"b\"; }\n") + c.import +
                                            "\nVARIABLE after { LABEL \"a\"; }\n",
                                        {library_root.str()}, c.profile);
        EXPECT_FALSE(run.ok);
        EXPECT_EQ(run.errors, 1);
        EXPECT_EQ(run.diagnostics, "main.ddl(3): error: " + c.message + "\n");
        EXPECT_EQ(names(run.description.items), (std::vector<std::string>{"before"}));  // nothing after is read
    }
}

TEST(ImportList, SelectsItemsInListOrder) {
    TempDir root;
    root.write("lib.ddl", library);
    const struct {
        const char* list;
        std::vector<std::string> items;
        const char* diagnostics;
    } cases[] = {
        {"{ EVERYTHING; }", {lib_a, lib_b, lib_m, lib_r}, ""},
        {"{ b; a; }", {lib_b, lib_a}, ""},
        {"{ r, m }", {lib_r, lib_m}, ""},
        {"{ MENUS; VARIABLES; }", {lib_m, lib_a, lib_b}, ""},
        {"{ REFRESHS }", {lib_r}, ""},
        {"{ REFRESHES }", {}, "Could not import object with id REFRESHES\n"},
        {"{ a; nothere; b }", {lib_a, lib_b}, "Could not import object with id nothere\n"},
        {"{ COMMANDS; WAVEFORMS }", {}, ""},
        {"{ }", {}, ""},
        {"", {}, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.list);
        const ParseRun run = parse_text(std::string("MANUFACTURER 1\nIMPORT \"lib.ddl\" ") + c.list +
                                            "\nVARIABLE own { LABEL \"own\"; }\n",
                                        {root.str()});
        EXPECT_TRUE(run.ok);
        EXPECT_EQ(run.errors, 0);
        EXPECT_EQ(run.diagnostics, c.diagnostics);
        std::vector<std::string> expected = c.items;
        expected.push_back("VARIABLE own { LABEL \"own\"; }");
        EXPECT_EQ(summaries(run.description.items), expected);
    }
}

TEST(ImportList, PluralsOutsideTheTableFailOnStandardError) {
    TempDir root;
    root.write("lib.ddl", library);
    for (const char* word : {"GRIDS", "IMAGES"}) {
        SCOPED_TRACE(word);
        const ParseRun run = parse_text(std::string("MANUFACTURER 1\nVARIABLE kept { LABEL \"k\"; }\n"
                                                    "IMPORT \"lib.ddl\" { a;\n") +
                                            word + " }\nVARIABLE after { LABEL \"a\"; }\n",
                                        {root.str()});
        EXPECT_FALSE(run.ok);
        EXPECT_EQ(run.errors, 0);
        EXPECT_EQ(run.diagnostics, "");
        EXPECT_EQ(run.error_output,
                  "failure in parser: Not a valid item import id.(std::invalid_argument)\nposition: main.ddl(4)\n");
        EXPECT_EQ(names(run.description.items), (std::vector<std::string>{"kept"}));
    }
}

TEST(ImportRedefinitions, ChangeAndDeleteImportedItems) {
    TempDir root;
    root.write("lib.ddl", library);
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "IMPORT \"lib.ddl\" {\n"
        "  EVERYTHING;\n"
        "  REDEFINITIONS {\n"
        "    REDEFINE VARIABLE a { REDEFINE LABEL \"new a\"; DELETE HELP; }\n"
        "    VARIABLE b { HELP \"help b\"; }\n"
        "    DELETE MENU m;\n"
        "  }\n"
        "}\n",
        {root.str()});
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");
    EXPECT_EQ(summaries(run.description.items),
              (std::vector<std::string>{"VARIABLE a { LABEL \"new a\"; }",
                                        "VARIABLE b { HELP \"help b\"; LABEL \"lib b\"; }", lib_r}));
    // The redefined item keeps the position of its imported definition.
    EXPECT_EQ(position_of(run.description.items.get("a")), root.str() + "/lib.ddl(2)");
}

TEST(ImportRedefinitions, RedefineReplacesEvenAnAttributeThatOtherwiseAccumulates) {
    TempDir root;
    root.write("commands.ddl",
               "MANUFACTURER 1\n"
               "COMMAND c { NUMBER 1; TRANSACTION { REQUEST { } REPLY { x } } }\n"
               "COMMAND d { NUMBER 2; TRANSACTION { REQUEST { } REPLY { x } } }\n");
    const HartProfile hart;
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "IMPORT \"commands.ddl\" { EVERYTHING; REDEFINITIONS {\n"
        "  COMMAND c { REDEFINE TRANSACTION { REQUEST { } REPLY { y } } }\n"
        "  COMMAND d { TRANSACTION { REQUEST { } REPLY { y } } }\n"
        "} }\n",
        {root.str()}, hart);
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");

    const ParseRun written = parse_text(
        "MANUFACTURER 1\n"
        "COMMAND c { NUMBER 1; TRANSACTION { REQUEST { } REPLY { y } } }\n"
        "COMMAND d { NUMBER 2; TRANSACTION { REQUEST { } REPLY { x } } TRANSACTION { REQUEST { } REPLY { y } } }\n",
        {}, hart);
    ASSERT_TRUE(written.ok) << written.diagnostics;
    EXPECT_EQ(summaries(run.description.items), summaries(written.description.items));
}

TEST(ImportRedefinitions, MismatchesAreCountedAndParsingGoesOn) {
    TempDir root;
    root.write("lib.ddl", library);
    const struct {
        const char* entries;
        const char* message;
        std::vector<std::string> items;
    } cases[] = {
        {"REDEFINE VARIABLE zz { LABEL \"x\"; } DELETE VARIABLE b;", "Object being REDEFINEed is not in imported DD.",
         {lib_a, lib_m}},
        {"REDEFINE MENU a { LABEL \"x\"; } DELETE VARIABLE b;", "Object being REDEFINEed is not the type specified.",
         {lib_a, lib_m}},
        {"MENU b { LABEL \"x\"; } VARIABLE a { LABEL \"y\"; }", "Object being REDEFINEed is not the type specified.",
         {"VARIABLE a { HELP \"help a\"; LABEL \"y\"; }", lib_b, lib_m}},
        // Only the selected items can be redefined.
        {"REDEFINE REFRESH r { b : a }", "Object being REDEFINEed is not in imported DD.", {lib_a, lib_b, lib_m}},
        {"DELETE VARIABLE zz; DELETE MENU m;", "Object being DELETEed is not in imported DD.", {lib_a, lib_b}},
        {"DELETE MENU a; DELETE MENU m;", "Object being DELETEed is not the type specified.", {lib_a, lib_b}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.entries);
        const ParseRun run = parse_text(std::string("MANUFACTURER 1\n"
                                                    "IMPORT \"lib.ddl\" { a; b; MENUS REDEFINITIONS {\n") +
                                            c.entries + "\n} }\nVARIABLE after { LABEL \"after\"; }\n",
                                        {root.str()});
        EXPECT_FALSE(run.ok);
        EXPECT_EQ(run.errors, 1);
        EXPECT_EQ(run.diagnostics, std::string("main.ddl(3): error: ") + c.message + "\n");
        std::vector<std::string> expected = c.items;
        expected.push_back("VARIABLE after { LABEL \"after\"; }");
        EXPECT_EQ(summaries(run.description.items), expected);
    }

    const ParseRun bad = parse_text(
        "MANUFACTURER 1\nIMPORT \"lib.ddl\" { EVERYTHING; REDEFINITIONS {\nLABEL \"x\";\n} }\nVARIABLE after { }\n",
        {root.str()});
    EXPECT_FALSE(bad.ok);
    EXPECT_EQ(bad.errors, 1);
    EXPECT_EQ(bad.diagnostics, "main.ddl(3): error: Expected item redefinition or item deletion but got LABEL.\n");
    EXPECT_TRUE(bad.description.items.empty());
}

TEST(ImportCollision, FirstDefinitionStaysAndOnlyOwnDuplicatesCount) {
    TempDir root;
    root.write("lib.ddl", library);
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "VARIABLE b { LABEL \"main b\"; }\n"
        "IMPORT \"lib.ddl\" { EVERYTHING; }\n",
        {root.str()});
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.errors, 0);
    EXPECT_EQ(run.diagnostics, root.str() +
                                   "/lib.ddl(3) error: Duplicate definition of object b. Obejct was previusly defined "
                                   "at main.ddl(2). \n");
    EXPECT_EQ(summaries(run.description.items),
              (std::vector<std::string>{"VARIABLE b { LABEL \"main b\"; }", lib_a, lib_m, lib_r}));

    // A definition of the description itself after the import is its own duplicate.
    const ParseRun own = parse_text(
        "MANUFACTURER 1\n"
        "IMPORT \"lib.ddl\" { a; }\n"
        "VARIABLE a { LABEL \"main a\"; }\n",
        {root.str()});
    EXPECT_FALSE(own.ok);
    EXPECT_EQ(own.errors, 1);
    EXPECT_EQ(own.diagnostics, "main.ddl(3): error: Duplicate definition of Object \"a\" Object \"a\" is initialy "
                               "defined at " +
                                   root.str() + "/lib.ddl(2)\n\n");
    EXPECT_EQ(summaries(own.description.items), (std::vector<std::string>{lib_a}));
}

TEST(ImportedFileErrors, CountAndKeepWhatWasReadBeforeAFatalOne) {
    TempDir root;
    root.write("bad.ddl",
               "MANUFACTURER 1\n"
               "VARIABLE a { LABEL \"a\"; }\n"
               "VARIABLE a { LABEL \"again\"; }\n"
               "bogus\n"
               "VARIABLE c { LABEL \"c\"; }\n");
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "IMPORT \"bad.ddl\" { EVERYTHING; }\n"
        "VARIABLE after { LABEL \"after\"; }\n",
        {root.str()});
    EXPECT_FALSE(run.ok);
    EXPECT_EQ(run.errors, 2);
    const std::string bad = root.str() + "/bad.ddl";
    EXPECT_EQ(run.diagnostics, bad + "(3): error: Duplicate definition of Object \"a\" Object \"a\" is initialy defined at " +
                                   bad + "(2)\n\n" + bad + "(4): error: Expected edd object but got bogus.\n");
    EXPECT_EQ(summaries(run.description.items),
              (std::vector<std::string>{"VARIABLE a { LABEL \"a\"; }", "VARIABLE after { LABEL \"after\"; }"}));

    // Warnings of the imported file are counted as well.
    root.write("warn.ddl", "MANUFACTURER 1\nVARIABLE LABEL { HELP \"h\"; }\n");
    const ParseRun warned = parse_text("MANUFACTURER 1\nIMPORT \"warn.ddl\" { EVERYTHING; }\n", {root.str()});
    EXPECT_TRUE(warned.ok);
    EXPECT_EQ(warned.warnings, 1);
    EXPECT_EQ(warned.diagnostics, root.str() + "/warn.ddl(2): warning: LABEL is a reseved EDDL keyword.\n");
}

// The error of an import that leads back to a file being read: its position and its text up
// to the file name, which ends the line.
void expect_recursive_import(const std::string& diagnostics, const std::string& position, const std::string& file) {
    const std::string start = position + ": error: Recursive import of ";
    const std::string end = file + ".\n";
    EXPECT_EQ(diagnostics.substr(0, start.size()), start) << diagnostics;
    ASSERT_GE(diagnostics.size(), start.size() + end.size()) << diagnostics;
    EXPECT_EQ(diagnostics.substr(diagnostics.size() - end.size()), end) << diagnostics;
    EXPECT_EQ(diagnostics.find('\n'), diagnostics.size() - 1) << diagnostics;
}

TEST(ImportCycle, IsReportedOnceAndEnds) {
    TempDir root;
    root.write("self.ddl", "MANUFACTURER 1\nVARIABLE s { LABEL \"s\"; }\nIMPORT \"self.ddl\" { EVERYTHING; }\n");
    const ParseRun self = parse_text("MANUFACTURER 1\nIMPORT \"self.ddl\" { EVERYTHING; }\n", {root.str()});
    EXPECT_FALSE(self.ok);
    EXPECT_EQ(self.errors, 1);
    expect_recursive_import(self.diagnostics, root.str() + "/self.ddl(3)", "self.ddl");
    EXPECT_EQ(names(self.description.items), (std::vector<std::string>{"s"}));

    root.write("a.ddl", "MANUFACTURER 1\nIMPORT \"b.ddl\" { EVERYTHING; }\nVARIABLE va { LABEL \"a\"; }\n");
    root.write("b.ddl", "MANUFACTURER 1\nVARIABLE vb { LABEL \"b\"; }\nIMPORT \"a.ddl\" { EVERYTHING; }\n");
    const ParseRun loop = parse_text("MANUFACTURER 1\nIMPORT \"a.ddl\" { EVERYTHING; }\n", {root.str()});
    EXPECT_FALSE(loop.ok);
    EXPECT_EQ(loop.errors, 1);
    expect_recursive_import(loop.diagnostics, root.str() + "/b.ddl(3)", "a.ddl");
    EXPECT_EQ(names(loop.description.items), (std::vector<std::string>{"vb", "va"}));
}

TEST(ImportCycle, ImportingOneFileTwiceIsNoCycle) {
    TempDir root;
    root.write("lib.ddl", library);
    root.write("x.ddl", "MANUFACTURER 1\nIMPORT \"lib.ddl\" { a; }\n");
    root.write("y.ddl", "MANUFACTURER 1\nIMPORT \"lib.ddl\" { b; }\n");
    const ParseRun run = parse_text(
        "MANUFACTURER 1\nIMPORT \"x.ddl\" { EVERYTHING; }\nIMPORT \"y.ddl\" { EVERYTHING; }\n"
        "IMPORT \"lib.ddl\" { MENUS }\n",
        {root.str()});
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");
    EXPECT_EQ(summaries(run.description.items), (std::vector<std::string>{lib_a, lib_b, lib_m}));
}

}  // namespace
}  // namespace edd
