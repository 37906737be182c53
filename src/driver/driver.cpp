// SPDX-License-Identifier: Apache-2.0
#include "driver/driver.hpp"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <memory>
#include <new>
#include <optional>
#include <sstream>
#include <system_error>
#include <typeinfo>

#include "diagnostics/diagnostics.hpp"
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "diagnostics/type_name.hpp"
#include "driver/command_line.hpp"
#include "driver/exit_status.hpp"
#include "driver/options.hpp"
#include "files/dependency_file.hpp"
#include "files/file_names.hpp"
#include "files/input_files.hpp"
#include "files/output_file.hpp"
#include "files/output_stream.hpp"
#include "files/temporary_files.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "model/description.hpp"
#include "model/dictionary.hpp"
#include "model/like_resolution.hpp"
#include "parser/dictionary_reader.hpp"
#include "parser/parser.hpp"
#include "validation/profile.hpp"
#include "xml/xml_writer.hpp"

namespace edd {

namespace {

std::string failure(std::string_view message, const std::string& name) { return format_message(message, {name}); }

// The document's name: -o, or the input's name with ".xml" appended.
std::string output_name(const Options& options) {
    return options.output_file.empty() ? options.input_file + ".xml" : options.output_file;
}

// An output name (-o, -e, -t) that names the input or another output: writing it would
// destroy what the run reads or writes. Checked before anything is opened for writing.
std::optional<int> check_output_names(const Options& options, Diagnostics& diagnostics) {
    std::vector<std::string> outputs;
    if (!options.input_file.empty() || !options.output_file.empty()) outputs.push_back(output_name(options));
    if (!options.diagnostics_file.empty()) outputs.push_back(options.diagnostics_file);
    if (options.dump) outputs.push_back(options.dump_file);
    if (!options.dependency_file.empty()) outputs.push_back(options.dependency_file);
    auto refuse = [&](std::string_view message, const std::string& output, const std::string& other) {
        diagnostics.standard_error(format_message(message, {output, other}));
        return exit_status::command_line;
    };
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        if (!options.input_file.empty() && same_file(outputs[i], options.input_file))
            return refuse(messages::output_is_input, outputs[i], options.input_file);
        for (std::size_t j = 0; j < i; ++j)
            if (same_file(outputs[j], outputs[i])) return refuse(messages::outputs_collide, outputs[j], outputs[i]);
    }
    return std::nullopt;
}

// An output that turns out to be one of the files the run read (an include, a dictionary,
// ...): refused before anything is written.
std::optional<int> check_outputs_against_inputs(const Options& options, const InputFiles& files,
                                                Diagnostics& diagnostics) {
    std::vector<std::string> outputs{options.output_file};
    if (options.dump) outputs.push_back(options.dump_file);
    if (!options.dependency_file.empty()) outputs.push_back(options.dependency_file);
    for (const std::string& output : outputs) {
        if (const std::string* read = files.find(output)) {
            diagnostics.line(format_message(messages::output_was_read, {output, *read}));
            return exit_status::file_not_opened;
        }
    }
    return std::nullopt;
}

// A dependency file that make would misread breaks the build that asked for it, after a
// run that seemed to succeed: refused before anything is written.
std::optional<int> check_dependency_names(const Options& options, const InputFiles& files, Diagnostics& diagnostics) {
    if (options.dependency_file.empty()) return std::nullopt;
    const std::optional<std::string> name = unwritable_dependency_name(options.output_file, files.dependencies());
    if (!name) return std::nullopt;
    diagnostics.line(format_message(messages::dependency_name_unwritable, {options.dependency_file, *name}));
    return exit_status::file_not_opened;
}

// The exit status when a -d file cannot be opened or read.
std::optional<int> load_dictionaries(const Options& options, InputFiles& files, Diagnostics& diagnostics,
                                     Dictionary& merged) {
    switch (read_dictionaries(options.dictionary_files, files, diagnostics, merged)) {
    case DictionariesRead::not_opened: return exit_status::file_not_opened;
    case DictionariesRead::not_parsed: return exit_status::parse_failed;
    case DictionariesRead::read: break;
    }
    return std::nullopt;
}

// A file the run writes besides the document (the -t dump, the dependency file): written
// before the document is saved and put in place after it, so that a run failing anywhere
// changes none of its targets. A target written directly (a pipe, a device) gets its bytes
// only then, after the document, as it always has. Failures name the file and the reason.
class StagedFile {
public:
    StagedFile(std::string name, std::string_view failure, std::string contents)
        : name_(std::move(name)), failure_(failure), contents_(std::move(contents)) {
        guarded([&] {
            file_.emplace(name_);
            if (!file_->direct()) write_contents();
        });
    }
    void commit() {
        guarded([&] {
            if (file_->direct()) write_contents();
            file_->commit();
        });
    }

private:
    void write_contents() {
        file_->write(contents_);
        std::string().swap(contents_);
    }
    template <class Step>
    void guarded(Step step) {
        try {
            step();
        } catch (const std::system_error& e) {
            throw std::runtime_error(format_message(failure_, {name_, e.code().message()}));
        }
    }

