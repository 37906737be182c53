// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <string_view>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/expression.hpp"
#include "model/reference_value.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/list_builder.hpp"
#include "parser/parser.hpp"

namespace edd {

namespace {

// Binary operators by level, loosest first. Every level is right-associative: the right
// operand is read at the operator's own level, so a - b - c groups as a - (b - c).
struct BinaryOperator {
    Word word;
    std::uint8_t level;
};
constexpr BinaryOperator binary_operators[] = {
    {"||", 4}, {"&&", 5}, {"|", 6}, {"^", 7}, {"&", 8}, {"==", 9}, {"!=", 9}, {"<", 10}, {">", 10}, {"<=", 10},
    {">=", 10}, {"<<", 11}, {">>", 11}, {"+", 12}, {"-", 12}, {"*", 13}, {"/", 13}, {"%", 13},
};
constexpr int loosest_binary_level = 3;

constexpr Word assignment_operators[] = {"=", "+=", "-=", "*=", "/=", "%=", "<<=", ">>=", "&=", "^=", "|="};
constexpr Word prefix_operators[] = {"~", "!", "+", "-", "++", "--"};
constexpr Word postfix_operators[] = {"++", "--"};

// After every operand the parser asks whether an operator follows: one table, indexed by
// the look-ahead's word (operators are punctuators, numbered below the table's words),
// answers every such question.
struct OperatorRoles {
    std::uint8_t binary_level = 0;  // 0: no binary operator
    bool assignment = false;
    bool prefix = false;
    bool postfix = false;
};
constexpr auto operator_roles = [] {
    std::array<OperatorRoles, first_table_word> roles{};
    for (const BinaryOperator& op : binary_operators) roles[op.word.number()].binary_level = op.level;
    for (const Word word : assignment_operators) roles[word.number()].assignment = true;
    for (const Word word : prefix_operators) roles[word.number()].prefix = true;
    for (const Word word : postfix_operators) roles[word.number()].postfix = true;
    return roles;
}();

OperatorRoles roles_of(Word word) { return word.number() < first_table_word ? operator_roles[word.number()] : OperatorRoles{}; }

// 0 for a word that is no binary operator, below every level a caller asks for.
int binary_level(Word word) { return roles_of(word).binary_level; }

}  // namespace

// The operator that the caller has seen by look-ahead.
ValuePtr Parser::parse_operator() {
    advance();
    return make_simple(ValueKind::OPERATOR, consumed().text());
}

// Each level below asks one question of the look-ahead after its operand and returns the
// operand when the answer is no, as it is for most expressions (a number, a name): what an
// operator starts is read out of line, so that the common way down stays short.

// expression_list : assignment { ',' assignment } — a list only when a comma follows
ValuePtr Parser::parse_expression_list() {
    ValuePtr first = parse_assignment_expression();
    return at(",") ? continue_expression_list(first) : first;
}

ValuePtr Parser::continue_expression_list(ValuePtr first) {
    ListBuilder list(*this);
    list.add(first);
    while (accept(",")) {
        if (at("}")) {
            warning(messages::trailing_comma);
            break;
        }
        list.add(parse_assignment_expression());
    }
    return list.finish();
}

// assignment : conditional [ assignment_operator assignment ]
ValuePtr Parser::parse_assignment_expression() {
    ValuePtr left = parse_conditional_expression();
    return roles_of(peek().word()).assignment ? continue_assignment(left) : left;
}

ValuePtr Parser::continue_assignment(ValuePtr left) {
    DepthGuard guard(*this);
    ValuePtr op = parse_operator();
    ValuePtr right = parse_assignment_expression();
    return make<Expression>(left, op, right);
}

// conditional : logical_or [ '?' expression_list ':' expression_list ]
ValuePtr Parser::parse_conditional_expression() {
    ValuePtr condition = parse_binary_expression(loosest_binary_level);
    return at("?") ? continue_conditional(condition) : condition;
}

ValuePtr Parser::continue_conditional(ValuePtr condition) {
    DepthGuard guard(*this);
    expect("?");
    ValuePtr question = make_simple(ValueKind::OPERATOR, "?");
    ValuePtr first = parse_expression_list();
    expect(":");
    ValuePtr colon = make_simple(ValueKind::OPERATOR, ":");
    ValuePtr second = parse_expression_list();
    return make<Expression>(condition, question, first, colon, second);
}

// binary : prefix [ operator binary ]   for the operators tighter than `limit`
ValuePtr Parser::parse_binary_expression(int limit) {
    ValuePtr left = parse_prefix_expression();
    return binary_level(peek().word()) > limit ? continue_binary(left, limit) : left;
}

ValuePtr Parser::continue_binary(ValuePtr left, int limit) {
    for (int level = binary_level(peek().word()); level > limit; level = binary_level(peek().word())) {
        DepthGuard guard(*this);
        ValuePtr op = parse_operator();
        ValuePtr right = parse_binary_expression(level - 1);
        left = make<Expression>(left, op, right);
    }
    return left;
}

// prefix : prefix_operator prefix | postfix
ValuePtr Parser::parse_prefix_expression() {
    return roles_of(peek().word()).prefix ? parse_prefix_operation() : parse_postfix_expression();
}

ValuePtr Parser::parse_prefix_operation() {
    DepthGuard guard(*this);
    ValuePtr op = parse_operator();
    ValuePtr operand = parse_prefix_expression();
    return make<Expression>(op, operand);
}

// postfix : primary [ '++' | '--' ]
ValuePtr Parser::parse_postfix_expression() {
    ValuePtr operand = parse_primary_expression();
    return roles_of(peek().word()).postfix ? continue_postfix(operand) : operand;
}

ValuePtr Parser::continue_postfix(ValuePtr operand) {
    ValuePtr op = parse_operator();
    return make<Expression>(operand, op);
}

// primary : '(' expression_list ')' | integer | float | string_value | reference_or_call
//         | keyword { '&' keyword }
ValuePtr Parser::parse_primary_expression() {
    switch (peek().kind()) {
    case LEFT_BRACKET: return parse_bracketed_expression();
    case INTEGER: return expect_integer();
    case FLOAT: return expect_float();
    case STRING:
    case LEFT_SQUARE_BRACKET: return parse_string_value();
    case IDENTIFIER: return parse_reference_or_call();
    case EDDL_KEYWORD: return parse_keyword_combination();
    default:
        // Not consumed: the caller meets the same token and decides.
        error(format_message(messages::expected_primary, {peek().text()}));
        return make<NullValue>();
    }
}

// bracketed : '(' expression_list ')' — kept with its brackets as operators
ValuePtr Parser::parse_bracketed_expression() {
    DepthGuard guard(*this);
    expect("(");
    ValuePtr open = make_simple(ValueKind::OPERATOR, "(");
    ValuePtr inner = parse_expression_list();
    expect(")");
    return make<Expression>(open, inner, make_simple(ValueKind::OPERATOR, ")"));
}

// string_value : string { string } | '[' identifier ']' | reference
ValuePtr Parser::parse_string_value() {
    const Position where = position_of(peek());
    if (at_kind(STRING)) {
        advance();
        if (!at_kind(STRING)) return observed(make<SimpleValue>(ValueKind::STRING, consumed().text()), where);
        std::string text(consumed().text());
        while (at_kind(STRING)) {
            advance();
            text += consumed().text();
        }
        return observed(make_simple(ValueKind::STRING, text), where);
    }
    if (accept("[")) {
        const Position key_at = position_of(peek());
        const std::string key(read_identifier(true));
        expect("]");
        return observed(make_simple(ValueKind::DICTIONARY_REFERENCE, key), key_at);
    }
    if (at_kind(IDENTIFIER)) return parse_reference();
    advance();
    fatal_at_consumed(messages::expected_string);
}

// reference : identifier [ '[' ( reference | integer ) ']' ] { ( '->' | '.' ) identifier }
// The path is kept as written; the index is the reference's argument.
ValuePtr Parser::parse_reference() {
    const Position where = position_of(peek());
    const std::string_view name = read_identifier(false);
    // Most references are a name alone: no path to build.
    if (!at("[") && !at("->") && !at(".")) return observed(make<ReferenceValue>(name), where);
    std::string path(name);
    ValuePtr index;
    if (at("[")) {
        DepthGuard guard(*this);
        expect("[");
        path += '[';
        if (at_kind(IDENTIFIER)) {
            index = parse_reference();
            path += static_cast<const ReferenceValue&>(*index).name();
        } else if (at_kind(INTEGER)) {
            index = expect_integer();
            path += static_cast<const SimpleValue&>(*index).text();
        } else {
            // Any other index (a negative number, a bracketed sum) is read as an expression.
            index = parse_expression_list();
            path += index->to_string();
        }
        path += ']';
        expect("]");
    }
    while (at("->") || at(".")) {
        advance();
        path += consumed().text();
        path += read_identifier(false);
    }
    auto* reference = make<ReferenceValue>(path);
    if (index.is_set()) reference->set_argument(index);
    return observed(reference, where);
}

// reference_or_call : reference [ '(' [ expression_list ] ')' ]
// A call keeps its arguments as the reference's argument (an empty list for f()).
ValuePtr Parser::parse_reference_or_call() {
    const Position where = position_of(peek());
    ValuePtr reference = parse_reference();
    if (!at("(")) return reference;
    DepthGuard guard(*this);
    expect("(");
    ValuePtr arguments = at(")") ? ValuePtr(make<ValueList>()) : parse_expression_list();
    expect(")");
    // A call keeps its name; an index of the name does not carry over.
    auto* call = make<ReferenceValue>(static_cast<const ReferenceValue&>(*reference).name());
    call->set_argument(arguments);
    return observed(call, where);
}

// keyword_combination : keyword { '&' keyword } — one keyword alone, else a list of them
ValuePtr Parser::parse_keyword_combination() {
    ValuePtr first = expect_keyword();
    if (!at("&")) return first;
    ListBuilder list(*this);
    list.add(first);
    while (accept("&")) list.add(expect_keyword());
    return list.finish();
}

}  // namespace edd
