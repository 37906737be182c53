// End-to-end golden runner: runs the built program on one case directory, as a user would,
// and compares exit status, standard output, standard error and every file the run creates
// or changes, byte for byte. The cases themselves live in tests/cases/<name>/:
//
//   args      one argument per line (empty file: none; empty line: an empty argument)
//   status    expected exit status as the shell sees it (0..255)
//   input/    optional tree copied into a fresh working directory, the program's cwd
//   stdout    optional, exact expected bytes (absent: expected empty)
//   stderr    optional, exact expected bytes (absent: expected empty)
//   output/   optional, every file the run creates or changes, exact bytes
//
// A case is named fail_<...> exactly when its status is non-zero. Every .xml file, produced
// or expected, must be well-formed. `--update` (or TARNWICK_UPDATE=1) rewrites status,
// stdout, stderr and output/ from the actual run; review that change like code.
//
//   golden_runner <program> <case-dir> [--update]
//   golden_runner --self-test

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <pugixml.hpp>

namespace fs = std::filesystem;

namespace {

constexpr auto run_time_limit = std::chrono::seconds(60);

// Relative path (generic form) to file contents.
using FileMap = std::map<std::string, std::string>;

std::optional<std::string> read_file(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream contents;
    contents << in.rdbuf();
    return contents.str();
}

void write_file(const fs::path& path, std::string_view contents) {
    if (path.has_parent_path()) fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (!out) throw std::runtime_error("cannot write " + path.string());
}

FileMap snapshot(const fs::path& root) {
    FileMap files;
    if (!fs::is_directory(root)) return files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file()) continue;
        files[entry.path().lexically_relative(root).generic_string()] = read_file(entry.path()).value_or("");
    }
    return files;
}

// The last line's terminator is optional, so an empty file means no arguments while a
// file holding one line feed means one empty argument.
std::vector<std::string> split_arguments(std::string text) {
    std::vector<std::string> arguments;
    if (text.empty()) return arguments;
    if (text.back() == '\n') text.pop_back();
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find('\n', start);
        arguments.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos) break;
        start = end + 1;
    }
    return arguments;
}

// ---------------------------------------------------------------------------------------
// Readable differences

struct Line {
    std::string text;
    bool terminated;
};

std::vector<Line> split_lines(std::string_view text) {
    std::vector<Line> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string_view::npos) {
            lines.push_back({std::string(text.substr(start)), false});
            break;
        }
        lines.push_back({std::string(text.substr(start, end - start)), true});
        start = end + 1;
    }
    return lines;
}

bool operator==(const Line& a, const Line& b) { return a.text == b.text && a.terminated == b.terminated; }

// Control characters would otherwise hide the very difference being reported.
std::string visible(const Line& line) {
    std::string shown;
    for (const char c : line.text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == '\r') {
            shown += "\\r";
        } else if ((byte < 0x20 && byte != '\t') || byte == 0x7f) {
            static const char digits[] = "0123456789abcdef";
            shown += "\\x";
            shown += digits[byte >> 4];
            shown += digits[byte & 0xf];
        } else {
            shown += c;
        }
    }
    if (!line.terminated) shown += "  [no line end]";
    return shown;
}

