// Runs a fuzzer over the files of its corpus, for builds without libFuzzer.

#include "FuzzCheck.h"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char **argv)
{
    try {
        int count = 0;
        for (int i = 1; i < argc; ++i) {
            for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
                std::ifstream file(entry.path(), std::ios::binary);
                const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
                vantrel::fuzz::tryInput(bytes);
                ++count;
            }
        }
        std::printf("%d inputs replayed\n", count);
        return count > 0 ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
