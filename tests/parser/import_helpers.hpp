// Helpers for the identification, IMPORT, LIKE and dictionary reader tests: one parse of an
// in-memory main file through the preprocessor, with everything it reported on the
// diagnostics stream and on standard error, and a one-line summary of an item.
#pragma once

#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "model/description.hpp"
#include "model/item.hpp"
#include "parser/parser.hpp"
#include "validation/profile.hpp"

namespace edd::import_test {

// Redirects std::cerr for its lifetime; the parser's last-resort handlers write there.
class CerrCapture {
public:
    CerrCapture() : saved_(std::cerr.rdbuf(captured_.rdbuf())) {}
    ~CerrCapture() { std::cerr.rdbuf(saved_); }
    CerrCapture(const CerrCapture&) = delete;
    CerrCapture& operator=(const CerrCapture&) = delete;

    std::string str() const { return captured_.str(); }

private:
    std::ostringstream captured_;
    std::streambuf* saved_;
};

struct ParseRun {
    bool ok = false;
    int errors = 0;
    int warnings = 0;
    std::string diagnostics;   // the diagnostics stream
    std::string error_output;  // standard error
    Description description;
};

inline const ProfibusProfile& profibus() {
    static const ProfibusProfile profile;
    return profile;
}

// Parses `text` as the main file `file_name` with the given include paths and profile.
inline ParseRun parse_text(std::string text, std::vector<std::string> include_paths = {},
                           const Profile& profile = profibus(), const std::string& file_name = "main.ddl") {
    std::ostringstream diagnostics;
    ParseRun run;
    {
        CerrCapture error_output;
        Lexer lexer = Lexer::from_text(std::move(text), file_name, diagnostics);
        Preprocessor preprocessor(lexer, include_paths, diagnostics);
        Parser parser(preprocessor, file_name, profile, include_paths, diagnostics);
        run.ok = parser.parse();
        run.errors = parser.get_error_count();
        run.warnings = parser.get_warning_count();
        run.description = parser.take_description();
        run.error_output = error_output.str();
    }
    run.diagnostics = diagnostics.str();
    return run;
}

// "VARIABLE a LIKE base { LABEL "x"; HELP "y"; }": the type (empty when the definition named
// none), the name, the parent when there is one, and every set attribute in code order.
inline std::string summary(const Item& item) {
    std::string out = std::string(name_of(item.type())) + ' ' + item.name();
    if (item.has_parent()) out += " LIKE " + item.parent();
    out += " {";
    for (AttributeId id : item.defined_attributes())
        out += ' ' + std::string(name_of(id)) + ' ' + item.attribute(id)->to_string() + ';';
    return out + " }";
}

// The summaries of all items in table order.
inline std::vector<std::string> summaries(const ItemTable& items) {
    std::vector<std::string> out;
    for (const Item& item : items.items()) out.push_back(summary(item));
    return out;
}

// Where the item was defined, printed as diagnostics print positions.
inline std::string position_of(const Item& item) {
    return item.origin().file_name() + '(' + std::to_string(item.origin().line()) + ')';
}

}  // namespace edd::import_test
