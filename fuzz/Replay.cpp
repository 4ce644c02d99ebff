// SPDX-License-Identifier: MIT
// The main function of a target in a build without libFuzzer: runs it on all files of the given folders (the seeds, or
// inputs that libFuzzer has found), first as they are, then with random bytes changed and cut off, the same in every
// run. An input that ends the process is left in the working folder, as the program's name and ".input".
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "Fuzz.h"

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int changesPerSeed = 10;
#else
constexpr int changesPerSeed = 60;
#endif

using Bytes = std::vector<std::uint8_t>;

void Try(const Bytes& bytes, const std::string& kept) {
    std::ofstream(kept, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), std::ssize(bytes));
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    int files = 0;
    const std::string kept = std::filesystem::absolute(argv[0]).string() + ".input";
    for (int i = 1; i < argc; ++i)
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream in(entry.path(), std::ios::binary);
            const Bytes seed(std::istreambuf_iterator<char>(in), {});
            Try(seed, kept);
            ++files;
            std::mt19937 random(20240607);
            for (int k = 0; k < changesPerSeed && !seed.empty(); ++k) {
                Bytes bytes = seed;
                for (unsigned n = random() % 6 + 1; n > 0; --n)
                    bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random() % 2 ? random() % 8 : random());
                if (random() % 4 == 0) bytes.resize(random() % bytes.size());
                bytes.shrink_to_fit();
                Try(bytes, kept);
            }
        }
    std::filesystem::remove(kept);
    std::fprintf(stderr, "%d seeds\n", files);
    return files > 0 ? 0 : 1;  // a folder without seeds tries nothing
}
