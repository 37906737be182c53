// SPDX-License-Identifier: Apache-2.0
#include "diagnostics/diagnostics.hpp"

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

namespace {

std::string_view severity_word(Severity severity) { return severity == Severity::warning ? "warning" : "error"; }

// The line shapes, side by side. Their differences are part of the output: the parser's
// and the preprocessor's lines put no blank before "(", the lexer's does, and the line of
// an imported duplicate has no colon after the position.

// file(line): severity: message
std::string severity_line(std::string_view file, int line, Severity severity, std::string_view message) {
    std::string text = position_text(file, line);
    text += ": ";
    text += severity_word(severity);
    text += ": ";
    text += message;
    text += '\n';
    return text;
}

// file (line): error: message
std::string lexer_line(std::string_view file, int line, std::string_view message) {
    std::string text(file);
    text += " (";
    text += std::to_string(line);
    text += "): error: ";
    text += message;
    text += '\n';
    return text;
}

// file(line) error: message
std::string uncounted_error_line(std::string_view file, int line, std::string_view message) {
    std::string text = position_text(file, line);
    text += " error: ";
    text += message;
    text += '\n';
    return text;
}

}  // namespace

std::string position_text(std::string_view file, int line) {
    return format_message(messages::position, {file, std::to_string(line)});
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
    write(out_, lexer_line(file, line, message));
}

void Diagnostics::duplicate_object(std::string_view file, int line, std::string_view name, std::string_view first_file,
                                   int first_line) {
    const std::string message =
        format_message(messages::duplicate_object, {name, position_text(first_file, first_line)});
    write(out_, uncounted_error_line(file, line, message));
}

void Diagnostics::positioned(std::string_view file, int line, std::string_view message) {
    write(out_, position_text(file, line) + std::string(message) + '\n');
}

void Diagnostics::related_file_missing(std::string_view path) {
    write(out_, format_message(messages::could_not_open_related_file, {path}));
}

void Diagnostics::line(std::string_view text) { write(out_, std::string(text) + '\n'); }

void Diagnostics::fatal(std::string_view message, std::string_view type_name) {
    line(format_message(messages::fatal_error, {message, type_name}));
}

void Diagnostics::standard_error(std::string_view text) { write(standard_error_, std::string(text) + '\n'); }

}  // namespace edd
