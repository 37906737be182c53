#include "driver/driver.hpp"

#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <typeinfo>

#include "diagnostics/messages.hpp"
#include "diagnostics/report.hpp"
#include "diagnostics/type_name.hpp"
#include "driver/command_line.hpp"
#include "driver/exit_status.hpp"
#include "driver/options.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "frontend/source_text.hpp"
#include "validation/profile.hpp"

namespace edd {

namespace {

void print_failure(std::ostream& stream, std::string_view prefix, const std::string& name) {
    stream << prefix << name << ".\n";
    stream.flush();
}

// A directory opens as a stream on some systems but is no file to read.
bool can_open(const std::string& name) {
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) return false;
    std::ifstream probe(name, std::ios::binary);
    return probe.is_open();
}

// Everything before the last separator, or "." for a bare file name.
std::string directory_part(const std::string& name) {
    const auto separator = name.find_last_of("\\/");
    return separator == std::string::npos ? std::string(".") : name.substr(0, separator);
}

// The steps after the command line; exceptions escaping them are the caller's.
int convert(Options& options, std::ostream& diagnostics) {
    std::optional<std::string> source = read_file(options.input_file);
    if (!source) {
        print_failure(diagnostics, messages::failed_to_open_input, options.input_file);
        return exit_status::file_not_opened;
    }
    const Profile& profile = select_profile(options.profile);
    static_cast<void>(profile);

    Lexer lexer(Lexer::FromText{}, std::move(*source), options.input_file, diagnostics);
    Preprocessor preprocessor(lexer, options.include_paths, diagnostics);

    // Until the grammar reads them, the tokens are drained so that every front-end
    // diagnostic appears; each ERROR token counts as one error, as it will for the parser.
    unsigned errors = 0;
    for (Token token = preprocessor.next_token(); !token.is(END_OF_FILE); token = preprocessor.next_token())
        if (token.is(ERROR)) ++errors;
    if (errors != 0 && !options.continue_on_error) return exit_status::parse_failed;

    for (const std::string& dictionary : options.dictionary_files) {
        if (!can_open(dictionary)) {
            print_failure(diagnostics, messages::failed_to_open_dictionary, dictionary);
            return exit_status::file_not_opened;
        }
    }
    return exit_status::success;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
    std::ostream* diagnostics = &err;
    std::ofstream diagnostics_file;
    try {
        out << messages::banner << "\n\n";
        Options options;
        options.program_name = program_name_of(arguments.empty() ? std::string() : arguments.front());
        if (arguments.size() <= 1) {
            print_help(out, options.program_name);
            return exit_status::help;
        }
        const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
        if (auto status = scan_arguments(rest, options, out, err)) return *status;

        if (!options.diagnostics_file.empty()) {
            diagnostics_file.open(options.diagnostics_file, std::ios::out | std::ios::trunc);
            if (!diagnostics_file) {
                print_failure(err, messages::cannot_open_error_file, options.diagnostics_file);
                return exit_status::file_not_opened;
            }
            diagnostics = &diagnostics_file;
        }
        if (options.input_file.empty()) {
            err << messages::no_input_file << '\n';
            return exit_status::file_not_opened;
        }
        if (!can_open(options.input_file)) {
            print_failure(err, messages::could_not_open_input, options.input_file);
            return exit_status::file_not_opened;
        }
        if (options.output_file.empty()) options.output_file = options.input_file + ".xml";
        options.include_paths.push_back(directory_part(options.input_file));

        return convert(options, *diagnostics);
    } catch (const std::exception& e) {
        report_fatal(*diagnostics, e.what(), readable_type_name(typeid(e)));
        return exit_status::fatal;
    }
}

}  // namespace edd
