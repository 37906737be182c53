// LIKE items: the header forms, the resolving pass with base-first chains and the item's own
// attributes winning, and the reports for an undefined base and for a cycle of bases.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "import_helpers.hpp"
#include "validation/like_resolution.hpp"

namespace edd {
namespace {

using namespace import_test;

struct Resolved {
    Description description;
    std::string diagnostics;
};

Resolved resolve(const ParseRun& run) {
    std::ostringstream diagnostics;
    Resolved resolved{resolve_like_items(run.description, diagnostics), ""};
    resolved.diagnostics = diagnostics.str();
    return resolved;
}

std::vector<std::string> sorted_lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    std::ranges::sort(lines);
    return lines;
}

TEST(LikeResolution, OwnAttributesWinAndTheBaseSuppliesTheRest) {
    const ParseRun run = parse_text(
        "MANUFACTURER 7, DEVICE_TYPE 8\n"
        "y LIKE x { LABEL \"y\"; }\n"
        "VARIABLE x { LABEL \"x\"; HELP \"x help\"; CLASS CONTAINED; }\n"
        "w LIKE VARIABLE x { HELP \"w help\"; }\n"
        "MENU m { LABEL \"m\"; }\n"
        "e LIKE m { }\n");
    ASSERT_TRUE(run.ok) << run.diagnostics;
    // As parsed, a LIKE item records its base and nothing of it.
    EXPECT_EQ(summary(run.description.items.get("y")), " y LIKE x { LABEL \"y\"; }");
    EXPECT_EQ(run.description.items.get("w").parent(), "x");

    const Resolved resolved = resolve(run);
    EXPECT_EQ(resolved.diagnostics, "");
    EXPECT_EQ(summaries(resolved.description.items),
              (std::vector<std::string>{"VARIABLE y { CLASS CONTAINED; HELP \"x help\"; LABEL \"y\"; }",
                                        "VARIABLE x { CLASS CONTAINED; HELP \"x help\"; LABEL \"x\"; }",
                                        "VARIABLE w { CLASS CONTAINED; HELP \"w help\"; LABEL \"x\"; }",
                                        "MENU m { LABEL \"m\"; }", "MENU e { LABEL \"m\"; }"}));
    // The resolved item is still the one defined, where it was defined.
    EXPECT_EQ(position_of(resolved.description.items.get("y")), "main.ddl(2)");
    EXPECT_EQ(to_string(resolved.description.identification), to_string(run.description.identification));
}

TEST(LikeResolution, ChainsResolveTheirBasesFirst) {
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "c LIKE b { HELP \"c\"; }\n"
        "b LIKE VARIABLE a { LABEL \"b\"; }\n"
        "VARIABLE a { LABEL \"a\"; HELP \"a\"; CLASS CONTAINED; }\n"
        "d LIKE c { }\n");
    ASSERT_TRUE(run.ok) << run.diagnostics;
    const Resolved resolved = resolve(run);
    EXPECT_EQ(resolved.diagnostics, "");
    EXPECT_EQ(summaries(resolved.description.items),
              (std::vector<std::string>{"VARIABLE c { CLASS CONTAINED; HELP \"c\"; LABEL \"b\"; }",
                                        "VARIABLE b { CLASS CONTAINED; HELP \"a\"; LABEL \"b\"; }",
                                        "VARIABLE a { CLASS CONTAINED; HELP \"a\"; LABEL \"a\"; }",
                                        "VARIABLE d { CLASS CONTAINED; HELP \"c\"; LABEL \"b\"; }"}));
}

TEST(LikeResolution, UndefinedBaseIsReportedOnceAndTheItemStaysAsParsed) {
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "VARIABLE x { LABEL \"x\"; }\n"
        "\n"
        "y LIKE z { LABEL \"y\"; }\n"
        "t LIKE VARIABLE z { HELP \"t\"; }\n");
    ASSERT_TRUE(run.ok) << run.diagnostics;
    const Resolved resolved = resolve(run);
    EXPECT_EQ(resolved.diagnostics,
              "main.ddl(4)Error: z is not defined but is referenced in y LIKE \n"
              "main.ddl(5)Error: z is not defined but is referenced in t LIKE \n");
    // The item type written after LIKE is the item's own, base or no base.
    EXPECT_EQ(summaries(resolved.description.items),
              (std::vector<std::string>{"VARIABLE x { LABEL \"x\"; }", " y LIKE z { LABEL \"y\"; }",
                                        "VARIABLE t LIKE z { HELP \"t\"; }"}));
}

TEST(LikeResolution, CyclesAreReportedAndLeftUnresolved) {
    const ParseRun run = parse_text(
        "MANUFACTURER 1\n"
        "a LIKE b { LABEL \"a\"; }\n"
        "b LIKE a { HELP \"b\"; }\n"
        "s LIKE s { }\n"
        "VARIABLE v { LABEL \"v\"; }\n");
    ASSERT_TRUE(run.ok) << run.diagnostics;
    const Resolved resolved = resolve(run);
    EXPECT_EQ(sorted_lines(resolved.diagnostics),
              (std::vector<std::string>{"main.ddl(2)Error: LIKE cycle through a",
                                        "main.ddl(3)Error: LIKE cycle through b",
                                        "main.ddl(4)Error: LIKE cycle through s"}));
    EXPECT_EQ(summaries(resolved.description.items),
              (std::vector<std::string>{" a LIKE b { LABEL \"a\"; }", " b LIKE a { HELP \"b\"; }", " s LIKE s { }",
                                        "VARIABLE v { LABEL \"v\"; }"}));
}

}  // namespace
}  // namespace edd
