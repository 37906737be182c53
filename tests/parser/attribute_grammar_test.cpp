// The value grammars behind the attributes: type specifications, enumerators, menu items,
// purposes and roles, response codes, elements, members, transactions, waveforms, key
// points, method types and parameters, method code, actions and grid vectors, each with
// its conditional forms and its exact messages. Item bodies and the conditional template
// on their own are tested elsewhere; here they only carry the grammars.
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/type_value.hpp"
#include "parse_helpers.hpp"

namespace edd {
namespace {

using namespace parse_test;

// parse_test::shape() extended by the values these grammars build, so that the names of
// composed values and their parts are checked too:
//   composed value  name(part=value, ...)
//   type value      NAME(size)[ATTRIBUTE=value, ... | value, ...]   ("|" only with values)
//   data mask       17:text
//   method code     code{tokens separated by blanks}
// Everything else as shape() renders it; nesting of lists is kept as parsed.
std::string tree(const Value& value);

std::string tree(const ValuePtr& value) { return value.is_set() ? tree(*value) : std::string("unset"); }

std::string tree(const Value& value) {
    switch (value.kind()) {
    case ValueKind::COMPOSED: {
        const auto& composed = static_cast<const ComposedValue&>(value);
        std::string text = composed.name() + "(";
        bool first = true;
        for (const Attribute& part : composed.attributes()) {
            if (!first) text += ", ";
            first = false;
            text += part.name() + "=" + tree(part.value());
        }
        return text + ")";
    }
    case ValueKind::TYPE: {
        const auto& type = static_cast<const TypeValue&>(value);
        std::string text = type.name() + "(" + std::to_string(type.size()) + ")[";
        bool first = true;
        for (const Attribute& attribute : type.attributes()) {
            if (!first) text += ", ";
            first = false;
            text += attribute.name() + "=" + tree(attribute.value());
        }
        if (!type.values().empty()) text += "|";
        first = true;
        for (const ValuePtr& element : type.values()) {
            if (!first) text += ", ";
            first = false;
            text += tree(element);
        }
        return text + "]";
    }
    case ValueKind::DATA_MASK: return "17:" + value.to_string();
    case ValueKind::CODE: {
        std::string code = render_tokens(static_cast<const CodeValue&>(value).tokens(), true, true);
        if (!code.empty()) code.pop_back();
        return "code{" + code + "}";
    }
    case ValueKind::PARAMETER: return value.to_string();
    case ValueKind::VALUE_LIST: {
        const auto& list = static_cast<const ValueList&>(value);
        std::string text = list.name() + "{";
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (i != 0) text += ", ";
            text += tree(list.get(i));
        }
        return text + "}";
    }
    case ValueKind::IF_CONDITIONAL: {
        const auto& conditional = static_cast<const IfConditional&>(value);
        std::string text = "IF(" + tree(conditional.condition()) + "){" + tree(conditional.then_value()) + "}";
        if (conditional.has_else()) text += "ELSE{" + tree(conditional.else_value()) + "}";
        return text;
    }
    case ValueKind::SELECT_CONDITIONAL: {
        const auto& select = static_cast<const SelectConditional&>(value);
        std::string text = "SELECT(" + tree(select.selector()) + "){";
        for (std::size_t i = 0; i < select.case_count(); ++i) {
            if (i != 0) text += ' ';
            text += "CASE " + tree(select.case_at(i).label()) + ":" + tree(select.case_at(i).value());
        }
        if (select.has_default()) {
            if (select.case_count() != 0) text += ' ';
            text += "DEFAULT:" + tree(select.default_value());
        }
        return text + "}";
    }
    case ValueKind::REFERENCE: {
        const auto& reference = static_cast<const ReferenceValue&>(value);
        std::string text = "@" + reference.name();
        if (reference.has_argument()) text += "(" + tree(reference.argument()) + ")";
        return text;
    }
    case ValueKind::EXPRESSION: {
        const auto& expression = static_cast<const Expression&>(value);
        std::string text = "<";
        for (std::size_t i = 0; i < expression.part_count(); ++i) {
            if (i != 0) text += ' ';
            text += tree(expression.part(i));
        }
        return text + ">";
    }
    default: return shape(value);
    }
}

// One item definition on line 2 and the attribute whose value is checked.
struct Case {
    std::string source;
    std::string item;
    AttributeId attribute;
    std::string expected;     // tree() of the attribute
    std::string diagnostics;  // exact; empty when nothing may be printed
};

void run_cases(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const Parsed parsed = parse_body(c.source);
        EXPECT_EQ(parsed.diagnostics, c.diagnostics);
        ASSERT_TRUE(parsed.has_attribute(c.item, c.attribute)) << name_of(c.attribute);
        EXPECT_EQ(tree(parsed.attribute(c.item, c.attribute)), c.expected);
    }
}

// Sources whose parse ends or errs, with their exact diagnostics.
struct Failure {
    std::string source;
    std::string diagnostics;
};

void run_failures(const std::vector<Failure>& failures) {
    for (const Failure& f : failures) {
        SCOPED_TRACE(f.source);
        const Parsed parsed = parse_body(f.source);
        EXPECT_FALSE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, f.diagnostics);
    }
}

std::string variable_type(const std::string& type) { return "VARIABLE v { " + type + " }"; }

// ---- Type specifications ----------------------------------------------------------------

