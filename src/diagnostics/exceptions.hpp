// SPDX-License-Identifier: Apache-2.0
// The exception classes of the converter. Each is reported before it is thrown, so the
// places that catch them never print the message again (the driver's fatal handler aside).
#pragma once

#include <stdexcept>
#include <string>

#include "diagnostics/messages.hpp"

namespace edd {

// A fatal parse error; carries the text that was just reported.
class ParseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A required object of the model is absent.
class NullPointer : public std::logic_error {
public:
    NullPointer() : std::logic_error(std::string(messages::null_pointer)) {}
};

}  // namespace edd
