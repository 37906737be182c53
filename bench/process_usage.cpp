// SPDX-License-Identifier: Apache-2.0
// Runs whole commands and reports what each cost the system: processor time (user and
// system) and peak resident memory, as getrusage gives them for a finished child. The
// commands take turns, so that a change in the machine's load falls on all of them alike.
//
//   process_usage <runs> -- <command> [args] [-- <command> [args] ...]
//
// Prints one line per command, in the order given: the median processor seconds and the
// median peak in KiB over the runs. Each command's output goes to /dev/null; a command that
// fails ends the measurement with status 1.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

struct Usage {
    double seconds = 0;
    double peak_kib = 0;
};

bool run(const std::vector<char*>& command, Usage& usage) {
    const pid_t child = fork();
    if (child < 0) return false;
    if (child == 0) {
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, STDOUT_FILENO);
        dup2(null, STDERR_FILENO);
        execvp(command[0], command.data());
        _exit(127);
    }
    int status = 0;
    rusage used{};
    if (wait4(child, &status, 0, &used) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return false;
    const auto seconds = [](const timeval& t) { return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6; };
    usage.seconds = seconds(used.ru_utime) + seconds(used.ru_stime);
    usage.peak_kib = static_cast<double>(used.ru_maxrss);  // kilobytes on Linux
    return true;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace

int main(int argc, char** argv) {
    const int runs = argc > 2 ? std::atoi(argv[1]) : 0;
    std::vector<std::vector<char*>> commands;
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0) commands.emplace_back();
        else if (!commands.empty()) commands.back().push_back(argv[i]);
    }
    const bool complete = std::ranges::none_of(commands, [](const auto& command) { return command.empty(); });
    if (runs < 1 || commands.empty() || !complete) {
        std::fprintf(stderr, "usage: process_usage <runs> -- <command> [args] [-- <command> [args] ...]\n");
        return 2;
    }
    std::vector<std::vector<double>> seconds(commands.size()), peaks(commands.size());
    for (int run_number = 0; run_number < runs; ++run_number) {
        for (std::size_t c = 0; c < commands.size(); ++c) {
            std::vector<char*> command = commands[c];
            command.push_back(nullptr);
            Usage usage;
            if (!run(command, usage)) {
                std::fprintf(stderr, "process_usage: \"%s\" failed\n", command[0]);
                return 1;
            }
            seconds[c].push_back(usage.seconds);
            peaks[c].push_back(usage.peak_kib);
        }
    }
    for (std::size_t c = 0; c < commands.size(); ++c)
        std::printf("%.5f %.0f\n", median(seconds[c]), median(peaks[c]));
    return 0;
}