    std::string name_;
    std::string_view failure_;
    std::string contents_;
    std::optional<OutputFile> file_;
};

std::string dump_text(const Description& description) {
    std::ostringstream text;
    dump_items(text, description.items.items());
    return text.str();
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

// The outputs, once no name among them can be a source: the dump and the dependency file
// staged, the document saved, then the staged files put in place.
int write_outputs(const Options& options, const InputFiles& files, Diagnostics& diagnostics, const XML_Writer& writer,
                  std::string& doing) {
    if (auto status = check_outputs_against_inputs(options, files, diagnostics)) return *status;
    // The -e file naming a source fails the run too; the -e file's end reports it.
    if (!options.diagnostics_file.empty() && files.find(options.diagnostics_file)) return exit_status::file_not_opened;
    if (auto status = check_dependency_names(options, files, diagnostics)) return *status;
    std::optional<StagedFile> dump, dependencies;
    if (options.dump) dump.emplace(options.dump_file, messages::dump_not_saved, dump_text(writer.description()));
    if (!options.dependency_file.empty())
        dependencies.emplace(options.dependency_file, messages::dependency_file_not_saved,
                             make_dependency_rules(options.output_file, files.dependencies()));
    doing = format_message(messages::doing_save, {options.output_file});
    writer.save(options.output_file);
    if (dump) dump->commit();
    if (dependencies) dependencies->commit();
    return exit_status::success;
}

// The steps after the command line; exceptions escaping them are the caller's.
// `doing` says what the run is doing, for a report of running out of memory.
int convert(Options& options, InputFiles& files, Diagnostics& diagnostics, Cleanup cleanup, std::string& doing) {
    doing = format_message(messages::doing_parse, {options.input_file});
    std::optional<SourceText> source = files.read_source(options.input_file);
    if (!source) {
        diagnostics.line(failure(messages::failed_to_open_input, options.input_file));
        return exit_status::file_not_opened;
    }
    const Profile& profile = select_profile(options.profile);

    Stages stages(cleanup);
    Lexer& lexer = stages.make<Lexer>(Lexer::FromText{}, std::move(*source), options.input_file, diagnostics);
    Preprocessor& preprocessor = stages.make<Preprocessor>(lexer, options.include_paths, files, diagnostics);
    Parser& parser =
        stages.make<Parser>(preprocessor, options.input_file, profile, options.include_paths, files, diagnostics);
    if (!parser.parse() && !options.continue_on_error) return exit_status::parse_failed;

    // The description moves on from stage to stage: a run holds one copy of it.
    Description description = parser.take_description();
    doing = messages::doing_resolve;
    resolve_like_items(description, diagnostics);
    XML_Writer& writer = stages.make<XML_Writer>(std::move(description), files, diagnostics);

    if (!options.dictionary_files.empty()) {
        doing = messages::doing_dictionaries;
        Dictionary dictionary;
        if (auto status = load_dictionaries(options, files, diagnostics, dictionary)) return *status;
        writer.set_dictionary(std::move(dictionary));
    }

    doing = messages::doing_build;
    writer.build();
    return write_outputs(options, files, diagnostics, writer, doing);
}

// The source among the files the run read, or the -d files it may read, that `output` names;
// null when none.
const std::string* source_named_by(const std::string& output, const Options& options, const InputFiles& files) {
    if (const std::string* read = files.find(output)) return read;
    for (const std::string& dictionary : options.dictionary_files)
        if (same_file(output, dictionary)) return &dictionary;
    return nullptr;
}

// The -e file, written beside its target like the document, so that opening it destroys
// nothing the run has yet to read. It is put in place when the run ends (or is
// interrupted) with every line, unless it names a source: then nothing of it is kept, and
// what it received goes to standard error instead, so that no line is lost.
class DiagnosticsFile {
public:
    DiagnosticsFile(const Options& options, InputFiles& files) : stream_(options.diagnostics_file) {
        auto keep_nothing = [this] { stream_.file().set_on_interrupt(temporary_files::OnInterrupt::remove); };
        files.watch(options.diagnostics_file, keep_nothing);
        for (const std::string& dictionary : options.dictionary_files)
            if (same_file(options.diagnostics_file, dictionary)) keep_nothing();
    }
    std::ostream& stream() { return stream_; }

    int finish(int status, const Options& options, const InputFiles& files, std::ostream& err) {
        stream_.flush();
        const std::string* source = source_named_by(options.diagnostics_file, options, files);
        if (source == nullptr || stream_.file().direct()) {
            try {
                stream_.file().commit();
            } catch (const std::system_error&) {  // as with any failed write of diagnostics
            }
            return status;
        }
        std::ifstream received(stream_.file().written_to(), std::ios::binary);
        if (received.peek() != std::ifstream::traits_type::eof()) err << received.rdbuf();  // none: err would fail
        Diagnostics(err, err).standard_error(
            format_message(messages::output_was_read, {options.diagnostics_file, *source}));
        return exit_status::file_not_opened;
    }

private:
    OutputStream stream_;
};

// The steps from the banner on; the -e file is the caller's to finish.
int run_steps(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, Options& options,
              InputFiles& files, std::unique_ptr<DiagnosticsFile>& diagnostics_file, Cleanup cleanup) {
    Diagnostics early(err, err);  // until the diagnostics file is open
    std::unique_ptr<Diagnostics> diagnostics;
    std::string doing(messages::doing_start);
    try {
        // Flushed, so that the banner comes first wherever the document goes (-o /dev/stdout).
        out << messages::banner << "\n\n";
        out.flush();
        options.program_name = program_name_of(arguments.empty() ? std::string() : arguments.front());
        if (arguments.size() <= 1) {
            print_help(out, options.program_name);
            return exit_status::help;
        }
        const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
        if (auto status = scan_arguments(rest, options, out, early)) return *status;
        if (const char* name = std::getenv("TARNWICK_DEPFILE")) options.dependency_file = name;
        if (auto status = check_output_names(options, early)) return *status;

        if (!options.diagnostics_file.empty()) {
            try {
                diagnostics_file = std::make_unique<DiagnosticsFile>(options, files);
            } catch (const std::system_error&) {
                early.standard_error(failure(messages::cannot_open_error_file, options.diagnostics_file));
                return exit_status::file_not_opened;
            }
            diagnostics = std::make_unique<Diagnostics>(diagnostics_file->stream(), err);
        }
        Diagnostics& report = diagnostics ? *diagnostics : early;
        if (options.input_file.empty()) {
            early.standard_error(messages::no_input_file);
            return exit_status::file_not_opened;
        }
        if (!InputFiles::readable(options.input_file)) {
            early.standard_error(failure(messages::could_not_open_input, options.input_file));
            return exit_status::file_not_opened;
        }
        options.output_file = output_name(options);
        options.include_paths.push_back(directory_part(options.input_file));

        try {
            return convert(options, files, report, cleanup, doing);
        } catch (const FileTooLarge& e) {  // the input, a dictionary or an image
            report.line(e.what());
            return exit_status::file_not_opened;
        }
    } catch (const std::bad_alloc& e) {  // what no other handler can say: what took the memory
        (diagnostics ? *diagnostics : early)
            .fatal(format_message(messages::out_of_memory, {doing}), readable_type_name(typeid(e)));
        return exit_status::fatal;
    } catch (const std::exception& e) {
        (diagnostics ? *diagnostics : early).fatal(e.what(), readable_type_name(typeid(e)));
        return exit_status::fatal;
    }
}

}  // namespace

int run(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, Cleanup cleanup) {
    Options options;
    InputFiles files;
    std::unique_ptr<DiagnosticsFile> diagnostics_file;
    const int status = run_steps(arguments, out, err, options, files, diagnostics_file, cleanup);
    return diagnostics_file ? diagnostics_file->finish(status, options, files, err) : status;
}

}  // namespace edd
