#include <string>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/code_value.hpp"
#include "model/composed_value.hpp"
#include "model/parameter_value.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/keyword_sets.hpp"
#include "parser/parser.hpp"

namespace edd {

namespace ks = keyword_sets;

namespace {

// The words an enumerated type body reads as value attributes; anything else there starts
// an enumerator list.
bool is_value_attribute(std::string_view word) {
    return word == "INITIAL_VALUE" || word == "DEFAULT_VALUE" || word == "MIN_VALUE" || word == "MAX_VALUE";
}

// Adds a grammar's result to a list, flattening an unnamed list into its entries.
void add_flattened(std::vector<ValuePtr>& into, const ValuePtr& value) {
    if (value->kind() == ValueKind::VALUE_LIST) {
        const auto& list = static_cast<const ValueList&>(*value);
        if (list.name().empty()) {
            into.insert(into.end(), list.items().begin(), list.items().end());
            return;
        }
    }
    into.push_back(value);
}

ValuePtr keyword_value(std::string word) { return make_value<SimpleValue>(ValueKind::KEYWORD, std::move(word)); }

}  // namespace

// ---- Method code ----------------------------------------------------------------------

// method_definition : '{' { token } '}' — the tokens between the outer braces, nested
// braces kept
ValuePtr Parser::parse_method_definition() {
    expect("{");
    std::vector<Token> tokens;
    for (int depth = 1;;) {
        if (at_end()) expect("}");
        advance();
        if (current().is(LEFT_CURLY_BRACKET)) ++depth;
        if (current().is(RIGHT_CURLY_BRACKET) && --depth == 0) break;
        tokens.push_back(take_current());
    }
    tokens.shrink_to_fit();  // kept for the whole run: no room to spare
    return make_value<CodeValue>(std::move(tokens));
}

// method_type : ( char | int | long | float | double | unsigned ( unsigned | char | int | long | float | double ) ) ';'
ValuePtr Parser::parse_method_type() {
    ValuePtr first = parse_one_of(ks::method_return_types);
    std::string type(current().text());
    if (type == "unsigned") {
        parse_one_of(ks::unsigned_return_types);
        type += '_';
        type += current().text();
    }
    expect(";");
    static_cast<void>(first);
    return keyword_value(type);
}

// method_parameter : [ unsigned ] parameter_type [ '&' ] identifier
ValuePtr Parser::parse_method_parameter() {
    advance();
    bool is_unsigned = false;
    if (current().text() == "unsigned" && ks::method_parameter_types.contains(lookahead().text()) &&
        !lookahead().is(STRING)) {
        is_unsigned = true;
        advance();
    }
    const std::string type(current().text());
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
    std::uint32_t mode = 0;
    if (at("&")) {
        advance();
        mode = 1;
    }
    return make_value<ParameterValue>(code, mode, parse_identifier(false));
}

// ---- Variable types -------------------------------------------------------------------

// type_specification : type_word [ '(' integer ')' ] [ reference ] ( ';' | '{' type_body '}' [';'] )
ValuePtr Parser::parse_type_specification() {
    const std::string word = lookahead().is(STRING) ? std::string() : std::string(lookahead().text());
    const ks::WordSet* set = nullptr;
    for (const ks::WordSet* candidate : {&ks::arithmetic_types, &ks::enumerated_types, &ks::index_type, &ks::string_types,
                                         &ks::date_time_types, &ks::object_reference_type})
        if (candidate->contains(word)) set = candidate;
    if (set == nullptr) {
        error(messages::expected_type_specifier);
        return make_value<NullValue>();
    }
    parse_one_of(*set);
    auto type = std::make_shared<TypeValue>(word);
    if (at("(")) {
        expect("(");
        type->set_size(static_cast<std::uint32_t>(parse_integer()));
        expect(")");
    }
    if (set == &ks::index_type) type->add_value(parse_reference());
    if (at(";")) {
        advance();
        return ValuePtr(type);
    }
    expect("{");
    parse_type_body(*type, set == &ks::enumerated_types);
    expect("}");
    if (at(";")) advance();
    return ValuePtr(type);
}

// type_body : { value_attribute conditional_value | enumerators }   (enumerated types)
//           | { attribute_word conditional_value }                 (other types)
// Attributes become the type's attributes, enumerators its values. Besides the value
// limits, the other types take words such as DISPLAY_FORMAT and EDIT_FORMAT.
void Parser::parse_type_body(TypeValue& type, bool enumerated) {
    while (!at("}") && !at_end()) {
        const bool word = (at_kind(EDDL_KEYWORD) || at_kind(IDENTIFIER)) && !at("IF") && !at("SELECT");
        if (word && (!enumerated || is_value_attribute(lookahead().text()))) {
            advance();
            const std::string name(current().text());
            type.set_attribute(Attribute(name, parse_conditional_value()));
            continue;
        }
        if (!enumerated) break;
        std::vector<ValuePtr> enumerators;
        add_flattened(enumerators, parse_conditional_enumerators());
        for (ValuePtr& enumerator : enumerators) type.add_value(std::move(enumerator));
    }
}

// enumerators : enumerator { ',' enumerator } [ ',' ]
ValuePtr Parser::parse_enumerator_list() {
    return parse_list(&Parser::parse_enumerator, messages::trailing_comma_in_enumerator);
}

// enumerator : '{' value ',' description { ',' ( help | status_classes | classes | action ) } '}'
ValuePtr Parser::parse_enumerator() {
    expect("{");
    auto enumerator = std::make_shared<ComposedValue>("enumerator");
    enumerator->set("value", parse_conditional_expression());
    expect(",");
    enumerator->set("description", parse_string_value());
    while (at(",")) {
        advance();
        const std::string_view word = lookahead().text();
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
    return ValuePtr(enumerator);
}

// keyword_set_combination : word { '&' word } — words of one set; a list when several
ValuePtr Parser::parse_keyword_set_combination(const std::set<std::string, std::less<>>& words) {
    ValuePtr first = parse_one_of(words);
    if (!at("&")) return first;
    auto list = std::make_shared<ValueList>();
    list->add(std::move(first));
    while (at("&")) {
        advance();
        list->add(parse_one_of(words));
    }
    return ValuePtr(list);
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
    auto item = std::make_shared<ComposedValue>("item");
    if (!at_kind(STRING) && ks::menu_layout_words.contains(lookahead().text())) {
        advance();
        item->set("item_reference", keyword_value(std::string(current().text())));
        return ValuePtr(item);
    }
    if (at_kind(STRING) || at("[")) {
        item->set("item_reference", parse_string_value());
        return ValuePtr(item);
    }
    if (!at_kind(IDENTIFIER)) {
        advance();
        fatal(format_message(messages::expected_reference_or_keyword, {current().text()}));
    }
    item->set("item_reference", parse_reference());
    if (at("(")) {
        expect("(");
        auto qualifiers = std::make_shared<ValueList>();
        for (;;) {
            advance();
            if (ks::menu_item_qualifiers.contains(current().text()) && !current().is(STRING))
                qualifiers->add(keyword_value(std::string(current().text())));
            else
                error(messages::expected_menu_item_qualifier);
            if (!at(",") && !at("&")) break;
            advance();
        }
        expect(")");
        item->set("qualifiers", ValuePtr(std::move(qualifiers)));
    }
    return ValuePtr(item);
}

// ---- Purposes and roles ------------------------------------------------------------------

ValuePtr Parser::parse_purpose() { return parse_one_of(ks::purposes); }

// role : keyword | identifier
ValuePtr Parser::parse_role() {
    advance();
    if (!current().is(EDDL_KEYWORD) && !current().is(IDENTIFIER))
        fatal(concat({messages::expected_keyword_but_got, current().text()}));
    return keyword_value(std::string(current().text()));
}

// purpose_attribute : conditional_purpose [';']
ValuePtr Parser::parse_purpose_attribute() {
    ValuePtr value = parse_conditional_purpose();
    if (at(";")) advance();
    return value;
}

ValuePtr Parser::parse_role_attribute() {
    ValuePtr value = parse_conditional_role();
    if (at(";")) advance();
    return value;
}

// ---- Response codes ----------------------------------------------------------------------

// response_codes_attribute : reference [';'] | '{' { conditional_response_code } '}'
ValuePtr Parser::parse_response_codes_attribute() {
    if (!at("{")) {
        ValuePtr reference = parse_reference();
        if (at(";")) advance();
        return reference;
    }
    expect("{");
    ValuePtr codes = parse_response_code_sequence();
    expect("}");
    return codes;
}

// response_code : integer_expression ',' response_code_type ',' string_value [ ',' string_value ] ';'
ValuePtr Parser::parse_response_code() {
    auto code = std::make_shared<ComposedValue>("response_code");
    code->set("value", parse_conditional_expression());
    expect(",");
    code->set("type", parse_one_of(ks::response_code_types));
    expect(",");
    code->set("description", parse_string_value());
    if (at(",")) {
        advance();
        code->set("help", parse_string_value());
    }
    expect(";");
    return ValuePtr(code);
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
    auto element = std::make_shared<ComposedValue>("element");
    element->set("element_index", parse_conditional_expression());
    expect(",");
    element->set("element_reference", parse_reference());
    if (at(",")) {
        advance();
        element->set("description", parse_string_value());
        if (at(",")) {
            advance();
            element->set("help", parse_string_value());
        }
    }
    expect(";");
    return ValuePtr(element);
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
    auto member = std::make_shared<ComposedValue>("member");
    member->set("member_identifier", make_value<SimpleValue>(ValueKind::IDENTIFIER, parse_identifier(true)));
    expect(",");
    member->set("member_reference", parse_reference());
    if (at(",")) {
        advance();
        member->set("description", parse_string_value());
        if (at(",")) {
            advance();
            member->set("help", parse_string_value());
        }
    }
    expect(";");
    return ValuePtr(member);
}

// ---- Commands -------------------------------------------------------------------------------

// transaction : [ integer ] '{' REQUEST '{' data_items '}' REPLY '{' data_items '}'
//               [ RESPONSE_CODES response_codes_attribute ] '}'
ValuePtr Parser::parse_transaction() {
    auto transaction = std::make_shared<ComposedValue>();
    if (at_kind(INTEGER)) transaction->set("number", expect_integer());
    expect("{");
    expect("REQUEST");
    expect("{");
    transaction->set("REQUEST", parse_data_item_sequence());
    expect("}");
    expect("REPLY");
    expect("{");
    transaction->set("REPLY", parse_data_item_sequence());
    expect("}");
    if (at("RESPONSE_CODES")) {
        advance();
        transaction->set("RESPONSE_CODES", parse_response_codes_attribute());
    }
    expect("}");
    return ValuePtr(transaction);
}

// data_item : integer | reference [ '<' integer '>' ] [ '(' keywords { ',' keywords } ')' ]
ValuePtr Parser::parse_data_item() {
    auto item = std::make_shared<ComposedValue>("data_item");
    if (at_kind(INTEGER)) {
        item->set("data_item_reference", expect_integer());
        return ValuePtr(item);
    }
    item->set("data_item_reference", parse_reference());
    if (at("<")) {
        advance();
        advance();
        if (current().is(INTEGER))
            item->set("mask", make_value<SimpleValue>(ValueKind::DATA_MASK, std::string(current().text())));
        else
            error(concat({messages::expected_integer_but_got, current().text()}));
        expect(">");
    }
    if (at("(")) {
        expect("(");
        auto qualifiers = std::make_shared<ValueList>();
        qualifiers->add(parse_keyword_combination());
        while (at(",")) {
            advance();
            qualifiers->add(parse_keyword_combination());
        }
        expect(")");
        item->set("qualifiers", ValuePtr(std::move(qualifiers)));
    }
    return ValuePtr(item);
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
    if (at("DEFINITION")) advance();
    if (at("{")) return parse_method_definition();
    return parse_reference();
}

// ---- Waveforms and charts ------------------------------------------------------------------

// waveform_type : ( YT | XY | HORIZONTAL | VERTICAL ) '{' statements '}' [';']
ValuePtr Parser::parse_waveform_type() {
    advance();
    const std::string word(current().text());
    if (current().is(STRING) || !ks::waveform_types.contains(word))
        fatal(format_message(messages::expected_waveform_type, {word}));
    auto type = std::make_shared<TypeValue>(word);
    expect("{");
    auto point_list = [this](std::string name) {
        expect("{");
        ValuePtr points = parse_point_list();
        expect("}");
        return Attribute(std::move(name), std::move(points));
    };
    if (word == "HORIZONTAL" || word == "VERTICAL") {
        const std::string axis = word == "HORIZONTAL" ? "Y_VALUES" : "X_VALUES";
        expect(axis);
        type->set_attribute(point_list(axis));
    } else {
        while (!at("}")) {
            advance();
            const std::string statement(current().text());
            const bool yt = word == "YT";
            if ((yt && (statement == "X_INITIAL" || statement == "X_INCREMENT")) || statement == "NUMBER_OF_POINTS")
                type->set_attribute(Attribute(statement, parse_conditional_value()));
            else if (statement == "Y_VALUES" || (!yt && statement == "X_VALUES"))
                type->set_attribute(point_list(statement));
            else
                fatal(format_message(yt ? messages::expected_yt_statement : messages::expected_xy_statement, {statement}));
        }
    }
    expect("}");
    if (at(";")) advance();
    return ValuePtr(type);
}

ValuePtr Parser::parse_point_list() { return parse_list_point_values(); }

// point_value : reference | [ '-' ] integer | [ '-' ] float
ValuePtr Parser::parse_point_value() {
    if (at_kind(IDENTIFIER)) return parse_reference();
    std::string text;
    if (at("-")) {
        advance();
        text.push_back('-');
    }
    advance();
    text += current().text();
    if (current().is(INTEGER)) return make_value<SimpleValue>(ValueKind::INTEGER, std::move(text));
    if (current().is(FLOAT)) return make_value<SimpleValue>(ValueKind::FLOAT, std::move(text));
    fatal(format_message(messages::expected_point, {current().text()}));
}

// key_points : '{' { ( X_VALUES | Y_VALUES ) '{' point_list '}' } '}'
ValuePtr Parser::parse_key_points() {
    auto points = std::make_shared<ComposedValue>();
    expect("{");
    while (!at("}")) {
        advance();
        const std::string axis(current().text());
        if (axis != "X_VALUES" && axis != "Y_VALUES") fatal(format_message(messages::expected_key_points, {axis}));
        expect("{");
        points->set(axis, parse_point_list());
        expect("}");
    }
    expect("}");
    return ValuePtr(points);
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
    auto vector = std::make_shared<ValueList>("vector");
    vector->add(parse_string_value());
    while (at(",")) {
        advance();
        vector->add(parse_conditional_expression());
    }
    expect("}");
    return ValuePtr(vector);
}

}  // namespace edd
