// SPDX-License-Identifier: Apache-2.0
#include "driver/command_line.hpp"

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "driver/exit_status.hpp"

namespace edd {

namespace {

bool is_option(std::string_view argument) { return !argument.empty() && argument.front() == '-'; }

// A value is missing when there is none or it looks like an option itself.
bool has_value(const std::string* value) { return value != nullptr && !is_option(*value); }

std::optional<int> fail(Diagnostics& err, std::string_view message) {
    err.standard_error(message);
    return exit_status::command_line;
}

std::optional<int> handle_option(const std::string& option, const std::string* value, Options& options,
                                 std::ostream& out, Diagnostics& err) {
    if (option.size() != 2) return fail(err, format_message(messages::unknown_argument, {option}));
    auto take = [&](std::string& into, std::string_view missing) -> std::optional<int> {
        if (!has_value(value)) return fail(err, missing);
        into = *value;
        return std::nullopt;
    };
    auto append = [&](std::vector<std::string>& into, std::string_view missing) -> std::optional<int> {
        if (!has_value(value)) return fail(err, missing);
        into.push_back(*value);
        return std::nullopt;
    };
    switch (option[1]) {
    case 'I': return append(options.include_paths, messages::missing_include_path);
    case 'o': return take(options.output_file, messages::missing_output_file);
    case 'e': return take(options.diagnostics_file, messages::missing_error_file);
    case 'd': return append(options.dictionary_files, messages::missing_dictionary_file);
    case 'p': return take(options.profile, messages::missing_profile);
    case 'c': options.continue_on_error = true; return std::nullopt;
    case 'h': print_help(out, options.program_name); return exit_status::help;
    case 't':
        options.dump = true;
        if (has_value(value)) options.dump_file = *value;
        return std::nullopt;
    default: return std::nullopt;  // unlisted letters are accepted silently
    }
}

}  // namespace

std::string program_name_of(std::string_view first_argument) {
    const auto separator = first_argument.find_last_of("\\/");
    return std::string(separator == std::string_view::npos ? first_argument : first_argument.substr(separator + 1));
}

void print_help(std::ostream& out, std::string_view program_name) {
    out << format_message(messages::usage, {program_name}) << '\n';
    for (std::string_view line : messages::help_lines) out << line << '\n';
}

// An option takes the next argument as its value and that argument is skipped whether or
// not the option uses it: "-c input.ddl" leaves the input unset. Users put flags last.
std::optional<int> scan_arguments(const std::vector<std::string>& arguments, Options& options, std::ostream& out,
                                  Diagnostics& err) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!is_option(argument)) {
            if (!options.input_file.empty()) return fail(err, messages::multiple_inputs);
            options.input_file = argument;
            continue;
        }
        const std::string* value = i + 1 < arguments.size() ? &arguments[i + 1] : nullptr;
        if (auto status = handle_option(argument, value, options, out, err)) return status;
        if (value != nullptr) ++i;
    }
    return std::nullopt;
}

}  // namespace edd
