// SPDX-License-Identifier: Apache-2.0
// Readable run-time type names for the messages that name an exception's class.
#pragma once

#include <string>
#include <typeinfo>

namespace edd {

// The demangled, namespace-qualified name of a type (e.g. "edd::ParseError").
std::string readable_type_name(const std::type_info& type);

}  // namespace edd