TEST(AttributeGrammarTypes, EveryTypeClassWithAndWithoutSize) {
    const std::vector<std::pair<std::string, std::string>> types = {
        {"TYPE INTEGER;", "INTEGER(0)[]"},
        {"TYPE UNSIGNED_INTEGER (2);", "UNSIGNED_INTEGER(2)[]"},
        {"TYPE DOUBLE;", "DOUBLE(0)[]"},
        {"TYPE FLOAT (4);", "FLOAT(4)[]"},
        {"TYPE ENUMERATED (1) { { 0, \"Off\" } }", "ENUMERATED(1)[|enumerator(value=0, description=\"Off\")]"},
        {"TYPE BIT_ENUMERATED { { 0x01, \"Low\" } }", "BIT_ENUMERATED(0)[|enumerator(value=0x01, description=\"Low\")]"},
        {"TYPE INDEX sensor_table;", "INDEX(0)[|@sensor_table]"},
        {"TYPE INDEX (1) sensor_table { DEFAULT_VALUE 0; }", "INDEX(1)[DEFAULT_VALUE=0|@sensor_table]"},
        {"TYPE ASCII (32);", "ASCII(32)[]"},
        {"TYPE BITSTRING (8);", "BITSTRING(8)[]"},
        {"TYPE EUC (16);", "EUC(16)[]"},
        {"TYPE PACKED_ASCII (8);", "PACKED_ASCII(8)[]"},
        {"TYPE PASSWORD (8);", "PASSWORD(8)[]"},
        {"TYPE VISIBLE (12);", "VISIBLE(12)[]"},
        {"TYPE OCTET (4);", "OCTET(4)[]"},
        {"TYPE DATE;", "DATE(0)[]"},
        {"TYPE DATE_AND_TIME;", "DATE_AND_TIME(0)[]"},
        {"TYPE DURATION (6);", "DURATION(6)[]"},
        {"TYPE TIME;", "TIME(0)[]"},
        {"TYPE TIME_VALUE (4);", "TIME_VALUE(4)[]"},
        {"TYPE OBJECT_REFERENCE;", "OBJECT_REFERENCE(0)[]"},
    };
    std::vector<Case> cases;
    for (const auto& [type, expected] : types)
        cases.push_back({variable_type(type), "v", AttributeId::TYPE, expected, ""});
    run_cases(cases);
}

TEST(AttributeGrammarTypes, ValueAttributesAndFormatsBecomeTypeAttributes) {
    run_cases({
        {variable_type("TYPE DOUBLE { MIN_VALUE -1.5; MAX_VALUE 1000.0; }"), "v", AttributeId::TYPE,
         "DOUBLE(0)[MAX_VALUE=1000.0, MIN_VALUE=<- 1.5>]", ""},
        {variable_type("TYPE FLOAT (4) { DEFAULT_VALUE 0.5; INITIAL_VALUE 1.0; DISPLAY_FORMAT \"6.2f\"; "
                       "EDIT_FORMAT \"6.2f\"; }"),
         "v", AttributeId::TYPE,
         "FLOAT(4)[DEFAULT_VALUE=0.5, DISPLAY_FORMAT=\"6.2f\", EDIT_FORMAT=\"6.2f\", INITIAL_VALUE=1.0]", ""},
        {variable_type("TYPE ASCII (32) { DEFAULT_VALUE \"none\"; }"), "v", AttributeId::TYPE,
         "ASCII(32)[DEFAULT_VALUE=\"none\"]", ""},
        // A repeated value attribute keeps the later value.
        {variable_type("TYPE INTEGER { MAX_VALUE 10; MAX_VALUE 20; }"), "v", AttributeId::TYPE,
         "INTEGER(0)[MAX_VALUE=20]", ""},
        // The value attributes are conditional values.
        {variable_type("TYPE FLOAT { MAX_VALUE IF (range == 1) { 100; } ELSE { 200; } "
                       "MIN_VALUE SELECT (range) { CASE 1: 0; DEFAULT: -10; } }"),
         "v", AttributeId::TYPE,
         "FLOAT(0)[MAX_VALUE=IF(<@range == 1>){100}ELSE{200}, "
         "MIN_VALUE=SELECT(@range){CASE 1:0 DEFAULT:<- 10>}]",
         ""},
        {variable_type("TYPE UNSIGNED_INTEGER (2) { DEFAULT_VALUE base + 4; }"), "v", AttributeId::TYPE,
         "UNSIGNED_INTEGER(2)[DEFAULT_VALUE=<@base + 4>]", ""},
        // A size that is no integer is reported and left at 0; the parse goes on.
        {variable_type("TYPE INTEGER (width); LABEL \"x\";"), "v", AttributeId::TYPE, "INTEGER(0)[]",
         error_line(2, "Expected integer")},
    });
}

TEST(AttributeGrammarTypes, EnumeratedBodyMixesValueAttributesAndEnumerators) {
    run_cases({
        {variable_type("TYPE ENUMERATED (1) { DEFAULT_VALUE 7; { 6, \"psi\" }, { 7, \"bar\" } INITIAL_VALUE 6; }"),
         "v", AttributeId::TYPE,
         "ENUMERATED(1)[DEFAULT_VALUE=7, INITIAL_VALUE=6|enumerator(value=6, description=\"psi\"), "
         "enumerator(value=7, description=\"bar\")]",
         ""},
        {variable_type("TYPE BIT_ENUMERATED (2) { MIN_VALUE 0; MAX_VALUE 0x03; { 0x01, \"A\" } }"), "v",
         AttributeId::TYPE,
         "BIT_ENUMERATED(2)[MAX_VALUE=0x03, MIN_VALUE=0|enumerator(value=0x01, description=\"A\")]", ""},
        {variable_type("TYPE ENUMERATED { DEFAULT_VALUE IF (sensor == 2) { 1; } ELSE { 0; } { 0, \"Off\" } }"), "v",
         AttributeId::TYPE,
         "ENUMERATED(0)[DEFAULT_VALUE=IF(<@sensor == 2>){1}ELSE{0}|enumerator(value=0, description=\"Off\")]", ""},
    });
}

