// SPDX-License-Identifier: Apache-2.0
// The expression grammar as one table: the value a LABEL expression parses to, drawn with
// its grouping: <parts> for an expression, {a, b} for a list, @path(argument) for a
// reference, null for an empty value, any other value as its text.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "model/expression.hpp"
#include "model/reference_value.hpp"
#include "model/value_list.hpp"
#include "parser/parser.hpp"

namespace edd {
namespace {

std::string shape(const Value& value) {
    switch (value.kind()) {
    case ValueKind::UNDEFINED: return "null";
    case ValueKind::EXPRESSION: {
        const auto& expression = static_cast<const Expression&>(value);
        std::string text("<");
        for (std::size_t i = 0; i < expression.part_count(); ++i) text.append(i ? " " : "").append(shape(*expression.part(i)));
        text += '>';
        return text;
    }
    case ValueKind::VALUE_LIST: {
        std::string text("{");
        for (const ValuePtr& item : static_cast<const ValueList&>(value).items())
            text.append(text.size() > 1 ? ", " : "").append(shape(*item));
        text += '}';
        return text;
    }
    case ValueKind::REFERENCE: {
        const auto& reference = static_cast<const ReferenceValue&>(value);
        std::string text("@");
        text += reference.name();
        if (reference.has_argument()) text.append("(").append(shape(*reference.argument())).append(")");
        return text;
    }
    default: return value.to_string();
    }
}

struct Case {
    std::string_view expression;
    std::string_view shape;
    std::string_view diagnostics = "";
};

const Case cases[] = {
    // Every binary level groups to the right; tighter levels bind first.
    {"a || b || c", "<@a || <@b || @c>>"},   {"a && b && c", "<@a && <@b && @c>>"},
    {"a | b | c", "<@a | <@b | @c>>"},       {"a ^ b ^ c", "<@a ^ <@b ^ @c>>"},
    {"a & b & c", "<@a & <@b & @c>>"},       {"a == b != c", "<@a == <@b != @c>>"},
    {"a < b > c", "<@a < <@b > @c>>"},       {"a <= b >= c", "<@a <= <@b >= @c>>"},
    {"a << b >> c", "<@a << <@b >> @c>>"},   {"1 - 2 - 3", "<1 - <2 - 3>>"},
    {"a * b / c % d", "<@a * <@b / <@c % @d>>>"},
    {"a + b * c", "<@a + <@b * @c>>"},       {"a * b + c", "<<@a * @b> + @c>"},
    {"a - b * c - d", "<@a - <<@b * @c> - @d>>"},
    {"a || b && c | d ^ e & f", "<@a || <@b && <@c | <@d ^ <@e & @f>>>>>"},
    {"a & b ^ c | d && e || f", "<<<<<@a & @b> ^ @c> | @d> && @e> || @f>"},
    {"a == b < c << d + e", "<@a == <@b < <@c << <@d + @e>>>>"},
    {"a < b == c", "<<@a < @b> == @c>"},
    // Assignments are loosest and group to the right too.
    {"a = b += c -= d", "<@a = <@b += <@c -= @d>>>"},
    {"a *= b /= c %= d <<= e", "<@a *= <@b /= <@c %= <@d <<= @e>>>>"},
    {"a >>= b &= c ^= d |= e", "<@a >>= <@b &= <@c ^= <@d |= @e>>>>"},
    {"a = b || c", "<@a = <@b || @c>>"},
    // Prefix operators nest; one postfix operator binds tightest.
    {"-x++", "<- <@x ++>>"},                 {"- - x", "<- <- @x>>"},
    {"!~x", "<! <~ @x>>"},                   {"++x + --y", "<<++ @x> + <-- @y>>"},
    {"+1 - -b", "<<+ 1> - <- @b>>"},         {"x-- * -a->b++", "<<@x --> * <- <@a->b ++>>>"},
    // The conditional operator has five parts; its branches are lists.
    {"x ? 1 : y ? 2 : 3", "<@x ? 1 : <@y ? 2 : 3>>"},
    {"a || b ? c = 1 : 2", "<<@a || @b> ? <@c = 1> : 2>"},
    {"a = x ? 1, 2 : 3", "<@a = <@x ? {1, 2} : 3>>"},
    // Parentheses are kept as three parts.
    {"(a - b) - c", "<<( <@a - @b> )> - @c>"},
    {"((1, 2))", "<( <( {1, 2} )> )>"},
    // Primaries.
    {"\"ab\" \"cd\" + 0x2A * 1.5e3", "<\"abcd\" + <0x2A * 1.5e3>>"},
    {"\"IF\"", "\"IF\""},
    {"[my_key] + [LABEL]", "<[my_key] + [LABEL]>", "main.ddl(2): warning: LABEL is a reseved EDDL keyword.\n"},
    {"a[3]->b.c + a[i].b + a[b[1]]", "<@a[3]->b.c(3) + <@a[i].b(@i) + @a[b[1]](@b[1](1))>>"},
    {"f() + f(1, a + b) + obj.get(g(x))", "<@f({}) + <@f({1, <@a + @b>}) + @obj.get(@g(@x))>>"},
    {"LOCAL & DYNAMIC & DEVICE", "{LOCAL, DYNAMIC, DEVICE}"},
    {"a[-1]", "@a[- 1 ](<- 1>)"},
    // A missing operand is an empty value; its token is left for the caller.
    {"1 +", "<1 + null>", "main.ddl(2): error: Expected primary expression but got;\n"},
    {"f(1, )", "@f({1, null})", "main.ddl(2): error: Expected primary expression but got)\n"},
    {"1, 2,", "{1, 2, null}", "main.ddl(2): error: Expected primary expression but got;\n"},
    {"LOCAL & x", "", "main.ddl(2): error: Expected keyword but got x\n"},
    {"x ? 1 ;", "", "main.ddl(2): error: Expected : but got ;\n"},
    {"a[1 + 2]", "", "main.ddl(2): error: Expected ] but got +\n"},
    {"[key", "", "main.ddl(2): error: Expected ] but got ;\n"},
};

TEST(Expression, Table) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.expression);
        std::ostringstream diag;
        Diagnostics sink(diag, diag);
        InputFiles files;
        Lexer lexer = Lexer::from_text("MANUFACTURER 1\nVARIABLE v { LABEL " + std::string(c.expression) + "; }\n",
                                       "main.ddl", sink);
        Preprocessor preprocessor(lexer, {}, files, sink);
        Parser parser(preprocessor, "main.ddl", select_profile(""), {}, files, sink);
        EXPECT_EQ(parser.parse(), c.diagnostics.find("error") == std::string_view::npos);
        const ItemTable& items = parser.description().items;
        const bool parsed = items.contains("v") && items.get("v").has_attribute(AttributeId::LABEL);
        EXPECT_EQ(parsed ? shape(*items.get("v").attribute(AttributeId::LABEL)) : std::string(), c.shape);
        EXPECT_EQ(diag.str(), c.diagnostics);
    }
}

}  // namespace
}  // namespace edd
