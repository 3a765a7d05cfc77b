// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Runs all fuzzers over their inputs once, where the compiler has no libFuzzer:
///   replay_corpora FOLDER    FOLDER/NAME has the inputs of the fuzzer NAME

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

// The build defines FUZZERS as FUZZER(A)FUZZER(B)... and, in the file of fuzzer A,
// LLVMFuzzerTestOneInput as A.
#define FUZZER(name) extern "C" int name(const std::uint8_t *data, std::size_t size);
FUZZERS
#undef FUZZER

int main(int argc, char **argv)
{
    namespace fs = std::filesystem;
#define FUZZER(name) {#name, name},
    const struct {
        const char *name;
        int (*run)(const std::uint8_t *data, std::size_t size);
    } fuzzers[] = {FUZZERS};
    for (const auto &[name, run] : fuzzers) {
        int inputs = 0;
        for (const auto &entry :
            fs::directory_iterator(fs::path(argc > 1 ? argv[1] : ".") / name)) {
            std::printf("%s %s\n", name, entry.path().filename().string().c_str());
            std::fflush(stdout); // a check that fails aborts the program
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string input(std::istreambuf_iterator<char>(file), {});
            run(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
            ++inputs;
        }
        if (inputs == 0) {
            std::printf("%s has no inputs\n", name);
            return 1;
        }
    }
    return 0;
}