TEST(AttributeGrammarTypes, SemicolonAfterTypeBodyIsOptional) {
    for (const std::string separator : {"", ";"}) {
        SCOPED_TRACE(separator);
        const Parsed parsed =
            parse_body("VARIABLE v { TYPE ENUMERATED { { 1, \"One\" } }" + separator + " LABEL \"Mode\"; }");
        EXPECT_TRUE(parsed.result);
        EXPECT_EQ(parsed.diagnostics, "");
        EXPECT_EQ(tree(parsed.attribute("v", AttributeId::TYPE)),
                  "ENUMERATED(0)[|enumerator(value=1, description=\"One\")]");
        EXPECT_EQ(tree(parsed.attribute("v", AttributeId::LABEL)), "\"Mode\"");
    }
}

TEST(AttributeGrammarTypes, Failures) {
    run_failures({
        // Not fatal and nothing consumed: the unknown word is then read as an attribute name.
        {variable_type("TYPE STRUCT;"),
         error_line(2, "Expected type specifier.") + error_line(2, "STRUCT is not a valid attribute id")},
        // After the type word comes ";" or a body.
        {variable_type("TYPE FLOAT"), error_line(2, "Expected { but got }")},
        // The indexed array is not optional.
        {variable_type("TYPE INDEX;"),
         error_line(2, "Expected identifier but got ;") + error_line(2, "Expected { but got }")},
        {variable_type("TYPE FLOAT (4 { }"), error_line(2, "Expected ) but got {")},
        // In an enumerated body only the four value attributes are words; the rest are enumerators.
        {variable_type("TYPE ENUMERATED { DISPLAY_FORMAT \"2d\"; { 0, \"Off\" } }"),
         error_line(2, "Expected { but got DISPLAY_FORMAT")},
    });
    const Parsed parsed = parse_body(variable_type("TYPE LABEL \"Pressure\";"));
    EXPECT_EQ(parsed.diagnostics, error_line(2, "Expected type specifier."));
    EXPECT_EQ(tree(parsed.attribute("v", AttributeId::LABEL)), "\"Pressure\"");
}

// ---- Enumerators --------------------------------------------------------------------------

std::string enumerated(const std::string& body) { return variable_type("TYPE BIT_ENUMERATED (1) { " + body + " }"); }

TEST(AttributeGrammarEnumerators, Parts) {
    const std::vector<std::pair<std::string, std::string>> enumerators = {
        {"{ 0x01, \"Low\" }", "enumerator(value=0x01, description=\"Low\")"},
        {"{ 0x02, [high], [high_help] }", "enumerator(value=0x02, description=[high], help=[high_help])"},
        {"{ 0x04, \"Out of range\" \" (upper)\", \"The value exceeds the sensor limit.\" }",
         "enumerator(value=0x04, description=\"Out of range (upper)\", help=\"The value exceeds the sensor limit.\")"},
        {"{ 0x08, \"Sensor fault\", \"Check the wiring.\", HARDWARE & ERROR, DIAGNOSTIC & DEVICE, reset_sensor }",
         "enumerator(value=0x08, description=\"Sensor fault\", help=\"Check the wiring.\", "
         "status_class={HARDWARE, ERROR}, function={DIAGNOSTIC, DEVICE}, action=@reset_sensor)"},
        {"{ 0x10, \"More status available\", MORE }", "enumerator(value=0x10, description=\"More status available\", "
                                                      "status_class=MORE)"},
        {"{ 0x20, \"Analog output fixed\", AO & MODE & DETAIL }",
         "enumerator(value=0x20, description=\"Analog output fixed\", status_class={AO, MODE, DETAIL})"},
        {"{ 0x40, \"Simulation\", SERVICE }", "enumerator(value=0x40, description=\"Simulation\", function=SERVICE)"},
        {"{ BASE + 1, \"Derived\" }", "enumerator(value=<@BASE + 1>, description=\"Derived\")"},
    };
    for (const auto& [enumerator, expected] : enumerators) {
        SCOPED_TRACE(enumerator);
        const Parsed parsed = parse_body(enumerated(enumerator));
        EXPECT_EQ(parsed.diagnostics, "");
        EXPECT_EQ(tree(parsed.attribute("v", AttributeId::TYPE)), "BIT_ENUMERATED(1)[|" + expected + "]");
    }
}

TEST(AttributeGrammarEnumerators, ConditionalLists) {
    run_cases({
        {enumerated("{ 0x01, \"A\" }, { 0x02, \"B\" } IF (rev >= 2) { { 0x04, \"C\" }, { 0x08, \"D\" } } "
                    "ELSE { { 0x04, \"Reserved\" } } { 0x80, \"H\" }"),
         "v", AttributeId::TYPE,
         "BIT_ENUMERATED(1)[|enumerator(value=0x01, description=\"A\"), enumerator(value=0x02, description=\"B\"), "
         "IF(<@rev >= 2>){{{enumerator(value=0x04, description=\"C\"), enumerator(value=0x08, description=\"D\")}}}"
         "ELSE{{enumerator(value=0x04, description=\"Reserved\")}}, "
         "enumerator(value=0x80, description=\"H\")]",
         ""},
        {enumerated("SELECT (model) { CASE 1: { 0x01, \"A\" } CASE 2, 3: { 0x01, \"B\" } "
                    "IF (rev > 1) { { 0x02, \"C\" } } DEFAULT: { 0x01, \"Z\" } }"),
         "v", AttributeId::TYPE,
         "BIT_ENUMERATED(1)[|SELECT(@model){CASE 1:{enumerator(value=0x01, description=\"A\")} "
         "CASE {2, 3}:{enumerator(value=0x01, description=\"B\"), "
         "IF(<@rev > 1>){{enumerator(value=0x02, description=\"C\")}}} "
         "DEFAULT:{enumerator(value=0x01, description=\"Z\")}}]",
         ""},
        {enumerated("{ 0x01, \"A\" }, { 0x02, \"B\" },"), "v", AttributeId::TYPE,
         "BIT_ENUMERATED(1)[|enumerator(value=0x01, description=\"A\"), enumerator(value=0x02, description=\"B\")]",
         warning_line(2, "Trailing comma in enumerator definition.")},
        // A comma before a conditional is a trailing one as well.
        {enumerated("{ 0x01, \"A\" }, IF (x) { { 0x02, \"B\" } }"), "v", AttributeId::TYPE,
         "BIT_ENUMERATED(1)[|enumerator(value=0x01, description=\"A\"), "
         "IF(@x){{enumerator(value=0x02, description=\"B\")}}]",
         warning_line(2, "Trailing comma in enumerator definition.")},
    });
}

