#include <array>
#include <optional>
#include <string_view>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "model/expression.hpp"
#include "model/reference_value.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/parser.hpp"

namespace edd {

namespace {

// Binary operators by level, loosest first. Every level is right-associative: the right
// operand is read at the operator's own level, so a - b - c groups as a - (b - c).
struct BinaryOperator {
    std::string_view spelling;
    int level;
};
constexpr BinaryOperator binary_operators[] = {
    {"||", 4}, {"&&", 5}, {"|", 6}, {"^", 7}, {"&", 8}, {"==", 9}, {"!=", 9}, {"<", 10}, {">", 10}, {"<=", 10},
    {">=", 10}, {"<<", 11}, {">>", 11}, {"+", 12}, {"-", 12}, {"*", 13}, {"/", 13}, {"%", 13},
};
constexpr int loosest_binary_level = 3;

std::optional<int> binary_level(const Token& token) {
    const std::string_view text = token.text();
    // Every spelling is one or two characters; most tokens are ruled out by their length.
    if (token.is(STRING) || token.is(IDENTIFIER) || text.empty() || text.size() > 2) return std::nullopt;
    for (const BinaryOperator& op : binary_operators)
        if (op.spelling[0] == text[0] && op.spelling == text) return op.level;
    return std::nullopt;
}

template <std::size_t N>
bool is_one_of(const Token& token, const std::string_view (&spellings)[N]) {
    const std::string_view text = token.text();
    if (token.is(STRING) || token.is(IDENTIFIER) || text.empty()) return false;
    for (std::string_view spelling : spellings)
        if (spelling[0] == text[0] && spelling == text) return true;
    return false;
}

constexpr std::string_view assignment_operators[] = {"=", "+=", "-=", "*=", "/=", "%=", "<<=", ">>=", "&=", "^=", "|="};
constexpr std::string_view prefix_operators[] = {"~", "!", "+", "-", "++", "--"};
constexpr std::string_view postfix_operators[] = {"++", "--"};

ValuePtr operator_value(std::string_view spelling) {
    return make_value<SimpleValue>(ValueKind::OPERATOR, std::string(spelling));
}

}  // namespace

// Reads the operator that the caller has seen by look-ahead.
ValuePtr Parser::read_operator() {
    advance();
    return operator_value(current().text());
}

// expression_list : assignment { ',' assignment } — a list only when a comma follows
ValuePtr Parser::parse_expression_list() {
    ValuePtr first = parse_assignment_expression();
    if (!at(",")) return first;
    auto list = std::make_shared<ValueList>();
    list->add(std::move(first));
    while (at(",")) {
        expect(",");
        if (at("}")) {
            warning(messages::trailing_comma);
            break;
        }
        list->add(parse_assignment_expression());
    }
    return ValuePtr(list);
}

// assignment : conditional [ assignment_operator assignment ]
ValuePtr Parser::parse_assignment_expression() {
    ValuePtr left = parse_conditional_expression();
    if (!is_one_of(lookahead(), assignment_operators)) return left;
    DepthGuard guard(*this);
    ValuePtr op = read_operator();
    ValuePtr right = parse_assignment_expression();
    return make_value<Expression>(std::move(left), std::move(op), std::move(right));
}

// conditional : logical_or [ '?' expression_list ':' expression_list ]
ValuePtr Parser::parse_conditional_expression() {
    ValuePtr condition = parse_binary_expression(loosest_binary_level);
    if (!at("?")) return condition;
    DepthGuard guard(*this);
    expect("?");
    ValuePtr question = operator_value("?");
    ValuePtr first = parse_expression_list();
    expect(":");
    ValuePtr colon = operator_value(":");
    ValuePtr second = parse_expression_list();
    return make_value<Expression>(std::move(condition), std::move(question), std::move(first), std::move(colon),
                                  std::move(second));
}

// binary : prefix [ operator binary ]   for the operators tighter than `limit`
ValuePtr Parser::parse_binary_expression(int limit) {
    ValuePtr left = parse_prefix_expression();
    for (auto level = binary_level(lookahead()); level && *level > limit; level = binary_level(lookahead())) {
        DepthGuard guard(*this);
        ValuePtr op = read_operator();
        ValuePtr right = parse_binary_expression(*level - 1);
        left = make_value<Expression>(std::move(left), std::move(op), std::move(right));
    }
    return left;
}

// prefix : prefix_operator prefix | postfix
ValuePtr Parser::parse_prefix_expression() {
    if (!is_one_of(lookahead(), prefix_operators)) return parse_postfix_expression();
    DepthGuard guard(*this);
    ValuePtr op = read_operator();
    ValuePtr operand = parse_prefix_expression();
    return make_value<Expression>(std::move(op), std::move(operand));
}

// postfix : primary [ '++' | '--' ]
ValuePtr Parser::parse_postfix_expression() {
    ValuePtr operand = parse_primary_expression();
    if (!is_one_of(lookahead(), postfix_operators)) return operand;
    ValuePtr op = read_operator();
    return make_value<Expression>(std::move(operand), std::move(op));
}

// primary : '(' expression_list ')' | integer | float | string_value | reference_or_call
//         | keyword { '&' keyword }
ValuePtr Parser::parse_primary_expression() {
    switch (lookahead().kind()) {
    case LEFT_BRACKET: {
        DepthGuard guard(*this);
        expect("(");
        ValuePtr inner = parse_expression_list();
        expect(")");
        return make_value<Expression>(operator_value("("), std::move(inner), operator_value(")"));
    }
    case INTEGER: return expect_integer();
    case FLOAT: return expect_float();
    case STRING:
    case LEFT_SQUARE_BRACKET: return parse_string_value();
    case IDENTIFIER: return parse_reference_or_call();
    case EDDL_KEYWORD: return parse_keyword_combination();
    default:
        // Not consumed: the caller meets the same token and decides.
        error(concat({messages::expected_primary, lookahead().text()}));
        return make_value<NullValue>();
    }
}

// string_value : string { string } | '[' identifier ']' | reference
ValuePtr Parser::parse_string_value() {
    if (at_kind(STRING)) {
        std::string text;
        while (at_kind(STRING)) {
            advance();
            text += current().text();
        }
        return make_value<SimpleValue>(ValueKind::STRING, std::move(text));
    }
    if (at("[")) {
        expect("[");
        std::string key = parse_identifier(true);
        expect("]");
        return make_value<SimpleValue>(ValueKind::DICTIONARY_REFERENCE, std::move(key));
    }
    if (at_kind(IDENTIFIER)) return parse_reference();
    advance();
    fatal(format_message(messages::expected_string, {current().text()}));
}

// reference : identifier [ '[' ( reference | integer ) ']' ] { ( '->' | '.' ) identifier }
// The path is kept as written; the index is the reference's argument.
ValuePtr Parser::parse_reference() {
    std::string path = parse_identifier(false);
    ValuePtr index;
    if (at("[")) {
        DepthGuard guard(*this);
        expect("[");
        if (at_kind(IDENTIFIER)) {
            index = parse_reference();
            path += '[' + static_cast<const ReferenceValue&>(*index).name() + ']';
        } else if (at_kind(INTEGER)) {
            index = expect_integer();
            path += '[' + static_cast<const SimpleValue&>(*index).text() + ']';
        } else {
            // Any other index (a negative number, a bracketed sum) is read as an expression.
            index = parse_expression_list();
            path += '[' + index->to_string() + ']';
        }
        expect("]");
    }
    while (at("->") || at(".")) {
        advance();
        path += current().text();
        path += parse_identifier(false);
    }
    auto reference = std::make_shared<ReferenceValue>(std::move(path));
    if (index.is_set()) reference->set_argument(std::move(index));
    return ValuePtr(reference);
}

// reference_or_call : reference [ '(' [ expression_list ] ')' ]
// A call keeps its arguments as the reference's argument (an empty list for f()).
ValuePtr Parser::parse_reference_or_call() {
    ValuePtr reference = parse_reference();
    if (!at("(")) return reference;
    DepthGuard guard(*this);
    expect("(");
    ValuePtr arguments = at(")") ? make_value<ValueList>() : parse_expression_list();
    expect(")");
    auto call = std::make_shared<ReferenceValue>(static_cast<const ReferenceValue&>(*reference).name());
    call->set_argument(std::move(arguments));
    return ValuePtr(call);
}

// keyword_combination : keyword { '&' keyword } — one keyword alone, else a list of them
ValuePtr Parser::parse_keyword_combination() {
    ValuePtr first = expect_keyword();
    if (!at("&")) return first;
    auto list = std::make_shared<ValueList>();
    list->add(std::move(first));
    while (at("&")) {
        advance();
        list->add(expect_keyword());
    }
    return ValuePtr(list);
}

}  // namespace edd
