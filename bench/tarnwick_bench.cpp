// SPDX-License-Identifier: Apache-2.0
// Measures the converter stage by stage on one description: the lexer alone, lexer and
// preprocessor, the parse, and the full conversion as the program runs it. Every run of a
// stage is a child process of its own, so its peak memory (ru_maxrss) is its own.
//
//   tarnwick_bench [--repeat N | --only STAGE] <converter arguments>
//
// --only runs one stage once in this process and prints nothing, for counting its
// instructions under valgrind (STAGE: baseline, lexer, preprocessor, parse, full).
//
// The converter arguments are those of tarnwick itself, input file first, for example
// "tw900.ddl -p HART -d tw900.dct -o /tmp/tw900.xml". Sizes and lines are those of all source
// text read: the input file and every included file, once per inclusion.
#include <sys/resource.h>
#include <time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "diagnostics/diagnostics.hpp"
#include "driver/command_line.hpp"
#include "driver/driver.hpp"
#include "driver/options.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "files/input_files.hpp"
#include "parser/parser.hpp"
#include "validation/profile.hpp"

namespace {

struct Source {
    double bytes = 0;
    double lines = 0;
    int files = 0;
};

// What a stage reports back from its child process. Throughput is computed from processor
// time (user and system, one thread), which other load on the machine disturbs less than
// the elapsed time shown beside it.
struct Result {
    double best_seconds = 0;
    double best_wall_seconds = 0;
    double bytes = 0;
    double lines = 0;
    double files = 0;
    double tokens = 0;
    bool ok = false;
    double peak_kib = 0;
};

class NullBuffer final : public std::streambuf {
protected:
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

double cpu_seconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

double count_lines(std::string_view text) {
    const auto newlines = static_cast<double>(std::count(text.begin(), text.end(), '\n'));
    return newlines + (!text.empty() && text.back() != '\n' ? 1 : 0);
}

// Lexes a file and, depth first, every file it includes (conditionals are not looked at:
// the generated descriptions include nothing conditionally). The same lookup as the
// preprocessor's: the include paths in order, never the including file's directory.
std::size_t lex_file(const std::string& path, const std::vector<std::string>& include_paths, edd::Diagnostics& sink,
                     Source& source) {
    edd::InputFiles files;
    std::optional<edd::SourceText> text = files.read_source(path);
    if (!text) return 0;
    source.bytes += static_cast<double>(text->view().size());
    source.lines += count_lines(text->view());
    ++source.files;
    edd::Lexer lexer(edd::Lexer::FromText{}, std::move(*text), path, sink);
    std::size_t tokens = 0;
    enum { NONE, HASH, INCLUDE } state = NONE;
    for (edd::Token token = lexer.next_token(); !token.is(edd::END_OF_FILE); token = lexer.next_token()) {
        ++tokens;
        if (token.is(edd::WHITESPACE)) continue;
        if (state == INCLUDE && token.is(edd::STRING)) {
            for (const std::string& directory : include_paths) {
                const std::string candidate = directory + "/" + std::string(token.text());
                if (edd::InputFiles::readable(candidate)) {
                    tokens += lex_file(candidate, include_paths, sink, source);
                    break;
                }
            }
        }
        if (token.is(edd::PREPROCESSOR_SWITCH)) state = HASH;
        else if (state == HASH && token.text() == "include") state = INCLUDE;
        else state = NONE;
    }
    return tokens;
}

struct StageInput {
    edd::Options options;
    std::vector<std::string> arguments;  // the converter's command line, program name first
};

// A stage hands its large objects to `keep`, so that freeing them is not timed: the program
// leaves its description and document to the end of the process too (edd::Cleanup).
using Keep = std::vector<std::shared_ptr<void>>;
using Stage = std::function<bool(const StageInput&, Source&, double& tokens, Keep& keep)>;

bool stage_lexer(const StageInput& input, Source& source, double& tokens, Keep&) {
    std::ostringstream messages;
    edd::Diagnostics diagnostics(messages, messages);
    tokens = static_cast<double>(lex_file(input.options.input_file, input.options.include_paths, diagnostics, source));
    return messages.str().empty();
}

// The input file's lexer and the preprocessor over it; both are kept in `keep`. Null when
// the file cannot be read.
std::shared_ptr<edd::Preprocessor> open_preprocessor(const StageInput& input, edd::Diagnostics& diagnostics,
                                                     edd::InputFiles& files, Keep& keep) {
    std::optional<edd::SourceText> text = files.read_source(input.options.input_file);
    if (!text) return nullptr;
    auto lexer = std::make_shared<edd::Lexer>(edd::Lexer::FromText{}, std::move(*text), input.options.input_file,
                                              diagnostics);
    auto preprocessor = std::make_shared<edd::Preprocessor>(*lexer, input.options.include_paths, files, diagnostics);
    keep = {lexer, preprocessor};
    return preprocessor;
}

bool stage_preprocessor(const StageInput& input, Source&, double& tokens, Keep& keep) {
    std::ostringstream messages;
    edd::Diagnostics diagnostics(messages, messages);
    edd::InputFiles files;
    auto preprocessor = open_preprocessor(input, diagnostics, files, keep);
    if (!preprocessor) return false;
    // Read as the parser reads it: past blanks, line ends and comments.
    std::size_t count = 0;
    edd::Token token;
    for (preprocessor->read_significant(token); !token.is(edd::END_OF_FILE); preprocessor->read_significant(token))
        ++count;
    tokens = static_cast<double>(count);
    return messages.str().empty();
}

bool stage_parse(const StageInput& input, Source&, double&, Keep& keep) {
    std::ostringstream messages;
    edd::Diagnostics diagnostics(messages, messages);
    edd::InputFiles files;
    auto preprocessor = open_preprocessor(input, diagnostics, files, keep);
    if (!preprocessor) return false;
    auto parser = std::make_shared<edd::Parser>(*preprocessor, input.options.input_file,
                                                edd::select_profile(input.options.profile),
                                                input.options.include_paths, files, diagnostics);
    keep.push_back(parser);
    return parser->parse() && messages.str().empty();
}

bool stage_full(const StageInput& input, Source&, double&, Keep&) {
    NullBuffer null_buffer;
    std::ostream out(&null_buffer);
    std::ostringstream diagnostics;
    return edd::run(input.arguments, out, diagnostics, edd::Cleanup::leave_to_exit) == 0 && diagnostics.str().empty();
}

// Runs `stage` once in a child process of its own, which exits without freeing anything.
std::optional<Result> measure_once(const Stage& stage, const StageInput& input) {
    int channel[2];
    if (pipe(channel) != 0) return std::nullopt;
    std::cout.flush();
    const pid_t child = fork();
    if (child < 0) return std::nullopt;
    if (child == 0) {
        close(channel[0]);
        Result result;
        Source source;
        double tokens = 0;
        Keep keep;
        const double cpu_start = cpu_seconds();
        const auto start = std::chrono::steady_clock::now();
        result.ok = stage(input, source, tokens, keep);
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        result.best_seconds = cpu_seconds() - cpu_start;
        result.best_wall_seconds = elapsed.count();
        result.bytes = source.bytes;
        result.lines = source.lines;
        result.files = source.files;
        result.tokens = tokens;
        const ssize_t written = write(channel[1], &result, sizeof result);
        _exit(written == static_cast<ssize_t>(sizeof result) ? 0 : 1);
    }
    close(channel[1]);
    Result result;
    const ssize_t got = read(channel[0], &result, sizeof result);
    close(channel[0]);
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || got != static_cast<ssize_t>(sizeof result) ||
        !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return std::nullopt;
    result.peak_kib = static_cast<double>(usage.ru_maxrss);  // kilobytes on Linux
    return result;
}

// The best times of `repeat` runs and the highest peak among them.
std::optional<Result> measure(const Stage& stage, const StageInput& input, int repeat) {
    std::optional<Result> best;
    for (int i = 0; i < repeat; ++i) {
        const std::optional<Result> run = measure_once(stage, input);
        if (!run) return std::nullopt;
        if (!best) {
            best = run;
            continue;
        }
        best->ok = best->ok && run->ok;
        best->best_seconds = std::min(best->best_seconds, run->best_seconds);
        best->best_wall_seconds = std::min(best->best_wall_seconds, run->best_wall_seconds);
        best->peak_kib = std::max(best->peak_kib, run->peak_kib);
    }
    return best;
}

// Everything before the last separator, or "." for a bare file name: the converter adds
// the input's directory to the include paths the same way.
std::string directory_part(const std::string& name) {
    const auto separator = name.find_last_of("\\/");
    return separator == std::string::npos ? std::string(".") : name.substr(0, separator);
}

int usage() {
    std::cerr << "usage: tarnwick_bench [--repeat N | --only STAGE] <input file> [converter options]\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    int repeat = 5;
    int first = 1;
    const char* only = nullptr;
    if (argc > 2 && std::strcmp(argv[1], "--repeat") == 0) {
        repeat = std::atoi(argv[2]);
        first = 3;
    } else if (argc > 2 && std::strcmp(argv[1], "--only") == 0) {
        only = argv[2];
        first = 3;
    }
    if (repeat < 1 || first >= argc) return usage();

    StageInput input;
    input.arguments.emplace_back("tarnwick");
    input.arguments.insert(input.arguments.end(), argv + first, argv + argc);
    NullBuffer null_buffer;
    std::ostream null_stream(&null_buffer);
    const std::vector<std::string> rest(input.arguments.begin() + 1, input.arguments.end());
    edd::Diagnostics errors(std::cerr, std::cerr);
    if (edd::scan_arguments(rest, input.options, null_stream, errors) || input.options.input_file.empty())
        return usage();
    input.options.include_paths.push_back(directory_part(input.options.input_file));

    struct Named {
        const char* name;
        const char* short_name;
        Stage stage;
    };
    const Named stages[] = {
        {"process baseline", "baseline", [](const StageInput&, Source&, double&, Keep&) { return true; }},
        {"lexer", "lexer", stage_lexer},
        {"lexer + preprocessor", "preprocessor", stage_preprocessor},
        {"parse", "parse", stage_parse},
        {"full conversion", "full", stage_full},
    };
    if (only) {
        const auto named = std::ranges::find_if(stages, [only](const Named& n) { return std::strcmp(n.short_name, only) == 0; });
        if (named == std::end(stages)) return usage();
        Source source;
        double tokens = 0;
        Keep keep;
        // Exits without freeing, as a measured child does.
        std::_Exit(named->stage(input, source, tokens, keep) ? 0 : 1);
    }

    std::optional<Result> source_figures;
    std::printf("%-22s %8s %8s %8s %11s %9s %9s %8s\n", "stage", "cpu s", "wall s", "MB/s", "lines/s", "tokens",
                "peak MiB", "x source");
    for (const Named& named : stages) {
        const std::optional<Result> result = measure(named.stage, input, repeat);
        if (!result) {
            std::fprintf(stderr, "tarnwick_bench: the stage \"%s\" did not run\n", named.name);
            return 1;
        }
        if (!result->ok) {
            std::fprintf(stderr, "tarnwick_bench: the stage \"%s\" reported problems; the input must convert cleanly\n",
                         named.name);
            return 1;
        }
        if (result->bytes > 0) source_figures = result;
        const double peak_mib = result->peak_kib / 1024.0;
        if (!source_figures) {
            std::printf("%-22s %8s %8s %8s %11s %9s %9.1f %8s\n", named.name, "-", "-", "-", "-", "-", peak_mib, "-");
            continue;
        }
        const double mb = source_figures->bytes / 1e6;
        std::printf("%-22s %8.4f %8.4f %8.1f %11.0f %9s %9.1f %8.1f\n", named.name, result->best_seconds,
                    result->best_wall_seconds, mb / result->best_seconds, source_figures->lines / result->best_seconds,
                    result->tokens > 0 ? std::to_string(static_cast<long long>(result->tokens)).c_str() : "-",
                    peak_mib, result->peak_kib * 1024.0 / source_figures->bytes);
    }
    if (source_figures)
        std::printf("\nsource: %.2f MB, %.0f lines in %.0f files; best of %d runs per stage; rates per cpu s\n",
                    source_figures->bytes / 1e6, source_figures->lines, source_figures->files, repeat);
    return 0;
}
