// SPDX-License-Identifier: Apache-2.0
// The preprocessor's message lines, all at the position of the token read last.
#pragma once

#include <string_view>

#include "diagnostics/diagnostics.hpp"
#include "frontend/source_stack.hpp"

namespace edd {

// Thrown after a failed directive or expansion has printed its error line; the token
// delivery turns it into an ERROR token.
struct PreprocessorError {};

class PreprocessorReporter {
public:
    PreprocessorReporter(Diagnostics& diagnostics, const SourceStack& sources)
        : diagnostics_(diagnostics), sources_(sources) {}

    void warning(std::string_view message) const { report(Severity::warning, message); }
    void error(std::string_view message) const { report(Severity::error, message); }
    [[noreturn]] void fail(std::string_view message) const {
        error(message);
        throw PreprocessorError{};
    }

private:
    void report(Severity severity, std::string_view message) const {
        diagnostics_.preprocessor(severity, file_name_of(sources_.file()), sources_.line(), message);
    }

    Diagnostics& diagnostics_;
    const SourceStack& sources_;
};

}  // namespace edd
