// SPDX-License-Identifier: Apache-2.0
// The list and conditional templates, and the table of the lists they read.
#include <iterator>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/conditionals.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/list_builder.hpp"
#include "parser/parser.hpp"

namespace edd {

struct Parser::ListGrammar {
    // What a branch of IF or SELECT holds: one conditional of the same list, or conditional
    // entries one after another, perhaps each followed by a comma.
    enum Branch : std::uint8_t { SAME, SEQUENCE, SEQUENCE_WITH_COMMAS };
    // What starts an entry of a sequence.
    enum Start : std::uint8_t { ANY, RESPONSE_CODE, MENU_ITEM };

    ValuePtr (Parser::*entry)();
    bool comma_list;  // the plain form: entries separated by commas, else one entry
    Branch branch;
    Start start;
    std::string_view trailing;  // the warning for a comma before the end; empty: "Stray ,"
};

// One row per List, in its order.
constexpr Parser::ListGrammar Parser::list_grammars[] = {
    // VALUES: plain_value, branch conditional_value
    {&Parser::parse_plain_value, false, ListGrammar::SAME, ListGrammar::ANY, {}},
    // DATA_ITEMS: data_item, branch { conditional_data_item [','] }
    {&Parser::parse_data_item, false, ListGrammar::SEQUENCE_WITH_COMMAS, ListGrammar::ANY, {}},
    // ACTIONS: action { ',' action }, branch { conditional_actions }
    {&Parser::parse_action, true, ListGrammar::SEQUENCE, ListGrammar::ANY, {}},
    // ELEMENTS: element, branch { conditional_element }
    {&Parser::parse_element, false, ListGrammar::SEQUENCE, ListGrammar::ANY, {}},
    // MEMBERS: member, branch { conditional_member }
    {&Parser::parse_member, false, ListGrammar::SEQUENCE, ListGrammar::ANY, {}},
    // RESPONSE_CODES: response_code, branch { conditional_response_code }
    {&Parser::parse_response_code, false, ListGrammar::SEQUENCE, ListGrammar::RESPONSE_CODE, {}},
    // MENU_ITEMS: menu_item { ',' menu_item } [','], branch { conditional_menu_items }
    {&Parser::parse_menu_item, true, ListGrammar::SEQUENCE, ListGrammar::MENU_ITEM, messages::trailing_comma_in_items},
    // PURPOSES: purpose { ',' purpose }, branch conditional_purposes
    {&Parser::parse_purpose, true, ListGrammar::SAME, ListGrammar::ANY, {}},
    // ROLES: role { ',' role }, branch conditional_roles
    {&Parser::parse_role, true, ListGrammar::SAME, ListGrammar::ANY, {}},
    // ENUMERATORS: enumerator { ',' enumerator } [','], branch { conditional_enumerators }
    {&Parser::parse_enumerator, true, ListGrammar::SEQUENCE, ListGrammar::ANY, messages::trailing_comma_in_enumerator},
    // VECTORS: vector { ',' vector }, branch { conditional_vectors }
    {&Parser::parse_vector, true, ListGrammar::SEQUENCE, ListGrammar::ANY, {}},
    // POINTS: point { ',' point } — never conditional
    {&Parser::parse_point_value, true, ListGrammar::SAME, ListGrammar::ANY, {}},
    // METHOD_PARAMETERS: parameter { ',' parameter } — never conditional
    {&Parser::parse_method_parameter, true, ListGrammar::SAME, ListGrammar::ANY, {}},
};

const Parser::ListGrammar& Parser::grammar(List list) {
    static_assert(std::size(list_grammars) == static_cast<std::size_t>(List::METHOD_PARAMETERS) + 1);
    return list_grammars[static_cast<std::size_t>(list)];
}

void Parser::skip_trailing_semicolon() {
    if (accept(";")) warning(messages::trailing_semicolon);
}

// conditional_X : if_X | select_X | X
ValuePtr Parser::parse_conditional(List list) {
    if (at("IF")) return parse_if(list);
    if (at("SELECT")) return parse_select(list);
    return grammar(list).comma_list ? parse_list(list) : (this->*grammar(list).entry)();
}

// if_X : IF '(' expression_list ')' '{' branch_X [';'] '}' [ ELSE '{' [ branch_X [';'] ] '}' [';'] ]
// A ';' after a then-branch without ELSE is left for the caller.
ValuePtr Parser::parse_if(List list) {
    DepthGuard guard(*this);
    auto* conditional = make<IfConditional>();
    conditional->set_condition(parse_conditional_head("IF"));
    conditional->set_then(parse_branch(list));
    skip_trailing_semicolon();
    expect("}");
    if (!accept("ELSE")) return conditional;
    expect("{");
    if (at("}")) {
        conditional->set_else(make<NullValue>());
        warning(messages::empty_else);
    } else {
        conditional->set_else(parse_branch(list));
        skip_trailing_semicolon();
    }
    expect("}");
    skip_trailing_semicolon();
    return conditional;
}

// select_X : SELECT '(' expression_list ')' '{' { CASE expression_list ':' branch_X [';']
//                                                | DEFAULT ':' branch_X [';'] } '}' [';']
ValuePtr Parser::parse_select(List list) {
    DepthGuard guard(*this);
    auto* select = make<SelectConditional>();
    select->set_selector(parse_conditional_head("SELECT"));
    while (!at("}")) {
        if (accept("CASE")) {
            ValuePtr label = parse_expression_list();
            expect(":");
            ValuePtr value = parse_branch(list);
            skip_trailing_semicolon();
            select->add_case(*description_.arena, label, value);
        } else if (accept("DEFAULT")) {
            expect(":");
            ValuePtr value = parse_branch(list);
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

// conditional_head : ( IF | SELECT ) '(' expression_list ')' '{' — gives the expression list
ValuePtr Parser::parse_conditional_head(Word keyword) {
    expect(keyword);
    expect("(");
    ValuePtr expressions = parse_expression_list();
    expect(")");
    expect("{");
    return expressions;
}

// branch_X : conditional_X | X_sequence, as the list's row says
ValuePtr Parser::parse_branch(List list) {
    return grammar(list).branch == ListGrammar::SAME ? parse_conditional(list) : parse_sequence(list);
}

// X_sequence : { conditional_X } | { conditional_X [','] }
ValuePtr Parser::parse_sequence(List list) {
    const bool commas = grammar(list).branch == ListGrammar::SEQUENCE_WITH_COMMAS;
    ListBuilder entries(*this);
    while (starts_entry(list)) {
        entries.add(parse_conditional(list));
        if (commas) accept(",");
    }
    return entries.finish();
}

// braced_X : '{' X_sequence '}'
ValuePtr Parser::parse_braced_sequence(List list) {
    expect("{");
    ValuePtr entries = parse_sequence(list);
    expect("}");
    return entries;
}

// list_X : X [ ',' X { ',' X } ] — a single entry stays itself; a comma before IF, SELECT,
// CASE or '}' is a stray one
ValuePtr Parser::parse_list(List list) {
    const ListGrammar& rows = grammar(list);
    ValuePtr first = (this->*rows.entry)();
    if (!at(",")) return first;
    ListBuilder entries(*this);
    entries.add(first);
    while (accept(",")) {
        if (at("IF") || at("SELECT") || at("CASE") || at("}")) {
            warning(rows.trailing.empty() ? format_message(messages::stray, {consumed().text()})
                                          : std::string(rows.trailing));
            break;
        }
        entries.add((this->*rows.entry)());
    }
    return entries.finish();
}

// Whether the look-ahead starts an entry of the list's sequence. Anything may, but what ends
// a branch: a ';' too, which the template reports as a trailing semicolon.
bool Parser::starts_entry(List list) const {
    switch (grammar(list).start) {
    case ListGrammar::ANY: return !at("}") && !at(";") && !at("CASE") && !at("DEFAULT") && !at_end();
    case ListGrammar::RESPONSE_CODE: return at_kind(INTEGER) || at("IF") || at("SELECT");
    case ListGrammar::MENU_ITEM:
        return at_kind(IDENTIFIER) || at_kind(STRING) || at("[") ||
               (at_kind(EDDL_KEYWORD) && !at("CASE") && !at("DEFAULT"));
    }
    return false;
}

}  // namespace edd
