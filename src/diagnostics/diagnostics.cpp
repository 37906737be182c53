#include "diagnostics/diagnostics.hpp"

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

namespace {

// name(line)
void append_position(std::string& text, std::string_view file, int line) {
    text += file;
    text += '(';
    text += std::to_string(line);
    text += ')';
}

// name(line): severity: message
std::string severity_line(std::string_view file, int line, Severity severity, std::string_view message) {
    std::string text;
    text.reserve(file.size() + message.size() + 32);
    append_position(text, file, line);
    text += ": ";
    text += severity_word(severity);
    text += ": ";
    text += message;
    text += '\n';
    return text;
}

}  // namespace

std::string_view severity_word(Severity severity) {
    switch (severity) {
    case Severity::warning: return "warning";
    case Severity::error: return "error";
    }
    return "error";
}

void Diagnostics::write(std::ostream& stream, const std::string& text) {
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.flush();
}

void Diagnostics::report(Severity severity, std::string_view file, int line, std::string_view message) {
    if (severity == Severity::error) ++errors_;
    write(out_, severity_line(file, line, severity, message));
}

void Diagnostics::preprocessor(Severity severity, std::string_view file, int line, std::string_view message) {
    write(out_, severity_line(file, line, severity, message));
}

void Diagnostics::lexer_error(std::string_view file, int line, std::string_view message) {
    std::string text(file);
    text += " (";
    text += std::to_string(line);
    text += "): error: ";
    text += message;
    text += '\n';
    write(out_, text);
}

void Diagnostics::duplicate_object(std::string_view file, int line, std::string_view name, std::string_view first_file,
                                   int first_line) {
    std::string text;
    append_position(text, file, line);
    text += " error: ";
    text += messages::duplicate_object;
    text += name;
    text += ". ";
    text += messages::previously_defined_at;
    append_position(text, first_file, first_line);
    text += ". \n";
    write(out_, text);
}

void Diagnostics::positioned(std::string_view file, int line, std::string_view message) {
    std::string text;
    append_position(text, file, line);
    text += message;
    text += '\n';
    write(out_, text);
}

void Diagnostics::related_file_missing(std::string_view path) {
    write(out_, format_message(messages::could_not_open_related_file, {path}));
}

void Diagnostics::line(std::string_view text) { write(out_, std::string(text) + '\n'); }

void Diagnostics::fatal(std::string_view message, std::string_view type_name) {
    std::string text(messages::fatal_error);
    text += message;
    text += '(';
    text += type_name;
    text += ")\n";
    write(out_, text);
}

void Diagnostics::standard_error(std::string_view text) { write(standard_error_, std::string(text) + '\n'); }

}  // namespace edd