TEST(AttributeGrammarEnumerators, Failures) {
    run_failures({
        {enumerated("{ 0x01, \"A\", 5 }"), error_line(2, "Error in reading enumerator.")},
        {enumerated("{ 0x01, \"A\", \"help\", \"more help\" }"), error_line(2, "Error in reading enumerator.")},
        {enumerated("{ 0x01 }"), error_line(2, "Expected , but got }")},
        {enumerated("{ 0x01, 2 }"), error_line(2, "Expected string but got 2")},
        {enumerated("{ 0x01, \"A\", HARDWARE & BOLD }"),
         error_line(2, "Expected keywords ALL, AO, BAD, COMM, COMM_ERROR, CORRECTABLE, DATA, DETAIL, DV, ERROR, EVENT, "
                       "HARDWARE, IGNORE_IN_HANDHELD, IGNORE_IN_HOST, IGNORE_IN_TEMPORARY_MASTER, INFO, MISC, MODE, "
                       "MORE, PROCESS, SELF_CORRECTING, SOFTWARE, STATE, SUMMARY, TV, UNCORRECTABLE, WARNING but "
                       "got: BOLD.")},
    });
}

// ---- Menus --------------------------------------------------------------------------------

std::string menu(const std::string& body) { return "MENU m { LABEL \"Setup\"; " + body + " }"; }

TEST(AttributeGrammarMenus, ItemsLayoutWordsStringsAndQualifiers) {
    run_cases({
        {menu("ITEMS { pressure (READ_ONLY), unit (DISPLAY_VALUE, NO_LABEL), \"Limits\", [range_heading], "
              "SEPARATOR, low, COLUMNBREAK, high (REVIEW & INLINE & HIDDEN & NO_UNIT), ROWBREAK, "
              "sensor.serial_number, limits[2] }"),
         "m", AttributeId::ITEMS,
         "{{item(item_reference=@pressure, qualifiers={READ_ONLY}), "
         "item(item_reference=@unit, qualifiers={DISPLAY_VALUE, NO_LABEL}), item(item_reference=\"Limits\"), "
         "item(item_reference=[range_heading]), item(item_reference=SEPARATOR), item(item_reference=@low), "
         "item(item_reference=COLUMNBREAK), "
         "item(item_reference=@high, qualifiers={REVIEW, INLINE, HIDDEN, NO_UNIT}), item(item_reference=ROWBREAK), "
         "item(item_reference=@sensor.serial_number), item(item_reference=@limits[2](2))}}",
         ""},
        // One item is not wrapped in a list of its own.
        {menu("ITEMS { device_setup }"), "m", AttributeId::ITEMS, "{item(item_reference=@device_setup)}", ""},
        {menu("ITEMS { a IF (expert == 1) { b, c (READ_ONLY) } ELSE { d } "
              "SELECT (mode) { CASE 1: e CASE 2: f, SEPARATOR, g DEFAULT: \"None\" } h }"),
         "m", AttributeId::ITEMS,
         "{item(item_reference=@a), "
         "IF(<@expert == 1>){{{item(item_reference=@b), item(item_reference=@c, qualifiers={READ_ONLY})}}}"
         "ELSE{{item(item_reference=@d)}}, "
         "SELECT(@mode){CASE 1:{item(item_reference=@e)} "
         "CASE 2:{{item(item_reference=@f), item(item_reference=SEPARATOR), item(item_reference=@g)}} "
         "DEFAULT:{item(item_reference=\"None\")}}, item(item_reference=@h)}",
         ""},
        {menu("ITEMS { a, b, }"), "m", AttributeId::ITEMS, "{{item(item_reference=@a), item(item_reference=@b)}}",
         warning_line(2, "Trailing comma in ITEMS.")},
        // A comma before a conditional is a trailing one as well.
        {menu("ITEMS { a, IF (x) { b } }"), "m", AttributeId::ITEMS,
         "{{item(item_reference=@a)}, IF(@x){{item(item_reference=@b)}}}",
         warning_line(2, "Trailing comma in ITEMS.")},
        // An unknown qualifier is reported and the parse goes on.
        {menu("ITEMS { a (READ_ONLY, BOLD) } HELP \"h\";"), "m", AttributeId::HELP, "\"h\"",
         error_line(2, "Expected menu item qualifier.")},
    });
}

TEST(AttributeGrammarMenus, Failures) {
    run_failures({
        {menu("ITEMS { a, 5 }"), error_line(2, "Expected reference or keyword but got 5.")},
        {menu("ITEMS { a, (READ_ONLY) }"), error_line(2, "Expected reference or keyword but got (.")},
        {menu("ITEMS { a (READ_ONLY NO_LABEL) }"), error_line(2, "Expected ) but got NO_LABEL")},
        {menu("ITEMS { a (BOLD) }"), error_line(2, "Expected menu item qualifier.")},
    });
}

