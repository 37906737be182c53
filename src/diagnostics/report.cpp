#include "diagnostics/report.hpp"

#include "diagnostics/messages.hpp"

namespace edd {

std::string_view severity_word(Severity severity) {
    switch (severity) {
    case Severity::information: return "information";
    case Severity::warning: return "warning";
    case Severity::error: return "error";
    }
    return "error";
}

void print_position(std::ostream& out, std::string_view file, int line) {
    out << file << '(' << line << ')';
}

void report_line(std::ostream& out, std::string_view file, int line, Severity severity,
                 std::string_view message, bool flush) {
    print_position(out, file, line);
    out << ": " << severity_word(severity) << ": " << message << '\n';
    if (flush) out.flush();
}

void report_lexer_error(std::ostream& out, std::string_view file, int line, std::string_view message) {
    out << file << " (" << line << "): error: " << message << '\n';
}

void report_duplicate_definition(std::ostream& out, std::string_view file, int line,
                                 std::string_view name, std::string_view first_file, int first_line) {
    print_position(out, file, line);
    out << " error: " << messages::duplicate_object << name << ". " << messages::previously_defined_at;
    print_position(out, first_file, first_line);
    out << ". " << '\n';
    out.flush();
}

void report_fatal(std::ostream& out, std::string_view message, std::string_view type_name) {
    out << messages::fatal_error << message << '(' << type_name << ')' << '\n';
    out.flush();
}

}  // namespace edd