void print_diff(std::ostream& log, std::string_view label, std::string_view expected, std::string_view actual) {
    const std::vector<Line> a = split_lines(expected);
    const std::vector<Line> b = split_lines(actual);
    log << "--- expected " << label << "\n+++ actual " << label << "\n";
    const std::size_t n = a.size();
    const std::size_t m = b.size();
    if (n * m > 4'000'000) {  // too big for the table below; show both sides whole
        for (const Line& line : a) log << '-' << visible(line) << '\n';
        for (const Line& line : b) log << '+' << visible(line) << '\n';
        return;
    }
    // Longest common subsequence from the back, then one walk from the front.
    std::vector<std::vector<unsigned>> common(n + 1, std::vector<unsigned>(m + 1, 0));
    for (std::size_t i = n; i-- > 0;)
        for (std::size_t j = m; j-- > 0;)
            common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    struct Step {
        char mark;
        const Line* line;
    };
    std::vector<Step> steps;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < n || j < m) {
        if (i < n && j < m && a[i] == b[j]) {
            steps.push_back({' ', &a[i++]});
            ++j;
        } else if (i < n && (j == m || common[i + 1][j] >= common[i][j + 1])) {
            steps.push_back({'-', &a[i++]});
        } else {
            steps.push_back({'+', &b[j++]});
        }
    }
    // Print changes with three lines of context; elide longer runs of equal lines.
    constexpr std::size_t context = 3;
    std::vector<bool> shown(steps.size(), false);
    for (std::size_t k = 0; k < steps.size(); ++k) {
        if (steps[k].mark == ' ') continue;
        const std::size_t from = k >= context ? k - context : 0;
        const std::size_t to = std::min(steps.size(), k + context + 1);
        for (std::size_t s = from; s < to; ++s) shown[s] = true;
    }
    bool skipped = false;
    for (std::size_t k = 0; k < steps.size(); ++k) {
        if (!shown[k]) {
            skipped = true;
            continue;
        }
        if (skipped) log << "@@ ...\n";
        skipped = false;
        log << steps[k].mark << visible(*steps[k].line) << '\n';
    }
    if (skipped) log << "@@ ...\n";
}

// ---------------------------------------------------------------------------------------
// Running the program

struct RunResult {
    int status = -1;        // exit status when the program exited normally
    int signal = 0;         // the signal that ended it otherwise
    bool timed_out = false;
    std::string out;
    std::string err;
};