TEST(AttributeGrammarMenus, PurposeAndRole) {
    run_cases({
        {menu("PURPOSE CATALOG, MENU, TABLE;"), "m", AttributeId::PURPOSE, "{CATALOG, MENU, TABLE}", ""},
        {"VARIABLE v { TYPE FLOAT; PURPOSE PROCESS_VALUE; }", "v", AttributeId::PURPOSE, "PROCESS_VALUE", ""},
        {menu("PURPOSE IF (simulation_active) { SIMULATION } ELSE { DIAGNOSE, LOAD_TO_DEVICE }"), "m",
         AttributeId::PURPOSE, "IF(@simulation_active){SIMULATION}ELSE{{DIAGNOSE, LOAD_TO_DEVICE}}", ""},
        {menu("PURPOSE SELECT (level) { CASE 1: CATALOG DEFAULT: LOAD_TO_APPLICATION }"), "m",
         AttributeId::PURPOSE, "SELECT(@level){CASE 1:CATALOG DEFAULT:LOAD_TO_APPLICATION}", ""},
        {menu("PURPOSE CATALOG,"), "m", AttributeId::PURPOSE, "{CATALOG}", warning_line(2, "Stray ,")},
        {menu("ROLE maintenance, SERVICE;"), "m", AttributeId::ROLE, "{maintenance, SERVICE}", ""},
        {menu("ROLE IF (x) { operating } ELSE { expert, service }"), "m", AttributeId::ROLE,
         "IF(@x){operating}ELSE{{expert, service}}", ""},
    });
    run_failures({
        {menu("PURPOSE CATALOG, DISPLAY;"),
         error_line(2, "Expected keywords CATALOG, DIAGNOSE, LOAD_TO_APPLICATION, LOAD_TO_DEVICE, MENU, "
                       "PROCESS_VALUE, SIMULATION, TABLE but got: DISPLAY.")},
    });
}

// ---- Response codes, elements, members -----------------------------------------------------

TEST(AttributeGrammarResponseCodes, EntriesConditionalsAndReferences) {
    run_cases({
        {"COMMAND c { RESPONSE_CODES { 0, SUCCESS, \"No command-specific errors\"; "
         "2, DATA_ENTRY_ERROR, \"Invalid selection\", \"The code is not supported.\"; "
         "IF (rev >= 7) { 16, MODE_ERROR, [access_restricted]; } "
         "SELECT (x) { CASE 1: 32, MISC_WARNING, \"Busy\"; DEFAULT: 33, PROCESS_ERROR, \"P\"; } } }",
         "c", AttributeId::RESPONSE_CODES,
         "{response_code(value=0, type=SUCCESS, description=\"No command-specific errors\"), "
         "response_code(value=2, type=DATA_ENTRY_ERROR, description=\"Invalid selection\", "
         "help=\"The code is not supported.\"), "
         "IF(<@rev >= 7>){{response_code(value=16, type=MODE_ERROR, description=[access_restricted])}}, "
         "SELECT(@x){CASE 1:{response_code(value=32, type=MISC_WARNING, description=\"Busy\")} "
         "DEFAULT:{response_code(value=33, type=PROCESS_ERROR, description=\"P\")}}}",
         ""},
        {"COMMAND c { RESPONSE_CODES shared_codes; }", "c", AttributeId::RESPONSE_CODES, "@shared_codes", ""},
        {"VARIABLE v { TYPE FLOAT; RESPONSE_CODES { 8, DATA_ENTRY_WARNING, \"Set to nearest value\"; } }", "v",
         AttributeId::RESPONSE_CODES,
         "{response_code(value=8, type=DATA_ENTRY_WARNING, description=\"Set to nearest value\")}", ""},
        // The item form collects its entries one by one: a single entry stays alone.
        {"RESPONSE_CODES one { 0, SUCCESS, \"ok\"; }", "one", AttributeId::response_code,
         "response_code(value=0, type=SUCCESS, description=\"ok\")", ""},
        {"RESPONSE_CODES shared { 0, SUCCESS, \"ok\"; 6, MISC_ERROR, \"Device-specific error\"; "
         "IF (x) { 9, PROCESS_ERROR, \"p\"; } ELSE { 9, MISC_WARNING, \"w\"; } }",
         "shared", AttributeId::response_code,
         "{response_code(value=0, type=SUCCESS, description=\"ok\"), "
         "response_code(value=6, type=MISC_ERROR, description=\"Device-specific error\"), "
         "IF(@x){{response_code(value=9, type=PROCESS_ERROR, description=\"p\")}}"
         "ELSE{{response_code(value=9, type=MISC_WARNING, description=\"w\")}}}",
         ""},
    });
    run_failures({
        {"COMMAND c { RESPONSE_CODES { 1, WARNING, \"x\"; } }",
         error_line(2, "Expected keywords DATA_ENTRY_ERROR, DATA_ENTRY_WARNING, MISC_ERROR, MISC_WARNING, MODE_ERROR, "
                       "PROCESS_ERROR, SUCCESS but got: WARNING.")},
        {"COMMAND c { RESPONSE_CODES { 1, SUCCESS, \"x\" } }", error_line(2, "Expected ; but got }")},
        {"COMMAND c { RESPONSE_CODES { 1, SUCCESS; } }", error_line(2, "Expected , but got ;")},
    });
}

TEST(AttributeGrammarCollections, ElementsAndMembers) {
    run_cases({
        {"ITEM_ARRAY sensors { ELEMENTS { 0, sensor_1, \"Sensor 1\"; 1, sensor_2, [sensor_2], [sensor_2_help]; "
         "IF (channels > 2) { 2, sensor_3, \"Sensor 3\"; } } }",
         "sensors", AttributeId::ELEMENTS,
         "{element(element_index=0, element_reference=@sensor_1, description=\"Sensor 1\"), "
         "element(element_index=1, element_reference=@sensor_2, description=[sensor_2], help=[sensor_2_help]), "
         "IF(<@channels > 2>){{element(element_index=2, element_reference=@sensor_3, description=\"Sensor 3\")}}}",
         ""},
        {"COLLECTION OF VARIABLE pv { MEMBERS { DIGITAL_VALUE, pv_value, \"Value\", \"Process value\"; "
         "DIGITAL_UNITS, pv_unit, [unit]; RANGE, ranges[0]; "
         "SELECT (kind) { CASE 1: STATUS, pv_status; DEFAULT: STATUS, pv_status_alt, \"Status\"; } } }",
         "pv", AttributeId::MEMBERS,
         "{member(member_identifier=DIGITAL_VALUE, member_reference=@pv_value, description=\"Value\", "
         "help=\"Process value\"), "
         "member(member_identifier=DIGITAL_UNITS, member_reference=@pv_unit, description=[unit]), "
         "member(member_identifier=RANGE, member_reference=@ranges[0](0)), "
         "SELECT(@kind){CASE 1:{member(member_identifier=STATUS, member_reference=@pv_status)} "
         "DEFAULT:{member(member_identifier=STATUS, member_reference=@pv_status_alt, description=\"Status\")}}}",
         ""},
        // Member names are read with the reserved-word warning.
        {"RECORD r { MEMBERS { LABEL, label_text; } }", "r", AttributeId::MEMBERS,
         "{member(member_identifier=LABEL, member_reference=@label_text)}",
         warning_line(2, "LABEL is a reseved EDDL keyword.")},
    });
    run_failures({
        {"COLLECTION c { MEMBERS { A a; } }", error_line(2, "Expected , but got a")},
        {"COLLECTION c { MEMBERS { A, a } }", error_line(2, "Expected ; but got }")},
        {"ITEM_ARRAY i { ELEMENTS { 0 a; } }", error_line(2, "Expected , but got a")},
    });
}

