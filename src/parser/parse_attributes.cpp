// SPDX-License-Identifier: Apache-2.0
// The value grammars of the attributes with a grammar of their own; the lists among them
// are read by the templates of parse_conditionals.cpp.
#include <string>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/parameter_value.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/composed_builder.hpp"
#include "parser/keyword_sets.hpp"
#include "parser/list_builder.hpp"
#include "parser/parser.hpp"

namespace edd {

namespace ks = keyword_sets;

// ---- Plain values ------------------------------------------------------------------------

// plain_value : expression_list [';']
ValuePtr Parser::parse_plain_value() {
    ValuePtr value = parse_expression_list();
    accept(";");
    return value;
}

// ---- Method code ----------------------------------------------------------------------

// method_definition : '{' { token } '}' — the tokens between the outer braces, nested
// braces kept
ValuePtr Parser::parse_method_definition() {
    expect("{");
    code_tokens_.clear();
    for (int depth = 1;;) {
        if (at_end()) expect("}");
        advance();
        const Token& token = consumed();
        if (token.is(LEFT_CURLY_BRACKET)) ++depth;
        else if (token.is(RIGHT_CURLY_BRACKET) && --depth == 0) break;
        const std::string_view text = token.text();
        code_tokens_.push_back({token.kind(), static_cast<std::uint32_t>(text.size()), text.data()});
    }
    return make<CodeValue>(std::span<const CodeToken>(code_tokens_));
}

// method_type : ( char | int | long | float | double | unsigned ( unsigned | char | int | long | float | double ) ) ';'
ValuePtr Parser::parse_method_type() {
    std::string type(expect_one_of(ks::method_return_types));
    if (type == "unsigned") {
        type += '_';
        type += expect_one_of(ks::unsigned_return_types);
    }
    expect(";");
    return make_simple(ValueKind::KEYWORD, type);
}

// method_parameter : [ unsigned ] parameter_type [ '&' ] identifier
// "unsigned" is a type of its own unless a type word follows it.
ValuePtr Parser::parse_method_parameter() {
    advance();
    const bool is_unsigned = consumed_word() == "unsigned" && find_parameter_type(peek_word());
    if (is_unsigned) advance();
    const std::optional<std::uint32_t> type = find_parameter_type(consumed_word());
    if (!type) fatal(format_message(messages::unknown_parameter_type, {consumed().text()}));
    const std::optional<std::uint32_t> code = is_unsigned ? parameter_types[*type].unsigned_code : type;
    if (!code) fatal(format_message(messages::parameter_not_unsigned, {consumed().text()}));
    const ParameterMode mode = accept("&") ? ParameterMode::CALL_BY_REFERENCE : ParameterMode::CALL_BY_VALUE;
    return make<ParameterValue>(*code, mode, read_identifier(false));
}

// ---- Variable types -------------------------------------------------------------------

// type_specification : type_word [ '(' integer ')' ] [ reference ] ( ';' | '{' type_body '}' [';'] )
ValuePtr Parser::parse_type_specification() {
    WordSet set;
    for (WordSet candidate : ks::type_words)
        if (at_one_of(candidate)) set = candidate;
    if (set.empty()) {
        error(messages::expected_type_specifier);
        return make<NullValue>();
    }
    expect_one_of(set);
    auto* type = make<TypeValue>(LastingText{spelling_of(consumed().word())});
    if (accept("(")) {
        type->set_size(static_cast<std::uint32_t>(read_integer()));
        expect(")");
    }
    if (set == ks::index_type) type->add_value(parse_reference());
    if (accept(";")) return type;
    expect("{");
    parse_type_body(*type, set == ks::enumerated_types);
    expect("}");
    accept(";");
    return type;
}

// type_body : { value_attribute conditional_value | conditional_enumerators }   (enumerated types)
//           | { attribute_word conditional_value }                             (other types)
// Attributes become the type's attributes, enumerators its values. Besides the value
// limits, the other types take words such as DISPLAY_FORMAT and EDIT_FORMAT.
void Parser::parse_type_body(TypeValue& type, bool enumerated) {
    while (!at("}") && !at_end()) {
        const bool word = (at_kind(EDDL_KEYWORD) || at_kind(IDENTIFIER)) && !at("IF") && !at("SELECT");
        if (word && (!enumerated || at_one_of(ks::value_attributes))) {
            advance();
            if (const Word name = consumed().word(); name.in_table()) {
                type.set_attribute(LastingText{spelling_of(name)}, parse_conditional(List::VALUES));
            } else {
                const std::string text(consumed().text());
                type.set_attribute(text, parse_conditional(List::VALUES));
            }
            continue;
        }
        if (!enumerated) break;
        add_enumerators(type, parse_conditional(List::ENUMERATORS));
    }
}

// An unnamed list of enumerators gives the type its entries; anything else is one value.
void Parser::add_enumerators(TypeValue& type, ValuePtr enumerators) {
    const auto* list = enumerators->kind() == ValueKind::VALUE_LIST ? static_cast<const ValueList*>(enumerators.get())
                                                                    : nullptr;
    if (list == nullptr || !list->name().empty()) {
        type.add_value(enumerators);
        return;
    }
    type.reserve_values(list->items().size());
    for (const ValuePtr& enumerator : list->items()) type.add_value(enumerator);
}

// enumerator : '{' value ',' description { ',' ( help | status_classes | classes | action ) } '}'
ValuePtr Parser::parse_enumerator() {
    expect("{");
    ComposedBuilder enumerator(*this);
    enumerator.add("value", parse_conditional_expression());
    expect(",");
    enumerator.add("description", parse_string_value());
    while (accept(",")) {
        if (at_one_of(ks::status_classes)) {
            enumerator.set("status_class", parse_keyword_set_combination(ks::status_classes));
        } else if (at_one_of(ks::classes)) {
            enumerator.set("function", parse_keyword_set_combination(ks::classes));
        } else if ((at_kind(STRING) || at("[")) && !enumerator.contains("help")) {
            enumerator.set("help", parse_string_value());
        } else if (at_kind(IDENTIFIER)) {
            enumerator.set("action", parse_reference());
        } else {
            advance();
            fatal(messages::error_in_enumerator);
        }
    }
    expect("}");
    return enumerator.finish("enumerator");
}

// keyword_set_combination : word { '&' word } — words of one set; a list when several
ValuePtr Parser::parse_keyword_set_combination(WordSet words) {
    ValuePtr first = parse_one_of(words);
    if (!at("&")) return first;
    ListBuilder list(*this);
    list.add(first);
    while (accept("&")) list.add(parse_one_of(words));
    return list.finish();
}

// ---- Menus ------------------------------------------------------------------------------

// menu_item : layout_word | string_value | reference [ menu_item_qualifiers ]
ValuePtr Parser::parse_menu_item() {
    ComposedBuilder item(*this);
    if (at_one_of(ks::menu_layout_words)) {
        advance();
        item.add("item_reference", make_keyword(consumed()));
        return item.finish("item");
    }
    if (at_kind(STRING) || at("[")) {
        item.add("item_reference", parse_string_value());
        return item.finish("item");
    }
    if (!at_kind(IDENTIFIER)) {
        advance();
        fatal_at_consumed(messages::expected_reference_or_keyword);
    }
    item.add("item_reference", parse_reference());
    if (at("(")) item.add("qualifiers", parse_menu_item_qualifiers());
    return item.finish("item");
}

// menu_item_qualifiers : '(' qualifier { ( ',' | '&' ) qualifier } ')' — a word outside the
// set is reported and dropped
ValuePtr Parser::parse_menu_item_qualifiers() {
    expect("(");
    ListBuilder qualifiers(*this);
    do {
        advance();
        if (WordSet(ks::menu_item_qualifiers).contains(consumed().word()))
            qualifiers.add(make_keyword(consumed()));
        else
            error(messages::expected_menu_item_qualifier);
    } while (accept(",") || accept("&"));
    expect(")");
    return qualifiers.finish();
}

// ---- Purposes and roles ------------------------------------------------------------------

ValuePtr Parser::parse_purpose() { return parse_one_of(ks::purposes); }

// role : keyword | identifier
ValuePtr Parser::parse_role() {
    advance();
    if (!consumed().is(EDDL_KEYWORD) && !consumed().is(IDENTIFIER))
        fatal_at_consumed(messages::expected_keyword_but_got);
    return make_keyword(consumed());
}

// purpose_attribute : conditional_purposes [';']      role_attribute : conditional_roles [';']
ValuePtr Parser::parse_word_list_attribute(List list) {
    ValuePtr value = parse_conditional(list);
    accept(";");
    return value;
}

// ---- Response codes ----------------------------------------------------------------------

// response_codes_attribute : reference [';'] | '{' response_code_sequence '}'
ValuePtr Parser::parse_response_codes_attribute() {
    if (at("{")) return parse_braced_sequence(List::RESPONSE_CODES);
    ValuePtr reference = parse_reference();
    accept(";");
    return reference;
}

// response_code : integer_expression ',' response_code_type ',' string_value [ ',' string_value ] ';'
ValuePtr Parser::parse_response_code() {
    ComposedBuilder code(*this);
    code.add("value", parse_conditional_expression());
    expect(",");
    code.add("type", parse_one_of(ks::response_code_types));
    expect(",");
    code.add("description", parse_string_value());
    if (accept(",")) code.add("help", parse_string_value());
    expect(";");
    return code.finish("response_code");
}

// ---- Elements and members -----------------------------------------------------------------

// element : integer_expression ',' reference ',' string_value [ ',' string_value ] ';'
ValuePtr Parser::parse_element() {
    ComposedBuilder element(*this);
    element.add("element_index", parse_conditional_expression());
    expect(",");
    element.add("element_reference", parse_reference());
    if (accept(",")) {
        element.add("description", parse_string_value());
        if (accept(",")) element.add("help", parse_string_value());
    }
    expect(";");
    return element.finish("element");
}

// member : identifier ',' reference [ ',' string_value [ ',' string_value ] ] ';'
ValuePtr Parser::parse_member() {
    ComposedBuilder member(*this);
    member.add("member_identifier", make_simple(ValueKind::IDENTIFIER, read_identifier(true)));
    expect(",");
    member.add("member_reference", parse_reference());
    if (accept(",")) {
        member.add("description", parse_string_value());
        if (accept(",")) member.add("help", parse_string_value());
    }
    expect(";");
    return member.finish("member");
}

// ---- Commands -------------------------------------------------------------------------------

// transaction : [ integer ] '{' REQUEST '{' data_items '}' REPLY '{' data_items '}'
//               [ RESPONSE_CODES response_codes_attribute ] '}'
ValuePtr Parser::parse_transaction() {
    ComposedBuilder transaction(*this);
    if (at_kind(INTEGER)) transaction.add("number", expect_integer());
    expect("{");
    expect("REQUEST");
    expect("{");
    transaction.add("REQUEST", parse_data_items());
    expect("}");
    expect("REPLY");
    expect("{");
    transaction.add("REPLY", parse_data_items());
    expect("}");
    if (accept("RESPONSE_CODES")) transaction.add("RESPONSE_CODES", parse_response_codes_attribute());
    expect("}");
    return transaction.finish();
}

// data_items : [ conditional_data_item { [','] conditional_data_item } ] — the comma is
// required between two plain data items and optional next to a conditional; a comma before
// the closing brace is dropped
ValuePtr Parser::parse_data_items() {
    ListBuilder list(*this);
    while (starts_entry(List::DATA_ITEMS)) {
        const bool conditional = at("IF") || at("SELECT");
        list.add(parse_conditional(List::DATA_ITEMS));
        if (!accept(",") && !conditional && !at("IF") && !at("SELECT")) break;
    }
    return list.finish();
}

// data_item : integer | reference [ '<' integer '>' ] [ '(' keywords { ',' keywords } ')' ]
ValuePtr Parser::parse_data_item() {
    ComposedBuilder item(*this);
    if (at_kind(INTEGER)) {
        item.add("data_item_reference", expect_integer());
        return item.finish("data_item");
    }
    item.add("data_item_reference", parse_reference());
    if (accept("<")) {
        advance();
        if (consumed().is(INTEGER))
            item.add("mask", make_simple(ValueKind::DATA_MASK, consumed().text()));
        else
            error(format_message(messages::expected_integer_but_got, {consumed().text()}));
        expect(">");
    }
    if (accept("(")) {
        ListBuilder qualifiers(*this);
        do qualifiers.add(parse_keyword_combination());
        while (accept(","));
        expect(")");
        item.add("qualifiers", qualifiers.finish());
    }
    return item.finish("data_item");
}

// ---- Actions ----------------------------------------------------------------------------------

// action : reference | [ DEFINITION ] method_definition
ValuePtr Parser::parse_action() {
    accept("DEFINITION");
    if (at("{")) return parse_method_definition();
    return parse_reference();
}

// ---- Waveforms and charts ------------------------------------------------------------------

// waveform_type : ( YT | XY ) '{' { waveform_statement } '}' [';']
//               | HORIZONTAL '{' Y_VALUES braced_points '}' [';'] | VERTICAL '{' X_VALUES braced_points '}' [';']
ValuePtr Parser::parse_waveform_type() {
    advance();
    const Word word = consumed().word();
    if (!WordSet(ks::waveform_types).contains(word)) fatal_at_consumed(messages::expected_waveform_type);
    auto* type = make<TypeValue>(consumed().text());
    expect("{");
    if (word == "HORIZONTAL" || word == "VERTICAL") {
        const Word axis = word == "HORIZONTAL" ? Word("Y_VALUES") : Word("X_VALUES");
        expect(axis);
        type->set_attribute(spelling_of(axis), parse_braced_points());
    } else {
        while (!at("}")) parse_waveform_statement(*type, word == "YT");
    }
    expect("}");
    accept(";");
    return type;
}

// waveform_statement : X_INITIAL conditional_value | X_INCREMENT conditional_value   (YT only)
//                    | NUMBER_OF_POINTS conditional_value | Y_VALUES braced_points
//                    | X_VALUES braced_points                                      (XY only)
void Parser::parse_waveform_statement(TypeValue& type, bool yt) {
    advance();
    const std::string statement(consumed_word());
    if ((yt && (statement == "X_INITIAL" || statement == "X_INCREMENT")) || statement == "NUMBER_OF_POINTS")
        type.set_attribute(statement, parse_conditional(List::VALUES));
    else if (statement == "Y_VALUES" || (!yt && statement == "X_VALUES"))
        type.set_attribute(statement, parse_braced_points());
    else  // the XY message names %1, which no argument fills: it prints nothing there
        fatal(format_message(yt ? messages::expected_yt_statement : messages::expected_xy_statement,
                             {consumed().text()}));
}

// braced_points : '{' point { ',' point } '}'
ValuePtr Parser::parse_braced_points() {
    expect("{");
    ValuePtr points = parse_list(List::POINTS);
    expect("}");
    return points;
}

// point : reference | integer | float — a sign is none of them
ValuePtr Parser::parse_point_value() {
    if (at_kind(IDENTIFIER)) return parse_reference();
    advance();
    if (consumed().is(INTEGER)) return make_simple(ValueKind::INTEGER, consumed().text());
    if (consumed().is(FLOAT)) return make_simple(ValueKind::FLOAT, consumed().text());
    fatal_at_consumed(messages::expected_point);
}

// key_points : '{' { ( X_VALUES | Y_VALUES ) braced_points } '}'
ValuePtr Parser::parse_key_points() {
    ComposedBuilder points(*this);
    expect("{");
    while (!at("}")) {
        advance();
        constexpr std::string_view x_values = "X_VALUES", y_values = "Y_VALUES";
        const std::string_view word = consumed_word();
        if (word != x_values && word != y_values) fatal_at_consumed(messages::expected_key_points);
        points.set(word == x_values ? x_values : y_values, parse_braced_points());
    }
    expect("}");
    return points.finish();
}

// ---- Grids ----------------------------------------------------------------------------------------

// vector : '{' string_value { ',' expression } '}'
ValuePtr Parser::parse_vector() {
    expect("{");
    ListBuilder vector(*this);
    vector.add(parse_string_value());
    while (accept(",")) vector.add(parse_conditional_expression());
    expect("}");
    return vector.finish("vector");
}

}  // namespace edd
