// The identification header: the value forms of its seven fields, EDD_REVISION sharing the
// DD revision, later entries winning, and the messages for malformed headers.
#include <gtest/gtest.h>

#include <string>

#include "import_helpers.hpp"
#include "model/identification.hpp"
#include "model/value.hpp"

namespace edd {
namespace {

using namespace import_test;

// "KIND text" of a field, or "unset".
std::string field(const ValuePtr& value) {
    if (!value.is_set()) return "unset";
    return to_string(value->kind()) + ' ' + value->to_string();
}

TEST(Identification, FieldsKeepTheirValueForms) {
    const ParseRun run = parse_text(
        "MANUFACTURER 0x1A, DEVICE_TYPE pressure_gauge, DEVICE_REVISION 0x10, DD_REVISION 2,\n"
        "EDD_PROFILE 0x0100, EDD_VERSION 3, MANUFACTURER_EXT \"acme\"\n");
    EXPECT_TRUE(run.ok);
    EXPECT_EQ(run.diagnostics, "");
    const Identification& id = run.description.identification;
    EXPECT_EQ(field(id.manufacturer), "INTEGER 0x1A");  // the token's text as written
    EXPECT_EQ(field(id.device_type), "IDENTIFIER pressure_gauge");
    EXPECT_EQ(field(id.device_revision), "INTEGER 16");  // read as a number, kept in decimal
    EXPECT_EQ(field(id.dd_revision), "INTEGER 2");
    EXPECT_EQ(field(id.edd_profile), "INTEGER 256");
    EXPECT_EQ(field(id.edd_version), "INTEGER 3");
    EXPECT_EQ(field(id.manufacturer_ext), "STRING \"acme\"");
    EXPECT_TRUE(run.description.items.empty());

    const ParseRun other = parse_text("DEVICE_TYPE 7, MANUFACTURER maker\nVARIABLE v { LABEL \"v\"; }\n");
    EXPECT_TRUE(other.ok);
    EXPECT_EQ(field(other.description.identification.manufacturer), "IDENTIFIER maker");
    EXPECT_EQ(field(other.description.identification.device_type), "INTEGER 7");
    EXPECT_EQ(field(other.description.identification.dd_revision), "unset");
    EXPECT_EQ(other.description.items.size(), 1u);
}

TEST(Identification, RepeatedFieldsKeepTheLaterValue) {
    const struct {
        const char* header;
        const char* dd_revision;
    } cases[] = {
        {"MANUFACTURER 1, DD_REVISION 4, EDD_REVISION 5", "INTEGER 5"},
        {"MANUFACTURER 1, EDD_REVISION 5, DD_REVISION 4", "INTEGER 4"},
        {"MANUFACTURER 1, DD_REVISION 4, DD_REVISION 6", "INTEGER 6"},
        {"MANUFACTURER 1, EDD_REVISION 9", "INTEGER 9"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.header);
        const ParseRun run = parse_text(c.header);
        EXPECT_TRUE(run.ok);
        EXPECT_EQ(field(run.description.identification.dd_revision), c.dd_revision);
    }
    const ParseRun twice = parse_text("MANUFACTURER 1, DEVICE_TYPE 2, MANUFACTURER other");
    EXPECT_EQ(field(twice.description.identification.manufacturer), "IDENTIFIER other");
}

TEST(Identification, MalformedHeadersAreReported) {
    const struct {
        const char* input;
        const char* diagnostics;
    } fatal_cases[] = {
        {"MANUFACTURER \"acme\"",
         "main.ddl(1): error: Value for MANUFACTURER must be an integer or identifiert. The value is acme.\n"},
        {"MANUFACTURER 1,\nDEVICE_TYPE 1.5",
         "main.ddl(2): error: Value for DEVICE_TYPE must be an integer or identifiert. The value is 1.5.\n"},
        {"MANUFACTURER 1, MANUFACTURER_EXT 12",
         "main.ddl(1): error: Expected string literal and got INTEGER(12).\n"},
        {"VARIABLE v { LABEL \"v\"; }", "main.ddl(1): error: Expected identification but got VARIABLE\n"},
        {"MANUFACTURER 1, DEVICE 2", "main.ddl(1): error: Expected identification but got DEVICE\n"},
        {"MANUFACTURER 1,", "main.ddl(1): error: Expected identification but got \n"},
        {"", "main.ddl(1): error: Expected identification but got \n"},
        {"\n// nothing here\n\n", "main.ddl(4): error: Expected identification but got \n"},
    };
    for (const auto& c : fatal_cases) {
        SCOPED_TRACE(c.input);
        const ParseRun run = parse_text(c.input);
        EXPECT_FALSE(run.ok);
        EXPECT_EQ(run.errors, 1);
        EXPECT_EQ(run.diagnostics, c.diagnostics);
        EXPECT_TRUE(run.description.items.empty());
    }

    // A revision that is no number is counted, read as 0, and the parse goes on.
    const ParseRun revision = parse_text("MANUFACTURER 1, DEVICE_REVISION x\nVARIABLE v { LABEL \"v\"; }\n");
    EXPECT_FALSE(revision.ok);
    EXPECT_EQ(revision.errors, 1);
    EXPECT_EQ(revision.diagnostics, "main.ddl(1): error: Expected integer\n");
    EXPECT_EQ(field(revision.description.identification.device_revision), "INTEGER 0");
    EXPECT_EQ(revision.description.items.size(), 1u);
}

}  // namespace
}  // namespace edd