// ---- Transactions ----------------------------------------------------------------------------

TEST(AttributeGrammarTransactions, DataItemsMasksAndQualifiers) {
    run_cases({
        {"COMMAND c { NUMBER 48; OPERATION READ; TRANSACTION { REQUEST { } REPLY { response_code, device_status, "
         "status_0 <0x0F>, status_0 <0xF0> (INFO), table_index (INDEX), pv (INFO & INDEX, INFO), 0x05, "
         "sensors[1].value } } }",
         "c", AttributeId::TRANSACTION,
         "(REQUEST={}, REPLY={data_item(data_item_reference=@response_code), "
         "data_item(data_item_reference=@device_status), data_item(data_item_reference=@status_0, mask=17:0x0F), "
         "data_item(data_item_reference=@status_0, mask=17:0xF0, qualifiers={INFO}), "
         "data_item(data_item_reference=@table_index, qualifiers={INDEX}), "
         "data_item(data_item_reference=@pv, qualifiers={{INFO, INDEX}, INFO}), data_item(data_item_reference=0x05), "
         "data_item(data_item_reference=@sensors[1].value(1))})",
         ""},
        {"COMMAND c { TRANSACTION 1 { REQUEST { selector } REPLY { selector, value } "
         "RESPONSE_CODES { 0, SUCCESS, \"ok\"; } } }",
         "c", AttributeId::TRANSACTION,
         "(number=1, REQUEST={data_item(data_item_reference=@selector)}, "
         "REPLY={data_item(data_item_reference=@selector), data_item(data_item_reference=@value)}, "
         "RESPONSE_CODES={response_code(value=0, type=SUCCESS, description=\"ok\")})",
         ""},
        {"COMMAND c { TRANSACTION { REQUEST { } REPLY { } RESPONSE_CODES common_codes; } }", "c",
         AttributeId::TRANSACTION, "(REQUEST={}, REPLY={}, RESPONSE_CODES=@common_codes)", ""},
        {"COMMAND c { TRANSACTION { REQUEST { code IF (code == 2) { extra <0x7F>, more } ELSE { filler } } "
         "REPLY { SELECT (code) { CASE 1: a CASE 2: b, c DEFAULT: d } IF (x) { e } } } }",
         "c", AttributeId::TRANSACTION,
         "(REQUEST={data_item(data_item_reference=@code), "
         "IF(<@code == 2>){{data_item(data_item_reference=@extra, mask=17:0x7F), data_item(data_item_reference=@more)}}"
         "ELSE{{data_item(data_item_reference=@filler)}}}, "
         "REPLY={SELECT(@code){CASE 1:{data_item(data_item_reference=@a)} "
         "CASE 2:{data_item(data_item_reference=@b), data_item(data_item_reference=@c)} "
         "DEFAULT:{data_item(data_item_reference=@d)}}, IF(@x){{data_item(data_item_reference=@e)}}})",
         ""},
        // A mask that is no integer is reported; the data item keeps no mask and the parse goes on.
        {"COMMAND c { TRANSACTION { REQUEST { } REPLY { status <mask>, pv } } }", "c", AttributeId::TRANSACTION,
         "(REQUEST={}, REPLY={data_item(data_item_reference=@status), data_item(data_item_reference=@pv)})",
         error_line(2, "Expected integer but got mask")},
    });
}

TEST(AttributeGrammarTransactions, RepeatedTransactionsAccumulateInOrder) {
    const Parsed parsed = parse_body(
        "COMMAND c {\n"
        "  TRANSACTION 0 { REQUEST { } REPLY { a } }\n"
        "  TRANSACTION 1 { REQUEST { b } REPLY { b } }\n"
        "  TRANSACTION 2 { REQUEST { c } REPLY { c } }\n"
        "}");
    EXPECT_EQ(parsed.diagnostics, "");
    EXPECT_EQ(tree(parsed.attribute("c", AttributeId::TRANSACTION)),
              "{(number=0, REQUEST={}, REPLY={data_item(data_item_reference=@a)}), "
              "(number=1, REQUEST={data_item(data_item_reference=@b)}, REPLY={data_item(data_item_reference=@b)}), "
              "(number=2, REQUEST={data_item(data_item_reference=@c)}, REPLY={data_item(data_item_reference=@c)})}");
}

TEST(AttributeGrammarTransactions, Failures) {
    run_failures({
        {"COMMAND c { TRANSACTION { REPLY { a } } }", error_line(2, "Expected REQUEST but got REPLY")},
        {"COMMAND c { TRANSACTION { REQUEST { a } } }", error_line(2, "Expected REPLY but got }")},
        {"COMMAND c { TRANSACTION x { REQUEST { } REPLY { } } }", error_line(2, "Expected { but got x")},
        {"COMMAND c { TRANSACTION { REQUEST { a (info) } REPLY { } } }", error_line(2, "Expected keyword but got info")},
        {"COMMAND c { TRANSACTION { REQUEST { a <0x0F } REPLY { } } }", error_line(2, "Expected > but got }")},
    });
}

