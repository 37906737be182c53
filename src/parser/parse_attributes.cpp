#include <string>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/parameter_value.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/keyword_sets.hpp"
#include "parser/list_builder.hpp"
#include "parser/parser.hpp"

namespace edd {

namespace ks = keyword_sets;

namespace {

// The words an enumerated type body reads as value attributes; anything else there starts
// an enumerator list.
bool is_value_attribute(std::string_view word) {
    return word == "INITIAL_VALUE" || word == "DEFAULT_VALUE" || word == "MIN_VALUE" || word == "MAX_VALUE";
}

}  // namespace

// ---- Method code ----------------------------------------------------------------------

// method_definition : '{' { token } '}' — the tokens between the outer braces, nested
// braces kept
ValuePtr Parser::parse_method_definition() {
    expect("{");
    code_tokens_.clear();
    for (int depth = 1;;) {
        if (at_end()) expect("}");
        advance();
        if (consumed().is(LEFT_CURLY_BRACKET)) ++depth;
        if (consumed().is(RIGHT_CURLY_BRACKET) && --depth == 0) break;
        code_tokens_.push_back(consumed());
    }
    return make<CodeValue>(std::span<const Token>(code_tokens_));
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
ValuePtr Parser::parse_method_parameter() {
    advance();
    bool is_unsigned = false;
    if (consumed().text() == "unsigned" && ks::method_parameter_types.contains(peek().text()) && !peek().is(STRING)) {
        is_unsigned = true;
        advance();
    }
    const std::string type(consumed().text());
    std::uint32_t code = 2;
    if (type == "char") code = is_unsigned ? 1 : 0;
    else if (type == "int" || type == "unsigned") code = is_unsigned || type == "unsigned" ? 3 : 2;
    else if (type == "long") code = is_unsigned ? 5 : 4;
    else if (type == "float") code = 6;
    else if (type == "double") code = 7;
    else if (type == "DD_STRING") code = 8;
    else if (type == "DD_ITEM") code = 9;
    else fatal(format_message(messages::unknown_parameter_type, {type}));
    if (is_unsigned && code >= 6) fatal(format_message(messages::parameter_not_unsigned, {type}));
    const std::uint32_t mode = accept("&") ? 1 : 0;
    return make<ParameterValue>(code, mode, read_identifier(false));
}

// ---- Variable types -------------------------------------------------------------------

// type_specification : type_word [ '(' integer ')' ] [ reference ] ( ';' | '{' type_body '}' [';'] )
ValuePtr Parser::parse_type_specification() {
    const std::string word = peek().is(STRING) ? std::string() : std::string(peek().text());
    const ks::WordSet* set = nullptr;
    for (const ks::WordSet* candidate : {&ks::arithmetic_types, &ks::enumerated_types, &ks::index_type, &ks::string_types,
                                         &ks::date_time_types, &ks::object_reference_type})
        if (candidate->contains(word)) set = candidate;
    if (set == nullptr) {
        error(messages::expected_type_specifier);
        return make<NullValue>();
    }
    expect_one_of(*set);
    auto* type = make<TypeValue>(word);
    if (accept("(")) {
        type->set_size(static_cast<std::uint32_t>(read_integer()));
        expect(")");
    }
    if (set == &ks::index_type) type->add_value(parse_reference());
    if (accept(";")) return type;
    expect("{");
    parse_type_body(*type, set == &ks::enumerated_types);
    expect("}");
    accept(";");
    return type;
}

// type_body : { value_attribute conditional_value | enumerators }   (enumerated types)
//           | { attribute_word conditional_value }                 (other types)
// Attributes become the type's attributes, enumerators its values. Besides the value
// limits, the other types take words such as DISPLAY_FORMAT and EDIT_FORMAT.
void Parser::parse_type_body(TypeValue& type, bool enumerated) {
    while (!at("}") && !at_end()) {
        const bool word = (at_kind(EDDL_KEYWORD) || at_kind(IDENTIFIER)) && !at("IF") && !at("SELECT");
        if (word && (!enumerated || is_value_attribute(peek().text()))) {
            advance();
            const std::string name(consumed().text());
            type.set_attribute(name, parse_conditional_value());
            continue;
        }
        if (!enumerated) break;
        // An unnamed list of enumerators gives its entries; anything else is one value.
        const ValuePtr enumerators = parse_conditional_enumerators();
        const auto* list = enumerators->kind() == ValueKind::VALUE_LIST ? static_cast<const ValueList*>(enumerators.get())
                                                                        : nullptr;
        if (list == nullptr || !list->name().empty()) {
            type.add_value(enumerators);
            continue;
        }
        for (const ValuePtr& enumerator : list->items()) type.add_value(enumerator);
    }
}

// enumerators : enumerator { ',' enumerator } [ ',' ]
ValuePtr Parser::parse_enumerator_list() {
    return parse_list(&Parser::parse_enumerator, messages::trailing_comma_in_enumerator);
}

// enumerator : '{' value ',' description { ',' ( help | status_classes | classes | action ) } '}'
ValuePtr Parser::parse_enumerator() {
    expect("{");
    auto* enumerator = make<ComposedValue>("enumerator", 3);
    enumerator->set("value", parse_conditional_expression());
    expect(",");
    enumerator->set("description", parse_string_value());
    while (accept(",")) {
        const std::string_view word = peek().text();
        if (!at_kind(STRING) && ks::status_classes.contains(word)) {
            enumerator->set("status_class", parse_keyword_set_combination(ks::status_classes));
        } else if (!at_kind(STRING) && ks::classes.contains(word)) {
            enumerator->set("function", parse_keyword_set_combination(ks::classes));
        } else if ((at_kind(STRING) || at("[")) && !enumerator->contains("help")) {
            enumerator->set("help", parse_string_value());
        } else if (at_kind(IDENTIFIER)) {
            enumerator->set("action", parse_reference());
        } else {
            advance();
            fatal(messages::error_in_enumerator);
        }
    }
    expect("}");
    return enumerator;
}

// keyword_set_combination : word { '&' word } — words of one set; a list when several
ValuePtr Parser::parse_keyword_set_combination(const WordSet& words) {
    ValuePtr first = parse_one_of(words);
    if (!at("&")) return first;
    ListBuilder list(*this);
    list.add(first);
    while (accept("&")) list.add(parse_one_of(words));
    return list.finish();
}

// ---- Menus ------------------------------------------------------------------------------

// braced_menu_items : '{' { conditional_menu_items } '}'
ValuePtr Parser::parse_braced_menu_items() {
    expect("{");
    ValuePtr items = parse_menu_item_sequence();
    expect("}");
    return items;
}

// menu_item_list : menu_item { ',' menu_item } [ ',' ]
ValuePtr Parser::parse_menu_item_list() { return parse_list(&Parser::parse_menu_item, messages::trailing_comma_in_items); }

// menu_item : layout_word | string_value | reference [ '(' qualifier { ',' qualifier } ')' ]
ValuePtr Parser::parse_menu_item() {
    auto* item = make<ComposedValue>("item", 2);
    if (!at_kind(STRING) && ks::menu_layout_words.contains(peek().text())) {
        advance();
        item->set("item_reference", make_simple(ValueKind::KEYWORD, consumed().text()));
        return item;
    }
    if (at_kind(STRING) || at("[")) {
        item->set("item_reference", parse_string_value());
        return item;
    }
    if (!at_kind(IDENTIFIER)) {
        advance();
        fatal_at_consumed(messages::expected_reference_or_keyword);
    }
    item->set("item_reference", parse_reference());
    if (accept("(")) {
        ListBuilder qualifiers(*this);
        do {
            advance();
            if (ks::menu_item_qualifiers.contains(consumed().text()) && !consumed().is(STRING))
                qualifiers.add(make_simple(ValueKind::KEYWORD, consumed().text()));
            else
                error(messages::expected_menu_item_qualifier);
        } while (accept(",") || accept("&"));
        expect(")");
        item->set("qualifiers", qualifiers.finish());
    }
    return item;
}

// ---- Purposes and roles ------------------------------------------------------------------

ValuePtr Parser::parse_purpose() { return parse_one_of(ks::purposes); }

// role : keyword | identifier
ValuePtr Parser::parse_role() {
    advance();
    if (!consumed().is(EDDL_KEYWORD) && !consumed().is(IDENTIFIER)) fatal_at_consumed(messages::expected_keyword_but_got);
    return make_simple(ValueKind::KEYWORD, consumed().text());
}

// purpose_attribute : conditional_purpose [';']
ValuePtr Parser::parse_purpose_attribute() {
    ValuePtr value = parse_conditional_purpose();
    accept(";");
    return value;
}

ValuePtr Parser::parse_role_attribute() {
    ValuePtr value = parse_conditional_role();
    accept(";");
    return value;
}

// ---- Response codes ----------------------------------------------------------------------

// response_codes_attribute : reference [';'] | '{' { conditional_response_code } '}'
ValuePtr Parser::parse_response_codes_attribute() {
    if (!accept("{")) {
        ValuePtr reference = parse_reference();
        accept(";");
        return reference;
    }
    ValuePtr codes = parse_response_code_sequence();
    expect("}");
    return codes;
}

// response_code : integer_expression ',' response_code_type ',' string_value [ ',' string_value ] ';'
ValuePtr Parser::parse_response_code() {
    auto* code = make<ComposedValue>("response_code", 3);
    code->set("value", parse_conditional_expression());
    expect(",");
    code->set("type", parse_one_of(ks::response_code_types));
    expect(",");
    code->set("description", parse_string_value());
    if (accept(",")) code->set("help", parse_string_value());
    expect(";");
    return code;
}

// ---- Elements and members -----------------------------------------------------------------

// braced_elements : '{' { conditional_element } '}'
ValuePtr Parser::parse_braced_elements() {
    expect("{");
    ValuePtr elements = parse_element_sequence();
    expect("}");
    return elements;
}

// element : integer_expression ',' reference ',' string_value [ ',' string_value ] ';'
ValuePtr Parser::parse_element() {
    auto* element = make<ComposedValue>("element", 3);
    element->set("element_index", parse_conditional_expression());
    expect(",");
    element->set("element_reference", parse_reference());
    if (accept(",")) {
        element->set("description", parse_string_value());
        if (accept(",")) element->set("help", parse_string_value());
    }
    expect(";");
    return element;
}

// braced_members : '{' { conditional_member } '}'
ValuePtr Parser::parse_braced_members() {
    expect("{");
    ValuePtr members = parse_member_sequence();
    expect("}");
    return members;
}

// member : identifier ',' reference [ ',' string_value [ ',' string_value ] ] ';'
ValuePtr Parser::parse_member() {
    auto* member = make<ComposedValue>("member");
    member->set("member_identifier", make_simple(ValueKind::IDENTIFIER, read_identifier(true)));
    expect(",");
    member->set("member_reference", parse_reference());
    if (accept(",")) {
        member->set("description", parse_string_value());
        if (accept(",")) member->set("help", parse_string_value());
    }
    expect(";");
    return member;
}

// ---- Commands -------------------------------------------------------------------------------

// transaction : [ integer ] '{' REQUEST '{' data_items '}' REPLY '{' data_items '}'
//               [ RESPONSE_CODES response_codes_attribute ] '}'
ValuePtr Parser::parse_transaction() {
    auto* transaction = make<ComposedValue>();
    if (at_kind(INTEGER)) transaction->set("number", expect_integer());
    expect("{");
    expect("REQUEST");
    expect("{");
    transaction->set("REQUEST", parse_data_items());
    expect("}");
    expect("REPLY");
    expect("{");
    transaction->set("REPLY", parse_data_items());
    expect("}");
    if (accept("RESPONSE_CODES")) transaction->set("RESPONSE_CODES", parse_response_codes_attribute());
    expect("}");
    return transaction;
}

// data_items : [ conditional_data_item { [','] conditional_data_item } ] — the comma is
// required between two plain data items and optional next to a conditional; a comma before
// the closing brace is dropped
ValuePtr Parser::parse_data_items() {
    ListBuilder list(*this);
    while (starts_any_entry()) {
        const bool conditional = at("IF") || at("SELECT");
        list.add(parse_conditional_data_item());
        if (!accept(",") && !conditional && !at("IF") && !at("SELECT")) break;
    }
    return list.finish();
}

// data_item : integer | reference [ '<' integer '>' ] [ '(' keywords { ',' keywords } ')' ]
ValuePtr Parser::parse_data_item() {
    auto* item = make<ComposedValue>("data_item", 2);
    if (at_kind(INTEGER)) {
        item->set("data_item_reference", expect_integer());
        return item;
    }
    item->set("data_item_reference", parse_reference());
    if (accept("<")) {
        advance();
        if (consumed().is(INTEGER))
            item->set("mask", make_simple(ValueKind::DATA_MASK, consumed().text()));
        else
            error(format_message(messages::expected_integer_but_got, {consumed().text()}));
        expect(">");
    }
    if (accept("(")) {
        ListBuilder qualifiers(*this);
        do qualifiers.add(parse_keyword_combination());
        while (accept(","));
        expect(")");
        item->set("qualifiers", qualifiers.finish());
    }
    return item;
}

// ---- Actions ----------------------------------------------------------------------------------

// braced_actions : '{' { conditional_action } '}'
ValuePtr Parser::parse_braced_actions() {
    expect("{");
    ValuePtr actions = parse_action_sequence();
    expect("}");
    return actions;
}

// action_list : action { ',' action } — see the list template
ValuePtr Parser::parse_action_list() { return parse_list_actions(); }

// action : reference | [ DEFINITION ] method_definition
ValuePtr Parser::parse_action() {
    accept("DEFINITION");
    if (at("{")) return parse_method_definition();
    return parse_reference();
}

// ---- Waveforms and charts ------------------------------------------------------------------

// waveform_type : ( YT | XY | HORIZONTAL | VERTICAL ) '{' statements '}' [';']
ValuePtr Parser::parse_waveform_type() {
    advance();
    const std::string word(consumed().text());
    if (consumed().is(STRING) || !ks::waveform_types.contains(word)) fatal_at_consumed(messages::expected_waveform_type);
    auto* type = make<TypeValue>(word);
    expect("{");
    auto point_list = [this, type](std::string_view name) {
        expect("{");
        type->set_attribute(name, parse_point_list());
        expect("}");
    };
    if (word == "HORIZONTAL" || word == "VERTICAL") {
        const std::string_view axis = word == "HORIZONTAL" ? "Y_VALUES" : "X_VALUES";
        expect(axis);
        point_list(axis);
    } else {
        while (!at("}")) {
            advance();
            const std::string statement(consumed().text());
            const bool yt = word == "YT";
            if ((yt && (statement == "X_INITIAL" || statement == "X_INCREMENT")) || statement == "NUMBER_OF_POINTS")
                type->set_attribute(statement, parse_conditional_value());
            else if (statement == "Y_VALUES" || (!yt && statement == "X_VALUES"))
                point_list(statement);
            else  // the XY message names %1, which no argument fills: it prints nothing there
                fatal(format_message(yt ? messages::expected_yt_statement : messages::expected_xy_statement, {statement}));
        }
    }
    expect("}");
    accept(";");
    return type;
}

ValuePtr Parser::parse_point_list() { return parse_list_point_values(); }

// point_value : reference | integer | float — a sign is none of them
ValuePtr Parser::parse_point_value() {
    if (at_kind(IDENTIFIER)) return parse_reference();
    advance();
    if (consumed().is(INTEGER)) return make_simple(ValueKind::INTEGER, consumed().text());
    if (consumed().is(FLOAT)) return make_simple(ValueKind::FLOAT, consumed().text());
    fatal_at_consumed(messages::expected_point);
}

// key_points : '{' { ( X_VALUES | Y_VALUES ) '{' point_list '}' } '}'
ValuePtr Parser::parse_key_points() {
    auto* points = make<ComposedValue>();
    expect("{");
    while (!at("}")) {
        advance();
        const std::string axis(consumed().text());
        if (axis != "X_VALUES" && axis != "Y_VALUES") fatal_at_consumed(messages::expected_key_points);
        expect("{");
        points->set(axis, parse_point_list());
        expect("}");
    }
    expect("}");
    return points;
}

// ---- Grids ----------------------------------------------------------------------------------------

// braced_vectors : '{' { conditional_vectors } '}'
ValuePtr Parser::parse_braced_vectors() {
    expect("{");
    ValuePtr vectors = parse_vector_sequence();
    expect("}");
    return vectors;
}

ValuePtr Parser::parse_vector_list() { return parse_list_vectors(); }

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
