// SPDX-License-Identifier: Apache-2.0
#include "checker/checker.hpp"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>
#include <typeinfo>

#include "checker/check_context.hpp"
#include "checker/checker_messages.hpp"
#include "diagnostics/diagnostics.hpp"
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "diagnostics/type_name.hpp"
#include "files/file_names.hpp"
#include "files/input_files.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "model/like_resolution.hpp"
#include "parser/dictionary_reader.hpp"
#include "parser/parser.hpp"
#include "validation/profile.hpp"

namespace edd {

namespace {

namespace cm = checker_messages;

struct CheckerOptions {
    std::vector<std::string> include_paths;
    std::vector<std::string> dictionary_files;
    std::string profile = "PROFIBUS";
    std::string input_file;
    CheckSelection selection{};
    bool list_checks = false;
    bool help = false;
};

// Applies "name,-name,*,-*" over the selection as it stands; an error text for an unknown name.
std::optional<std::string> select_checks(std::string_view list, CheckSelection& selection) {
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        std::string_view entry = list.substr(0, comma);
        list.remove_prefix(std::min(comma + 1, list.size()));
        const bool on = !entry.starts_with('-');
        if (!on) entry.remove_prefix(1);
        if (entry == "*") {
            selection.fill(on);
        } else if (const std::optional<CheckId> id = find_check(entry)) {
            selection[static_cast<std::size_t>(*id)] = on;
        } else if (!entry.empty()) {
            return format_message(cm::unknown_check, {entry});
        }
    }
    return std::nullopt;
}

// An error text, or nothing when the arguments make sense.
std::optional<std::string> scan_arguments(std::span<const std::string> arguments, CheckerOptions& options) {
    for (const Check& check : checks) options.selection[static_cast<std::size_t>(check.id)] = check.on_by_default;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "-I" || argument == "-d" || argument == "-p") {
            if (i + 1 == arguments.size()) return format_message(cm::missing_value, {argument});
            const std::string& value = arguments[++i];
            if (argument == "-I") options.include_paths.push_back(value);
            else if (argument == "-d") options.dictionary_files.push_back(value);
            else options.profile = value;
        } else if (argument.starts_with("--checks=")) {
            if (auto error = select_checks(std::string_view(argument).substr(9), options.selection)) return error;
        } else if (argument == "--list-checks") {
            options.list_checks = true;
        } else if (argument == "-h" || argument == "--help") {
            options.help = true;
        } else if (argument.starts_with('-') && argument.size() > 1) {
            return format_message(cm::unknown_option, {argument});
        } else if (!options.input_file.empty()) {
            return format_message(cm::two_inputs, {options.input_file, argument});
        } else {
            options.input_file = argument;
        }
    }
    if (options.input_file.empty() && !options.list_checks && !options.help) return std::string(cm::no_input);
    return std::nullopt;
}

void list_checks(const CheckSelection& selection, std::ostream& out) {
    std::size_t width = 0;
    for (const Check& check : checks) width = std::max(width, check.name.size());
    for (const Check& check : checks)
        out << (selection[static_cast<std::size_t>(check.id)] ? cm::list_on : cm::list_off) << check.name
            << std::string(width + 2 - check.name.size(), ' ') << check.summary << '\n';
}

// The -d files merged in order, as the converter merges them; nothing when one cannot be
// opened or read (the reason printed).
std::optional<Dictionary> load_dictionaries(const CheckerOptions& options, InputFiles& files, Diagnostics& diagnostics) {
    Dictionary merged;
    if (read_dictionaries(options.dictionary_files, files, diagnostics, merged) != DictionariesRead::read)
        return std::nullopt;
    return merged;
}

int report(Findings& findings, const std::string& input, std::ostream& out) {
    findings.print(out);
    const std::size_t count = findings.size();
    out << (count == 0   ? format_message(cm::no_findings, {input})
            : count == 1 ? format_message(cm::one_finding, {input})
                         : format_message(cm::findings, {std::to_string(count), input}))
        << '\n';
    return count == 0 ? checker_status::clean : checker_status::found;
}

// Everything after the command line; exceptions escaping it are the caller's.
int check(const CheckerOptions& options, std::ostream& out, Diagnostics& diagnostics) {
    InputFiles files;
    std::optional<SourceText> source = files.read_source(options.input_file);
    if (!source) {
        diagnostics.standard_error(format_message(messages::could_not_open_input, {options.input_file}));
        return checker_status::not_checked;
    }
    std::vector<std::string> include_paths = options.include_paths;
    include_paths.push_back(directory_part(options.input_file));  // searched after the -I paths, as by the converter
    PositionRecorder positions;
    Lexer lexer(Lexer::FromText{}, std::move(*source), options.input_file, diagnostics);
    Preprocessor preprocessor(lexer, include_paths, files, diagnostics);
    Parser parser(preprocessor, options.input_file, select_profile(options.profile), include_paths, files,
                  diagnostics);
    parser.set_observer(&positions);
    const bool parsed = parser.parse();
    Findings findings(options.selection);
    check_sources(files.names(), findings);  // they may explain a failed parse
    const std::optional<Dictionary> dictionary = parsed ? load_dictionaries(options, files, diagnostics) : std::nullopt;
    if (!dictionary) {
        findings.print(out);
        out << format_message(cm::not_checked, {options.input_file}) << '\n';
        return checker_status::not_checked;
    }
    const Description description = parser.take_description();
    Description resolved{description.arena, description.identification, description.items};
    std::ostream quiet(nullptr);  // the converter reports LIKE bases; the checks do it their way
    Diagnostics resolution(quiet, quiet);
    resolve_like_items(resolved, resolution);
    const CheckContext context{description.items, resolved.items, positions,
                               options.dictionary_files.empty() ? nullptr : &*dictionary, options.input_file};
    check_references(context, findings);
    check_texts(context, findings);
    check_images(context, findings);
    return report(findings, options.input_file, out);
}

}  // namespace

std::optional<CheckId> find_check(std::string_view name) {
    for (const Check& check : checks)
        if (check.name == name) return check.id;
    return std::nullopt;
}

int run_checker(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    CheckerOptions options;
    const std::span<const std::string> rest =
        arguments.empty() ? std::span<const std::string>() : std::span(arguments).subspan(1);
    if (const std::optional<std::string> error = scan_arguments(rest, options)) {
        err << *error << '\n' << cm::usage;
        return checker_status::not_checked;
    }
    if (options.help) {
        out << cm::usage;
        return checker_status::clean;
    }
    if (options.list_checks) {
        list_checks(options.selection, out);
        return checker_status::clean;
    }
    Diagnostics diagnostics(err, err);
    try {
        return check(options, out, diagnostics);
    } catch (const FileTooLarge& e) {
        diagnostics.line(e.what());
    } catch (const std::exception& e) {
        diagnostics.fatal(e.what(), readable_type_name(typeid(e)));
    }
    return checker_status::not_checked;
}

}  // namespace edd