// ---- Waveforms and key points -----------------------------------------------------------------

std::string waveform(const std::string& body) { return "WAVEFORM w { LABEL \"Trend\"; " + body + " }"; }

TEST(AttributeGrammarWaveforms, EachTypeWithItsBody) {
    run_cases({
        {waveform("TYPE YT { X_INITIAL 0; X_INCREMENT 0.5; NUMBER_OF_POINTS 64; Y_VALUES { trend_samples } }"), "w",
         AttributeId::TYPE, "YT(0)[NUMBER_OF_POINTS=64, X_INCREMENT=0.5, X_INITIAL=0, Y_VALUES=@trend_samples]", ""},
        {waveform("TYPE YT { X_INCREMENT IF (fast) { 0.1; } ELSE { 1.0; } Y_VALUES { s0, s1, s2 } }"), "w",
         AttributeId::TYPE, "YT(0)[X_INCREMENT=IF(@fast){0.1}ELSE{1.0}, Y_VALUES={@s0, @s1, @s2}]", ""},
        {waveform("TYPE XY { NUMBER_OF_POINTS 3; X_VALUES { -10, 0, 2.5 } Y_VALUES { y_low, y_mid, -0.5 } }"), "w",
         AttributeId::TYPE,
         "XY(0)[NUMBER_OF_POINTS=3, X_VALUES={-10, 0, 2.5}, Y_VALUES={@y_low, @y_mid, -0.5}]", ""},
        {waveform("TYPE HORIZONTAL { Y_VALUES { upper_limit } };"), "w", AttributeId::TYPE,
         "HORIZONTAL(0)[Y_VALUES=@upper_limit]", ""},
        {waveform("TYPE VERTICAL { X_VALUES { 4.0, 20.0 } }"), "w", AttributeId::TYPE,
         "VERTICAL(0)[X_VALUES={4.0, 20.0}]", ""},
        {waveform("TYPE YT { Y_VALUES { 1, 2, } }"), "w", AttributeId::TYPE, "YT(0)[Y_VALUES={1, 2}]",
         warning_line(2, "Stray ,")},
        {waveform("TYPE XY { X_VALUES { 0 } Y_VALUES { 1 } } KEY_POINTS { X_VALUES { 0, 100 } Y_VALUES { kp } }"),
         "w", AttributeId::KEY_POINTS, "(X_VALUES={0, 100}, Y_VALUES=@kp)", ""},
    });
}

TEST(AttributeGrammarWaveforms, Failures) {
    run_failures({
        {waveform("TYPE LINE { }"), error_line(2, "Expected YT, XY, HORIZONTAL or VERTICAL but got LINE.")},
        {waveform("TYPE YT { X_VALUES { 1 } }"),
         error_line(2, "Expected X_INITIAL, X_INCREMENT, NUMBER_OF_POINTS or Y_VALUES but got X_VALUES.")},
        // The XY message names no offending word.
        {waveform("TYPE XY { X_INITIAL 0; }"), error_line(2, "Expected NUMBER_OF_POINTS, X_VALUES or Y_VALUES but got .")},
        {waveform("TYPE HORIZONTAL { X_VALUES { 1 } }"), error_line(2, "Expected Y_VALUES but got X_VALUES")},
        {waveform("TYPE VERTICAL { }"), error_line(2, "Expected X_VALUES but got }")},
        {waveform("TYPE YT { Y_VALUES { 1, \"two\" } }"),
         error_line(2, "Expected reference, integer or float but got two.")},
        {waveform("TYPE YT { Y_VALUES { [points] } }"), error_line(2, "Expected reference, integer or float but got [.")},
        {waveform("KEY_POINTS { Z_VALUES { 1 } }"), error_line(2, "Expected X_VALUES or Y_VALUES but got Z_VALUES.")},
    });
}

// ---- Methods ------------------------------------------------------------------------------------

TEST(AttributeGrammarMethods, ReturnTypes) {
    const std::vector<std::pair<std::string, std::string>> types = {
        {"char", "char"},
        {"int", "int"},
        {"long", "long"},
        {"float", "float"},
        {"double", "double"},
        {"unsigned char", "unsigned_char"},
        {"unsigned int", "unsigned_int"},
        {"unsigned long", "unsigned_long"},
        {"unsigned unsigned", "unsigned_unsigned"},
    };
    std::vector<Case> cases;
    for (const auto& [type, expected] : types)
        cases.push_back({"METHOD m { TYPE " + type + "; DEFINITION { } }", "m", AttributeId::TYPE, expected, ""});
    run_cases(cases);
    run_failures({
        {"METHOD m { TYPE void; }",
         error_line(2, "Expected keywords char, double, float, int, long, unsigned but got: void.")},
        {"METHOD m { TYPE unsigned DD_STRING; }",
         error_line(2, "Expected keywords char, double, float, int, long, unsigned but got: DD_STRING.")},
        {"METHOD m { TYPE int }", error_line(2, "Expected ; but got }")},
    });
}

