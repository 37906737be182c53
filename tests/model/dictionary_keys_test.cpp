// Which dictionary keys a value reports as used: references in branches and containers,
// not in IF conditions, CASE labels or reference arguments, and the scan of method code.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/attribute.hpp"
#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/conditionals.hpp"
#include "model/expression.hpp"
#include "model/item.hpp"
#include "model/parameter_value.hpp"
#include "model/reference_value.hpp"
#include "model/type_value.hpp"
#include "model_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;

KeySet keys_of(const Value& value) {
    KeySet keys;
    value.collect_dictionary_keys(keys);
    return keys;
}

ValuePtr reference_to(std::string name, const ValuePtr& argument) {
    auto value = make_value<ReferenceValue>(std::move(name));
    static_cast<ReferenceValue&>(*value).set_argument(argument);
    return value;
}

ValuePtr if_value(const ValuePtr& condition, const ValuePtr& then_value, const ValuePtr& else_value = ValuePtr()) {
    auto value = make_value<IfConditional>();
    auto& conditional = static_cast<IfConditional&>(*value);
    conditional.set_condition(condition);
    conditional.set_then(then_value);
    if (else_value.is_set()) conditional.set_else(else_value);
    return value;
}

ValuePtr select_value(const ValuePtr& selector, const ValuePtr& label, const ValuePtr& branch,
                      const ValuePtr& fallback = ValuePtr()) {
    auto value = make_value<SelectConditional>();
    auto& select = static_cast<SelectConditional&>(*value);
    select.set_selector(selector);
    select.add_case(label, branch);
    if (fallback.is_set()) select.set_default(fallback);
    return value;
}

TEST(DictionaryKeys, ValuesReportReferencesInTheirDataButNotInConditionsLabelsOrArguments) {
    auto type = make_value<TypeValue>("ENUMERATED", 1);
    static_cast<TypeValue&>(*type).set_attribute(Attribute("HELP", dict("type_help")));
    static_cast<TypeValue&>(*type).add_value(list_of(integer("1"), dict("enum_one")));
    auto composed = make_value<ComposedValue>("element");
    static_cast<ComposedValue&>(*composed).set("element_reference", ident("x"));
    static_cast<ComposedValue&>(*composed).set("description", dict("element_desc"));
    static_cast<ComposedValue&>(*composed).set("help", dict("element_help"));

    struct Case {
        const char* name;
        ValuePtr value;
        KeySet keys;
    };
    const Case cases[] = {
        {"dictionary reference", dict("label_key"), {"label_key"}},
        {"string that looks like one", str("[label_key]"), {}},
        {"identifier", ident("label_key"), {}},
        {"null", make_value<NullValue>(), {}},
        {"reference argument", reference_to("table", dict("arg_key")), {}},
        {"list", list_of(dict("a"), str("b"), dict("c"), dict("a")), {"a", "c"}},
        {"type attributes and values", type, {"type_help", "enum_one"}},
        {"composed", composed, {"element_desc", "element_help"}},
        {"expression", make_value<Expression>(dict("x"), op("=="), list_of(dict("y"))), {"x", "y"}},
        {"parameter", make_value<ParameterValue>(8, 0, "label_key"), {}},
        {"if without else", if_value(dict("cond"), dict("then")), {"then"}},
        {"if with else", if_value(dict("cond"), dict("then"), dict("else")), {"then", "else"}},
        {"select", select_value(dict("selector"), dict("label"), dict("branch"), dict("fallback")),
         {"branch", "fallback"}},
        {"select without default", select_value(dict("selector"), dict("label"), dict("branch")), {"branch"}},
        {"case", make_value<SelectConditional::Case>(dict("label"), dict("branch")), {"branch"}},
        {"nested", list_of(if_value(ident("c"), select_value(ident("s"), integer("1"), list_of(dict("deep"))))),
         {"deep"}},
        {"code text", make_value<CodeValue>("x = [text_key];"), {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(keys_of(*c.value), c.keys);
    }
}

TEST(DictionaryKeys, CollectingAddsToTheKeysAlreadyThere) {
    KeySet keys = {"earlier"};
    list_of(dict("later"), dict("earlier"))->collect_dictionary_keys(keys);
    EXPECT_EQ(keys, (KeySet{"earlier", "later"}));
}

TEST(DictionaryKeys, MethodCodeYieldsBracketedReferencesAndLookupArguments) {
    const Token open_square = punct('['), close_square = punct(']'), open = punct('('), close = punct(')');
    const Token assign = punct('='), semicolon = punct(';'), comma = punct(',');
    const Token lookup = ident_token("get_dictionary_string");
    struct Case {
        const char* name;
        std::vector<Token> tokens;
        KeySet keys;
    };
    const Case cases[] = {
        {"assignment of a reference",
         {ident_token("s"), assign, open_square, ident_token("label"), close_square, semicolon},
         {"label"}},
        {"lookup call", {ident_token("s"), assign, lookup, open, ident_token("my_key"), close, semicolon}, {"my_key"}},
        {"array indexing", {ident_token("arr"), open_square, ident_token("idx"), close_square}, {}},
        {"reference at the very start", {open_square, ident_token("first"), close_square}, {"first"}},
        {"second index of an array", {ident_token("arr"), open_square, Token(INTEGER, "1"), close_square,
                                      open_square, ident_token("j"), close_square},
         {"j"}},
        {"after a keyword", {Token(METHOD_KEYWORD, "return"), open_square, ident_token("k"), close_square}, {"k"}},
        {"after a string", {string_token("x"), open_square, ident_token("k"), close_square}, {"k"}},
        {"only the first lookup argument",
         {lookup, open, ident_token("a"), comma, ident_token("b"), close},
         {"a"}},
        {"other function", {ident_token("put_message"), open, ident_token("k"), close}, {}},
        {"lookup with a string argument", {lookup, open, string_token("k"), close}, {}},
        {"lookup name as a string", {string_token("get_dictionary_string"), open, ident_token("k"), close}, {}},
        {"lookup with bracket", {lookup, open_square, ident_token("k"), close_square}, {}},
        {"lookup not directly before the bracket", {lookup, ident_token("x"), open, ident_token("k"), close}, {}},
        {"bracket not directly before the identifier", {open_square, open, ident_token("k"), close}, {}},
        {"key inside a string", {string_token("[k]"), string_token("get_dictionary_string(k)")}, {}},
        {"two references", {open_square, ident_token("a"), close_square, assign, open_square, ident_token("b"),
                            close_square},
         {"a", "b"}},
        {"empty body", {}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(keys_of(CodeValue(c.tokens)), c.keys);
    }
}

TEST(DictionaryKeys, ItemsReportEveryDefinedAttribute) {
    Item item(ItemType::VARIABLE, "v");
    item.set_attribute(AttributeId::LABEL, dict("v_label"));
    item.set_attribute(AttributeId::HELP, str("not a key"));
    item.set_attribute(AttributeId::VALIDITY, if_value(dict("hidden"), keyword("TRUE"), dict("v_invalid")));
    item.set_attribute(AttributeId::response_code, dict("v_code"));
    KeySet keys;
    item.collect_dictionary_keys(keys);
    EXPECT_EQ(keys, (KeySet{"v_label", "v_invalid", "v_code"}));
}

}  // namespace
}  // namespace edd
