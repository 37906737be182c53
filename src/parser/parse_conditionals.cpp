#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/conditionals.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/list_builder.hpp"
#include "parser/parser.hpp"

namespace edd {

void Parser::skip_trailing_semicolon() {
    if (accept(";")) warning(messages::trailing_semicolon);
}

// conditional_X : IF '(' expression_list ')' '{' branch [';'] '}' [ ELSE '{' [ branch [';'] ] '}' [';'] ]
//               | SELECT '(' expression_list ')' '{' { CASE expression_list ':' branch [';']
//                                                     | DEFAULT ':' branch [';'] } '}' [';']
//               | X
ValuePtr Parser::parse_conditional(Grammar plain, Grammar branch) {
    if (!at("IF") && !at("SELECT")) return (this->*plain)();
    DepthGuard guard(*this);
    if (accept("IF")) {
        expect("(");
        ValuePtr condition = parse_expression_list();
        expect(")");
        expect("{");
        ValuePtr then_value = (this->*branch)();
        skip_trailing_semicolon();
        expect("}");
        auto* conditional = make<IfConditional>();
        conditional->set_condition(condition);
        conditional->set_then(then_value);
        // A ';' after a then-branch without ELSE is left for the caller.
        if (!accept("ELSE")) return conditional;
        expect("{");
        if (at("}")) {
            conditional->set_else(make<NullValue>());
            warning(messages::empty_else);
        } else {
            conditional->set_else((this->*branch)());
            skip_trailing_semicolon();
        }
        expect("}");
        skip_trailing_semicolon();
        return conditional;
    }
    expect("SELECT");
    expect("(");
    auto* select = make<SelectConditional>();
    select->set_selector(parse_expression_list());
    expect(")");
    expect("{");
    while (!at("}")) {
        if (accept("CASE")) {
            ValuePtr label = parse_expression_list();
            expect(":");
            ValuePtr value = (this->*branch)();
            skip_trailing_semicolon();
            select->add_case(*description_.arena, label, value);
        } else if (accept("DEFAULT")) {
            expect(":");
            ValuePtr value = (this->*branch)();
            skip_trailing_semicolon();
            if (select->has_default()) error(messages::select_two_defaults);
            select->set_default(value);
        } else {
            // Nothing here would consume the stray token, so reading stops at it.
            fatal(format_message(messages::expected_case_or_default, {peek().text()}));
        }
    }
    expect("}");
    skip_trailing_semicolon();
    return select;
}

// list_X : X [ ',' X { ',' X } ] — a single entry stays itself; a comma before IF, SELECT,
// CASE or '}' is a stray one
ValuePtr Parser::parse_list(Grammar entry, std::string_view trailing) {
    ValuePtr first = (this->*entry)();
    if (!at(",")) return first;
    ListBuilder list(*this);
    list.add(first);
    while (accept(",")) {
        if (at("IF") || at("SELECT") || at("CASE") || at("}")) {
            warning(trailing.empty() ? format_message(messages::stray, {consumed().text()}) : std::string(trailing));
            break;
        }
        list.add((this->*entry)());
    }
    return list.finish();
}

// X_sequence : { conditional_X }
ValuePtr Parser::parse_sequence(Grammar conditional_entry, StartTest starts_entry) {
    ListBuilder list(*this);
    while ((this->*starts_entry)()) list.add((this->*conditional_entry)());
    return list.finish();
}

// A ';' ends a branch too: the template reports it as a trailing semicolon.
bool Parser::starts_any_entry() const {
    return !at("}") && !at(";") && !at("CASE") && !at("DEFAULT") && !at_end();
}

bool Parser::starts_menu_item() const {
    return at_kind(IDENTIFIER) || at_kind(STRING) || at("[") || (at_kind(EDDL_KEYWORD) && !at("CASE") && !at("DEFAULT"));
}

bool Parser::starts_response_code() const { return at_kind(INTEGER) || at("IF") || at("SELECT"); }

// ---- Instances ----------------------------------------------------------------------------

ValuePtr Parser::parse_conditional_value() {
    return parse_conditional(&Parser::parse_plain_value, &Parser::parse_conditional_value);
}

// plain_value : expression_list [';']
ValuePtr Parser::parse_plain_value() {
    ValuePtr value = parse_expression_list();
    accept(";");
    return value;
}

ValuePtr Parser::parse_conditional_data_item() {
    return parse_conditional(&Parser::parse_data_item, &Parser::parse_data_item_sequence);
}
// data_item_sequence : { conditional_data_item [','] } — inside a branch the commas are
// optional
ValuePtr Parser::parse_data_item_sequence() {
    ListBuilder list(*this);
    while (starts_any_entry()) {
        list.add(parse_conditional_data_item());
        accept(",");
    }
    return list.finish();
}

ValuePtr Parser::parse_conditional_action() {
    return parse_conditional(&Parser::parse_action_list, &Parser::parse_action_sequence);
}
ValuePtr Parser::parse_action_sequence() {
    return parse_sequence(&Parser::parse_conditional_action, &Parser::starts_any_entry);
}

ValuePtr Parser::parse_conditional_element() {
    return parse_conditional(&Parser::parse_element, &Parser::parse_element_sequence);
}
ValuePtr Parser::parse_element_sequence() {
    return parse_sequence(&Parser::parse_conditional_element, &Parser::starts_any_entry);
}

ValuePtr Parser::parse_conditional_member() {
    return parse_conditional(&Parser::parse_member, &Parser::parse_member_sequence);
}
ValuePtr Parser::parse_member_sequence() {
    return parse_sequence(&Parser::parse_conditional_member, &Parser::starts_any_entry);
}

ValuePtr Parser::parse_conditional_response_code() {
    return parse_conditional(&Parser::parse_response_code, &Parser::parse_response_code_sequence);
}
ValuePtr Parser::parse_response_code_sequence() {
    return parse_sequence(&Parser::parse_conditional_response_code, &Parser::starts_response_code);
}

ValuePtr Parser::parse_conditional_menu_items() {
    return parse_conditional(&Parser::parse_menu_item_list, &Parser::parse_menu_item_sequence);
}
ValuePtr Parser::parse_menu_item_sequence() {
    return parse_sequence(&Parser::parse_conditional_menu_items, &Parser::starts_menu_item);
}

ValuePtr Parser::parse_conditional_purpose() {
    return parse_conditional(&Parser::parse_list_purposes, &Parser::parse_conditional_purpose);
}

ValuePtr Parser::parse_conditional_role() {
    return parse_conditional(&Parser::parse_list_roles, &Parser::parse_conditional_role);
}

ValuePtr Parser::parse_conditional_enumerators() {
    return parse_conditional(&Parser::parse_enumerator_list, &Parser::parse_enumerator_sequence);
}
ValuePtr Parser::parse_enumerator_sequence() {
    return parse_sequence(&Parser::parse_conditional_enumerators, &Parser::starts_any_entry);
}

ValuePtr Parser::parse_conditional_vectors() {
    return parse_conditional(&Parser::parse_vector_list, &Parser::parse_vector_sequence);
}
ValuePtr Parser::parse_vector_sequence() {
    return parse_sequence(&Parser::parse_conditional_vectors, &Parser::starts_any_entry);
}

ValuePtr Parser::parse_list_point_values() { return parse_list(&Parser::parse_point_value); }
ValuePtr Parser::parse_list_method_parameters() { return parse_list(&Parser::parse_method_parameter); }
ValuePtr Parser::parse_list_actions() { return parse_list(&Parser::parse_action); }
ValuePtr Parser::parse_list_purposes() { return parse_list(&Parser::parse_purpose); }
ValuePtr Parser::parse_list_roles() { return parse_list(&Parser::parse_role); }
ValuePtr Parser::parse_list_vectors() { return parse_list(&Parser::parse_vector); }

}  // namespace edd
