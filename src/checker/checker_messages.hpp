// SPDX-License-Identifier: Apache-2.0
// The checker's own texts besides the findings (those are in checks.hpp). The converter's
// texts that the checker prints as well (parse errors, files that cannot be opened) stay in
// diagnostics/messages.hpp.
#pragma once

#include <string_view>

namespace edd::checker_messages {

inline constexpr std::string_view usage =
    "Usage: tarnwick-check [-I path]... [-d file]... [-p profile] [--checks=LIST] file\n"
    "       tarnwick-check --list-checks [--checks=LIST]\n"
    "Parses the description as tarnwick does and reports what the conversion passes over,\n"
    "one line a finding: file(line): warning: text [check]. Exit status: 0 nothing found,\n"
    "1 something found, 2 the description could not be read or parsed.\n"
    "Options:\n"
    "    -I <path>         Include path.\n"
    "    -d <file>         Dictionary.\n"
    "    -p <prof>         The validation profile: PROFIBUS (default) or HART.\n"
    "    --checks=LIST     Checks to run: names, -name to leave one out, * for all.\n"
    "    --list-checks     List the checks, marking those that run.\n"
    "    -h, --help        This help.\n";
inline constexpr std::string_view missing_value = "tarnwick-check: missing value after %0";
inline constexpr std::string_view unknown_option = "tarnwick-check: unknown option %0";
inline constexpr std::string_view unknown_check = "tarnwick-check: unknown check %0 (see --list-checks)";
inline constexpr std::string_view no_input = "tarnwick-check: no input file";
inline constexpr std::string_view two_inputs = "tarnwick-check: more than one input file: %0 and %1";
inline constexpr std::string_view finding = "%0(%1): warning: %2 [%3]";
inline constexpr std::string_view no_findings = "tarnwick-check: no findings in %0";
inline constexpr std::string_view findings = "tarnwick-check: %0 findings in %1";
inline constexpr std::string_view one_finding = "tarnwick-check: 1 finding in %0";
inline constexpr std::string_view not_checked = "tarnwick-check: %0 was not checked: it could not be read or parsed";
inline constexpr std::string_view list_on = "on   ";
inline constexpr std::string_view list_off = "off  ";

// What stands in the findings for the places that are not an attribute.
inline constexpr std::string_view like_place = "LIKE";
inline constexpr std::string_view utf16_mark = "a UTF-16 byte-order mark";
inline constexpr std::string_view utf32_mark = "a UTF-32 byte-order mark";
inline constexpr std::string_view byte_ff = "a byte 0xFF, which ends the file for the lexer";
inline constexpr std::string_view type_separator = ", ";

}  // namespace edd::checker_messages
