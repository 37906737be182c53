// Helpers shared by the parser tests: run a description text through lexer, preprocessor
// and parser, and render parsed values as compact tree shapes that show the grouping.
#pragma once

#include <cstddef>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "model/conditionals.hpp"
#include "model/description.hpp"
#include "model/expression.hpp"
#include "model/item.hpp"
#include "model/reference_value.hpp"
#include "model/simple_value.hpp"
#include "model/value_list.hpp"
#include "parser/parser.hpp"
#include "validation/profile.hpp"

namespace edd::parse_test {

// The identification every test source starts with; it takes line 1, so the first line
// of a body given to parse_body() is line 2.
inline constexpr std::string_view header = "MANUFACTURER 1, DEVICE_TYPE 2, DEVICE_REVISION 1, DD_REVISION 1\n";

struct Parsed {
    bool result = false;
    Description description;
    std::string diagnostics;
    int errors = 0;
    int warnings = 0;

    bool has(std::string_view name) const { return description.items.contains(name); }
    const Item& item(std::string_view name) const { return description.items.get(name); }
    bool has_attribute(std::string_view item_name, AttributeId id) const {
        return has(item_name) && item(item_name).has_attribute(id);
    }
    const Value& attribute(std::string_view item_name, AttributeId id) const {
        return *item(item_name).attribute(id);
    }
    std::vector<std::string> item_names() const {
        std::vector<std::string> names;
        for (const Item& i : description.items.items()) names.push_back(i.name());
        return names;
    }
};

// Parses `source` as main.ddl under the profile chosen by `profile` ("HART", "PROFIBUS",
// anything else: the null profile).
inline Parsed parse_source(std::string source, std::string_view profile = "") {
    std::ostringstream diag;
    Lexer lexer = Lexer::from_text(std::move(source), "main.ddl", diag);
    Preprocessor preprocessor(lexer, {}, diag);
    Parser parser(preprocessor, "main.ddl", select_profile(profile), {}, diag);
    Parsed parsed;
    parsed.result = parser.parse();
    parsed.description = parser.take_description();
    parsed.diagnostics = diag.str();
    parsed.errors = parser.get_error_count();
    parsed.warnings = parser.get_warning_count();
    return parsed;
}

// Parses the identification header followed by `body`.
inline Parsed parse_body(std::string_view body, std::string_view profile = "") {
    return parse_source(std::string(header) + std::string(body), profile);
}

// One diagnostics line of the parser reporter.
inline std::string line(int number, std::string_view severity, std::string_view message) {
    return "main.ddl(" + std::to_string(number) + "): " + std::string(severity) + ": " + std::string(message) + "\n";
}
inline std::string error_line(int number, std::string_view message) { return line(number, "error", message); }
inline std::string warning_line(int number, std::string_view message) { return line(number, "warning", message); }

// A tree rendering that makes the grouping visible:
//   expression      <part part ...>
//   list            {a, b}
//   reference       @path, with (argument) when there is one
//   IF / SELECT     IF(c){t}ELSE{e} / SELECT(s){CASE l:v DEFAULT:d}
//   empty value     null
//   literals        their to_string() text ("s", [key], 12, KEYWORD, +)
inline std::string shape(const Value& value);

inline std::string shape(const ValuePtr& value) { return value.is_set() ? shape(*value) : std::string("unset"); }

inline std::string shape(const Value& value) {
    switch (value.kind()) {
    case ValueKind::UNDEFINED: return "null";
    case ValueKind::EXPRESSION: {
        const auto& expression = static_cast<const Expression&>(value);
        std::string text = "<";
        for (std::size_t i = 0; i < expression.part_count(); ++i) {
            if (i != 0) text += ' ';
            text += shape(expression.part(i));
        }
        return text + ">";
    }
    case ValueKind::VALUE_LIST: {
        const auto& list = static_cast<const ValueList&>(value);
        std::string text = "{";
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (i != 0) text += ", ";
            text += shape(list.get(i));
        }
        return text + "}";
    }
    case ValueKind::REFERENCE: {
        const auto& reference = static_cast<const ReferenceValue&>(value);
        std::string text = "@" + reference.name();
        if (reference.has_argument()) text += "(" + shape(reference.argument()) + ")";
        return text;
    }
    case ValueKind::IF_CONDITIONAL: {
        const auto& conditional = static_cast<const IfConditional&>(value);
        std::string text = "IF(" + shape(conditional.condition()) + "){" + shape(conditional.then_value()) + "}";
        if (conditional.has_else()) text += "ELSE{" + shape(conditional.else_value()) + "}";
        return text;
    }
    case ValueKind::SELECT_CONDITIONAL: {
        const auto& select = static_cast<const SelectConditional&>(value);
        std::string text = "SELECT(" + shape(select.selector()) + "){";
        for (std::size_t i = 0; i < select.case_count(); ++i) {
            if (i != 0) text += ' ';
            text += "CASE " + shape(select.case_at(i).label()) + ":" + shape(select.case_at(i).value());
        }
        if (select.has_default()) {
            if (select.case_count() != 0) text += ' ';
            text += "DEFAULT:" + shape(select.default_value());
        }
        return text + "}";
    }
    default: return value.to_string();
    }
}

// The -t text of one parsed item.
inline std::string dumped(const Item& item) {
    std::ostringstream out;
    dump_item(out, item);
    return out.str();
}

}  // namespace edd::parse_test
