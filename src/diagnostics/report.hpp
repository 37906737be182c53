// The line shapes of the diagnostics stream. Each reporter has its own shape and they differ
// on purpose (the lexer puts a blank before "(", the duplicate-definition line has no colon),
// so each shape is one function here, side by side.
#pragma once

#include <ostream>
#include <string_view>

namespace edd {

enum class Severity { information, warning, error };

std::string_view severity_word(Severity severity);

// name(line)
void print_position(std::ostream& out, std::string_view file, int line);

// name(line): severity: message — the parser's reporter and the preprocessor. `flush` is
// the parser's habit; the preprocessor leaves its lines buffered.
void report_line(std::ostream& out, std::string_view file, int line, Severity severity,
                 std::string_view message, bool flush);

// name (line): error: message
void report_lexer_error(std::ostream& out, std::string_view file, int line, std::string_view message);

// An imported object whose name is taken already; not counted as an error.
void report_duplicate_definition(std::ostream& out, std::string_view file, int line,
                                 std::string_view name, std::string_view first_file, int first_line);

// Encountered a fatal error: message(type)
void report_fatal(std::ostream& out, std::string_view message, std::string_view type_name);

}  // namespace edd