TEST(AttributeGrammarMethods, Parameters) {
    run_cases({
        {"METHOD m (int count, unsigned char flags, float &result, DD_STRING text, DD_ITEM item, unsigned long big, "
         "double &value, char c, long l, unsigned u, unsigned int &ui) { DEFINITION { } }",
         "m", AttributeId::method_parameters,
         "{int count, unsigned char flags, float& result, DD_STRING text, DD_ITEM item, unsigned long big, "
         "double& value, char c, long l, unsigned int u, unsigned int& ui}",
         ""},
        {"METHOD m (DD_ITEM item) { DEFINITION { } }", "m", AttributeId::method_parameters, "DD_ITEM item", ""},
    });
    const Parsed empty = parse_body("METHOD m () { DEFINITION { } }");
    EXPECT_EQ(empty.diagnostics, "");
    EXPECT_FALSE(empty.has_attribute("m", AttributeId::method_parameters));

    run_failures({
        {"METHOD m (unsigned float f) { DEFINITION { } }",
         error_line(2, "The parameter of type 'float' can not be unsigned.")},
        {"METHOD m (int a, unsigned double d) { DEFINITION { } }",
         error_line(2, "The parameter of type 'double' can not be unsigned.")},
        {"METHOD m (unsigned DD_STRING s) { DEFINITION { } }",
         error_line(2, "The parameter of type 'DD_STRING' can not be unsigned.")},
        {"METHOD m (unsigned DD_ITEM i) { DEFINITION { } }",
         error_line(2, "The parameter of type 'DD_ITEM' can not be unsigned.")},
        {"METHOD m (bool flag) { DEFINITION { } }", error_line(2, "Unknown parameter type bool.")},
    });
}

TEST(AttributeGrammarMethods, DefinitionKeepsTheCodeWithNestedBraces) {
    run_cases({
        {"METHOD m { DEFINITION { int i; for (i = 0; i < 3; i++) { if (i == 1) { ACKNOWLEDGE(\"one {\"); } } } "
         "LABEL \"M\"; }",
         "m", AttributeId::DEFINITION,
         "code{int i ; for ( i = 0 ; i < 3 ; i ++ ) { if ( i == 1 ) { ACKNOWLEDGE ( \"one {\" ) ; } }}", ""},
        {"METHOD m { DEFINITION { } }", "m", AttributeId::DEFINITION, "code{}", ""},
    });
    run_failures({
        {"METHOD m { DEFINITION { if (x) { y = 1; }\n", error_line(3, "Expected } but got ")},
        {"METHOD m { DEFINITION x; }", error_line(2, "Expected { but got x")},
    });
}

// ---- Actions and vectors ----------------------------------------------------------------------

TEST(AttributeGrammarActions, TheNineActionAttributes) {
    const Parsed variable = parse_body(
        "VARIABLE v { TYPE FLOAT; PRE_EDIT_ACTIONS { check_range } POST_EDIT_ACTIONS { update_units, recalc } "
        "PRE_READ_ACTIONS { DEFINITION { x = 1; } } POST_READ_ACTIONS { { y = \"}\"; } } "
        "PRE_WRITE_ACTIONS { confirm, DEFINITION { z = 3; } } "
        "POST_WRITE_ACTIONS { IF (mode == 1) { convert } ELSE { { w = 0; } } } "
        "REFRESH_ACTIONS { SELECT (mode) { CASE 1: a, b DEFAULT: c } } }");
    EXPECT_EQ(variable.diagnostics, "");
    const std::pair<AttributeId, std::string> expected[] = {
        {AttributeId::PRE_EDIT_ACTIONS, "{@check_range}"},
        {AttributeId::POST_EDIT_ACTIONS, "{{@update_units, @recalc}}"},
        {AttributeId::PRE_READ_ACTIONS, "{code{x = 1 ;}}"},
        {AttributeId::POST_READ_ACTIONS, "{code{y = \"}\" ;}}"},
        {AttributeId::PRE_WRITE_ACTIONS, "{{@confirm, code{z = 3 ;}}}"},
        {AttributeId::POST_WRITE_ACTIONS, "{IF(<@mode == 1>){{@convert}}ELSE{{code{w = 0 ;}}}}"},
        {AttributeId::REFRESH_ACTIONS, "{SELECT(@mode){CASE 1:{{@a, @b}} DEFAULT:{@c}}}"},
    };
    for (const auto& [id, shape_text] : expected) {
        SCOPED_TRACE(name_of(id));
        ASSERT_TRUE(variable.has_attribute("v", id));
        EXPECT_EQ(tree(variable.attribute("v", id)), shape_text);
    }
    run_cases({
        {waveform("TYPE YT { Y_VALUES { s } } INIT_ACTIONS { start_trend }"), "w", AttributeId::INIT_ACTIONS,
         "{@start_trend}", ""},
        {waveform("TYPE YT { Y_VALUES { s } } EXIT_ACTIONS { stop_trend, DEFINITION { t = 0; } }"), "w",
         AttributeId::EXIT_ACTIONS, "{{@stop_trend, code{t = 0 ;}}}", ""},
        {menu("ITEMS { a } POST_EDIT_ACTIONS { IF (x) { a } ELSE { } }"), "m", AttributeId::POST_EDIT_ACTIONS,
         "{IF(@x){{@a}}ELSE{null}}", warning_line(2, "Empty ELSE clause.")},
        // No action starts with ";": the branch ends there and the semicolon is a trailing one.
        {menu("ITEMS { a } POST_EDIT_ACTIONS { IF (x) { refresh; } }"), "m", AttributeId::POST_EDIT_ACTIONS,
         "{IF(@x){{@refresh}}}", warning_line(2, "Trailing semicolon.")},
    });
}

TEST(AttributeGrammarGrids, Vectors) {
    run_cases({
        {"GRID g { VECTORS { { \"Temperature\", t1, t2 }, { [pressure], p1, 2.5 } "
         "IF (flow_installed) { { \"Flow\", f1 } } } }",
         "g", AttributeId::VECTORS,
         "{{vector{\"Temperature\", @t1, @t2}, vector{[pressure], @p1, 2.5}}, "
         "IF(@flow_installed){{vector{\"Flow\", @f1}}}}",
         ""},
        {"GRID g { VECTORS { { \"Level\", level_a }, } }", "g", AttributeId::VECTORS,
         "{{vector{\"Level\", @level_a}}}", warning_line(2, "Stray ,")},
    });
    run_failures({
        {"GRID g { VECTORS { { 1, 2 } } }", error_line(2, "Expected string but got 1")},
    });
}

}  // namespace
}  // namespace edd
