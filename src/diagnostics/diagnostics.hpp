// SPDX-License-Identifier: Apache-2.0
// The one way messages leave the program. Every component is handed the run's Diagnostics
// at construction; it knows the shape of each kind of line and counts what counts. A line
// is formatted whole and written with one write call, so that runs sharing a stream (make
// -j, xargs -P) never interleave inside a line.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

namespace edd {

enum class Severity { warning, error };

class Diagnostics {
public:
    // `out` is the diagnostics stream (standard error or the -e file); `standard_error`
    // takes the lines about faults of the converter itself.
    Diagnostics(std::ostream& out, std::ostream& standard_error) : out_(out), standard_error_(standard_error) {}
    Diagnostics(const Diagnostics&) = delete;
    Diagnostics& operator=(const Diagnostics&) = delete;

    // file(line): severity: message — the parser's reporter; errors count.
    void report(Severity severity, std::string_view file, int line, std::string_view message);
    // The same shape for the preprocessor, which counts nothing: its failures reach the
    // parser as ERROR tokens.
    void preprocessor(Severity severity, std::string_view file, int line, std::string_view message);
    // file (line): error: message
    void lexer_error(std::string_view file, int line, std::string_view message);
    // An imported item whose name is taken: position, " error: Duplicate definition of
    // object NAME. Obejct was previusly defined at " position ". " — not counted.
    void duplicate_object(std::string_view file, int line, std::string_view name, std::string_view first_file,
                          int first_line);
    // file(line) immediately followed by the message (the LIKE lines); not counted.
    void positioned(std::string_view file, int line, std::string_view message);
    // Could not open related file PATH. — without a line end.
    void related_file_missing(std::string_view path);
    // A line of its own on the diagnostics stream (import and driver messages).
    void line(std::string_view text);
    // Encountered a fatal error: message(type)
    void fatal(std::string_view message, std::string_view type_name);
    // A line on standard error: the converter's own faults and the command line's errors.
    void standard_error(std::string_view text);

    // An error reported already, as an ERROR token's line was.
    void count_error() { ++errors_; }
    int errors() const { return errors_; }

private:
    static void write(std::ostream& stream, const std::string& text);

    std::ostream& out_;
    std::ostream& standard_error_;
    int errors_ = 0;
};

// A position as every line prints it: file(line).
std::string position_text(std::string_view file, int line);

}  // namespace edd
