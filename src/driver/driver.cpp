#include "driver/driver.hpp"

#include <exception>
#include <filesystem>
#include <fstream>
#include <memory>
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
#include "model/description.hpp"
#include "model/dictionary.hpp"
#include "parser/dictionary_reader.hpp"
#include "parser/parser.hpp"
#include "validation/like_resolution.hpp"
#include "xml/xml_writer.hpp"
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

// Loads the -d files in order into one dictionary. Returns the exit status when a file
// cannot be opened or read.
std::optional<int> load_dictionaries(const Options& options, std::ostream& diagnostics, Dictionary& merged) {
    for (const std::string& name : options.dictionary_files) {
        std::optional<std::string> text = can_open(name) ? read_file(name) : std::nullopt;
        if (!text) {
            print_failure(diagnostics, messages::failed_to_open_dictionary, name);
            return exit_status::file_not_opened;
        }
        Lexer lexer(Lexer::FromText{}, std::move(*text), name, diagnostics);
        DictionaryReader reader(lexer, diagnostics);
        if (!reader.load()) return exit_status::parse_failed;
        merged.append_all(reader.dictionary());
    }
    return std::nullopt;
}

// The stages of a conversion, freed in the reverse order of their making, or parked until
// the process ends (see Cleanup).
class Stages {
public:
    explicit Stages(Cleanup cleanup) : cleanup_(cleanup) {}
    Stages(const Stages&) = delete;
    Stages& operator=(const Stages&) = delete;
    ~Stages() {
        if (cleanup_ == Cleanup::leave_to_exit) {
            // Never deleted: the process ends soon, and the pointer keeps it all reachable.
            static auto* parked = new std::vector<std::shared_ptr<void>>;
            parked->insert(parked->end(), stages_.begin(), stages_.end());
        }
        while (!stages_.empty()) stages_.pop_back();
    }

    template <class T, class... Args>
    T& make(Args&&... args) {
        auto stage = std::make_shared<T>(std::forward<Args>(args)...);
        stages_.push_back(stage);
        return *stage;
    }

private:
    Cleanup cleanup_;
    std::vector<std::shared_ptr<void>> stages_;
};

// The steps after the command line; exceptions escaping them are the caller's.
int convert(Options& options, std::ostream& diagnostics, Cleanup cleanup) {
    std::optional<std::string> source = read_file(options.input_file);
    if (!source) {
        print_failure(diagnostics, messages::failed_to_open_input, options.input_file);
        return exit_status::file_not_opened;
    }
    const Profile& profile = select_profile(options.profile);

    Stages stages(cleanup);
    Lexer& lexer = stages.make<Lexer>(Lexer::FromText{}, std::move(*source), options.input_file, diagnostics);
    Preprocessor& preprocessor = stages.make<Preprocessor>(lexer, options.include_paths, diagnostics);
    Parser& parser = stages.make<Parser>(preprocessor, options.input_file, profile, options.include_paths, diagnostics);
    if (!parser.parse() && !options.continue_on_error) return exit_status::parse_failed;

    // The description moves on from stage to stage: a run holds one copy of it.
    XML_Writer& writer =
        stages.make<XML_Writer>(resolve_like_items(parser.take_description(), diagnostics), diagnostics);

    if (!options.dictionary_files.empty()) {
        Dictionary dictionary;
        if (auto status = load_dictionaries(options, diagnostics, dictionary)) return *status;
        writer.set_dictionary(dictionary);
    }

    writer.build();
    writer.save(options.output_file);

    if (options.dump) {
        std::ofstream dump(options.dump_file);
        dump_items(dump, writer.description().items.items());
    }
    return exit_status::success;
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, Cleanup cleanup) {
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

        return convert(options, *diagnostics, cleanup);
    } catch (const std::exception& e) {
        report_fatal(*diagnostics, e.what(), readable_type_name(typeid(e)));
        return exit_status::fatal;
    }
}

}  // namespace edd