RunResult run_program(const std::string& program, const std::vector<std::string>& arguments,
                      const fs::path& work_dir, const fs::path& capture_dir) {
    const fs::path out_path = capture_dir / "stdout";
    const fs::path err_path = capture_dir / "stderr";
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    const pid_t child = fork();
    if (child < 0) throw std::runtime_error(std::string("fork: ") + std::strerror(errno));
    if (child == 0) {
        // Own process group, so that a timeout also ends anything the program started.
        setpgid(0, 0);
        const int in = open("/dev/null", O_RDONLY);
        const int out = open(out_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err = open(err_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (in < 0 || out < 0 || err < 0 || dup2(in, 0) < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0) _exit(126);
        if (chdir(work_dir.c_str()) != 0) {
            dprintf(2, "golden_runner: cannot enter %s\n", work_dir.c_str());
            _exit(126);
        }
        execv(program.c_str(), argv.data());
        dprintf(2, "golden_runner: cannot execute %s: %s\n", program.c_str(), std::strerror(errno));
        _exit(127);
    }
    setpgid(child, child);

    RunResult result;
    int wait_status = 0;
    const auto deadline = std::chrono::steady_clock::now() + run_time_limit;
    for (;;) {
        const pid_t done = waitpid(child, &wait_status, WNOHANG);
        if (done == child) break;
        if (done < 0 && errno != EINTR) throw std::runtime_error(std::string("waitpid: ") + std::strerror(errno));
        if (std::chrono::steady_clock::now() >= deadline) {
            result.timed_out = true;
            kill(-child, SIGKILL);
            while (waitpid(child, &wait_status, 0) < 0 && errno == EINTR) {
            }
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    if (WIFEXITED(wait_status)) result.status = WEXITSTATUS(wait_status);
    if (WIFSIGNALED(wait_status)) result.signal = WTERMSIG(wait_status);
    result.out = read_file(out_path).value_or("");
    result.err = read_file(err_path).value_or("");
    return result;
}

// A scratch directory that goes away with its owner.
class TempDir {
public:
    TempDir() {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base != nullptr && *base != '\0' ? base : "/tmp") + "/tarnwick-golden-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error(std::string("mkdtemp: ") + std::strerror(errno));
        path_ = pattern;
    }
    ~TempDir() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

// ---------------------------------------------------------------------------------------
// One case

class CaseCheck {
public:
    explicit CaseCheck(std::ostream& log) : log_(log) {}

    void fail(const std::string& message) {
        failed_ = true;
        log_ << "FAIL: " << message << '\n';
    }
    bool failed() const { return failed_; }
    std::ostream& log() { return log_; }

private:
    std::ostream& log_;
    bool failed_ = false;
};

std::string case_name_of(const fs::path& case_dir) {
    fs::path normal = case_dir.lexically_normal();
    if (normal.filename().empty()) normal = normal.parent_path();
    return normal.filename().string();
}

bool ends_with_xml(const std::string& name) {
    return name.size() >= 4 && name.compare(name.size() - 4, 4, ".xml") == 0;
}

void check_xml(CaseCheck& check, const std::string& what, const std::string& contents) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(contents.data(), contents.size());
    if (!parsed) {
        check.fail(what + " is not well-formed XML: " + parsed.description() + " at offset " +
                   std::to_string(parsed.offset));
    }
}

void compare_text(CaseCheck& check, const std::string& label, const std::string& expected, const std::string& actual) {
    if (expected == actual) return;
    check.fail(label + " differs");
    print_diff(check.log(), label, expected, actual);
}

void write_expectation(const fs::path& path, const std::string& contents) {
    if (contents.empty()) {
        fs::remove(path);
    } else {
        write_file(path, contents);
    }
}

std::optional<int> parse_status(const std::string& text) {
    std::istringstream in(text);
    int status = 0;
    if (!(in >> status) || status < 0 || status > 255) return std::nullopt;
    in >> std::ws;
    return in.eof() ? std::optional<int>(status) : std::nullopt;
}

// Runs one case; returns true when it passes. Everything worth reading goes to `log`.
bool run_case(const std::string& program, const fs::path& case_dir, bool update, std::ostream& log) {
    CaseCheck check(log);
    const std::string name = case_name_of(case_dir);

    const std::optional<std::string> args_text = read_file(case_dir / "args");
    if (!args_text) {
        check.fail("missing " + (case_dir / "args").string());
        return false;
    }
    std::optional<int> expected_status;
    if (const auto status_text = read_file(case_dir / "status")) {
        expected_status = parse_status(*status_text);
        if (!expected_status && !update) check.fail("status file does not hold a number from 0 to 255");
    } else if (!update) {
        check.fail("missing " + (case_dir / "status").string());
    }
    if (check.failed()) return false;

    TempDir scratch;
    const fs::path work_dir = scratch.path() / "work";
    const fs::path capture_dir = scratch.path() / "capture";
    fs::create_directories(work_dir);
    fs::create_directories(capture_dir);
    if (fs::is_directory(case_dir / "input")) fs::copy(case_dir / "input", work_dir, fs::copy_options::recursive);

    const FileMap before = snapshot(work_dir);
    const RunResult run = run_program(program, split_arguments(*args_text), work_dir, capture_dir);
    const FileMap after = snapshot(work_dir);

    FileMap produced;
    for (const auto& [path, contents] : after) {
        const auto old = before.find(path);
        if (old == before.end() || old->second != contents) produced[path] = contents;
    }
    for (const auto& [path, contents] : before)
        if (!after.contains(path)) check.fail("the run removed " + path);

    if (run.timed_out) {
        check.fail("killed after " + std::to_string(run_time_limit.count()) + " s");
    } else if (run.signal != 0) {
        check.fail(std::string("ended by signal ") + std::to_string(run.signal) + " (" + strsignal(run.signal) + ")");
    }

    for (const auto& [path, contents] : produced)
        if (ends_with_xml(path)) check_xml(check, "produced " + path, contents);

    if (update) {
        if (run.status >= 0) write_file(case_dir / "status", std::to_string(run.status) + "\n");
        write_expectation(case_dir / "stdout", run.out);
        write_expectation(case_dir / "stderr", run.err);
        fs::remove_all(case_dir / "output");
        for (const auto& [path, contents] : produced) write_file(case_dir / "output" / path, contents);
        expected_status = run.status >= 0 ? std::optional<int>(run.status) : expected_status;
        log << "updated " << case_dir.string() << '\n';
    } else {
        if (run.status != *expected_status)
            check.fail("exit status " + std::to_string(run.status) + ", expected " + std::to_string(*expected_status));
        compare_text(check, "stdout", read_file(case_dir / "stdout").value_or(""), run.out);
        compare_text(check, "stderr", read_file(case_dir / "stderr").value_or(""), run.err);

        const FileMap expected = snapshot(case_dir / "output");
        for (const auto& [path, contents] : expected) {
            if (ends_with_xml(path)) check_xml(check, "expected output/" + path, contents);
            const auto actual = produced.find(path);
            if (actual == produced.end()) {
                check.fail("output/" + path + " was not " + (after.contains(path) ? "changed" : "created"));
            } else {
                compare_text(check, path, contents, actual->second);
            }
        }
        for (const auto& [path, contents] : produced) {
            if (expected.contains(path)) continue;
            check.fail("unexpected file " + path + " (not in output/)" + (contents.empty() ? ", empty" : ""));
            if (!contents.empty()) print_diff(check.log(), path, "", contents);
        }
    }

    if (expected_status) {
        const bool named_fail = name.starts_with("fail_");
        if (named_fail != (*expected_status != 0)) {
            check.fail("case " + name + " has status " + std::to_string(*expected_status) +
                       "; a case is named fail_... exactly when its status is non-zero");
        }
    }
    return !check.failed();
}

// ---------------------------------------------------------------------------------------
// Self-check: the runner is the oracle of every golden case, so it must be seen to fail.
// /bin/sh stands in for the program.

struct SelfCase {
    std::string name;
    FileMap files;  // relative to the case directory
    bool passes;
};

int self_test() {
    const std::string shell = "/bin/sh";
    auto sh = [](const std::string& script) { return "-c\n" + script + "\n"; };
    const std::string writes_a = "echo hi; echo warn >&2; cat; printf x > a.txt";
    const std::vector<SelfCase> cases = {
        {"all_match", {{"args", sh(writes_a)}, {"status", "0\n"}, {"stdout", "hi\n"}, {"stderr", "warn\n"},
                       {"output/a.txt", "x"}}, true},
        {"stdout_differs", {{"args", sh(writes_a)}, {"status", "0\n"}, {"stdout", "ho\n"}, {"stderr", "warn\n"},
                            {"output/a.txt", "x"}}, false},
        {"stderr_missing", {{"args", sh(writes_a)}, {"status", "0\n"}, {"stdout", "hi\n"}, {"output/a.txt", "x"}},
         false},
        {"unlisted_file", {{"args", sh(writes_a)}, {"status", "0\n"}, {"stdout", "hi\n"}, {"stderr", "warn\n"}},
         false},
        {"file_not_created", {{"args", sh("true")}, {"status", "0\n"}, {"output/a.txt", "x"}}, false},
        {"file_bytes_differ", {{"args", sh("printf 'x\\n' > a.txt")}, {"status", "0\n"}, {"output/a.txt", "x"}},
         false},
        {"changed_input_listed", {{"args", sh("printf y > in.txt")}, {"status", "0\n"}, {"input/in.txt", "x"},
                                  {"output/in.txt", "y"}}, true},
        {"changed_input_unlisted", {{"args", sh("printf y > in.txt")}, {"status", "0\n"}, {"input/in.txt", "x"}},
         false},
        {"untouched_input", {{"args", sh("cat in.txt")}, {"status", "0\n"}, {"stdout", "x"}, {"input/in.txt", "x"}},
         true},
        {"input_removed", {{"args", sh("rm in.txt")}, {"status", "0\n"}, {"input/in.txt", "x"}}, false},
        {"fail_status_matches", {{"args", sh("exit 3")}, {"status", "3\n"}}, true},
        {"fail_status_differs", {{"args", sh("exit 4")}, {"status", "3\n"}}, false},
        {"nonzero_without_prefix", {{"args", sh("exit 3")}, {"status", "3\n"}}, false},
        {"fail_prefix_with_zero", {{"args", sh("true")}, {"status", "0\n"}}, false},
        {"empty_argument_kept", {{"args", "-c\ntest -z \"$1\" && test $# = 1 && echo ok\nsh\n\n"}, {"status", "0\n"},
                                 {"stdout", "ok\n"}}, true},
        {"bad_xml_produced", {{"args", sh("printf '<a>' > d.xml")}, {"status", "0\n"}, {"output/d.xml", "<a>"}},
         false},
        {"good_xml_produced", {{"args", sh("printf '<a/>' > d.xml")}, {"status", "0\n"}, {"output/d.xml", "<a/>"}},
         true},
        {"killed_by_signal", {{"args", sh("kill -9 $$")}, {"status", "0\n"}}, false},
        {"no_args_file", {{"status", "0\n"}}, false},
    };

    TempDir root;
    int failures = 0;
    for (const SelfCase& self_case : cases) {
        const fs::path dir = root.path() / self_case.name;
        for (const auto& [path, contents] : self_case.files) write_file(dir / path, contents);
        std::ostringstream log;
        const bool passed = run_case(shell, dir, false, log);
        if (passed != self_case.passes) {
            ++failures;
            std::cout << "self-test " << self_case.name << ": runner said " << (passed ? "pass" : "fail")
                      << ", expected " << (self_case.passes ? "pass" : "fail") << "\n" << log.str();
        }
    }

    // --update must turn a stale case into a passing one and drop empty expectations.
    const fs::path stale = root.path() / "fail_stale";
    write_file(stale / "args", sh("echo new; printf z > n.txt; exit 2"));
    write_file(stale / "status", "1\n");
    write_file(stale / "stderr", "old\n");
    write_file(stale / "output/gone.txt", "old");
    std::ostringstream log;
    const bool updated = run_case(shell, stale, true, log);
    const bool then_passes = run_case(shell, stale, false, log);
    if (!updated || !then_passes || fs::exists(stale / "stderr") || fs::exists(stale / "output/gone.txt") ||
        read_file(stale / "status") != "2\n" || read_file(stale / "output/n.txt") != "z") {
        ++failures;
        std::cout << "self-test update: case not rewritten as expected\n" << log.str();
    }

    std::cout << (failures == 0 ? "self-test passed\n" : "self-test FAILED\n");
    return failures == 0 ? 0 : 1;
}

int usage() {
    std::cerr << "usage: golden_runner <program> <case-dir> [--update]\n"
                 "       golden_runner --self-test\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::vector<std::string> arguments(argv + 1, argv + argc);
        if (arguments.size() == 1 && arguments[0] == "--self-test") return self_test();
        bool update = false;
        if (const char* env = std::getenv("TARNWICK_UPDATE"); env != nullptr && std::string_view(env) == "1")
            update = true;
        if (const auto flag = std::find(arguments.begin(), arguments.end(), "--update"); flag != arguments.end()) {
            update = true;
            arguments.erase(flag);
        }
        if (arguments.size() != 2) return usage();

        // The child changes directory before exec, so a relative path would miss.
        const std::string program = fs::absolute(arguments[0]).string();
        const fs::path case_dir = fs::absolute(arguments[1]);
        if (!fs::is_directory(case_dir)) {
            std::cerr << "golden_runner: no case directory " << case_dir.string() << '\n';
            return 2;
        }
        const bool passed = run_case(program, case_dir, update, std::cout);
        std::cout << (passed ? "PASS " : "FAILED ") << case_name_of(case_dir) << '\n';
        return passed ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << "golden_runner: " << e.what() << '\n';
        return 2;
    }
}
