// Replays saved fuzz inputs through a fuzz target, built without libFuzzer: every input
// must finish, without a crash or an abort from the target's own checks, within the time
// limit given (seconds, for the slowest single input).
//
//   fuzz_replay_<target> <seconds> <file-or-directory>...
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Optional in a target, as with libFuzzer.
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s <seconds> <file-or-directory>...\n", argv[0]);
        return 2;
    }
    const double limit = std::atof(argv[1]);
    std::vector<std::filesystem::path> inputs;
    for (int i = 2; i < argc; ++i) {
        if (std::filesystem::is_directory(argv[i])) {
            for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
                if (entry.is_regular_file()) inputs.push_back(entry.path());
        } else {
            inputs.emplace_back(argv[i]);
        }
    }
    if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
    int failures = 0;
    for (const auto& input : inputs) {
        std::ifstream in(input, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        const auto start = std::chrono::steady_clock::now();
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
        std::printf("%s: %.3f s\n", input.filename().c_str(), elapsed.count());
        if (elapsed.count() > limit) {
            std::printf("  slower than %.1f s\n", limit);
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}
