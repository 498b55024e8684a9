// Runs a fuzz harness over files, so that its corpus and every input that once made it
// fail stay ordinary test cases in builds without libFuzzer. Arguments are files or
// folders (all regular files inside, in name order); a missing folder counts as empty.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));

int main(int argc, char** argv)
{
    namespace fs = std::filesystem;
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        std::error_code error;
        std::vector<fs::path> inputs;
        if (fs::is_directory(argv[i], error))
            std::copy(fs::directory_iterator(argv[i], error), fs::directory_iterator(), std::back_inserter(inputs));
        else if (fs::is_regular_file(argv[i], error))
            inputs.push_back(argv[i]);
        std::sort(inputs.begin(), inputs.end());
        for (const fs::path& input : inputs) {
            std::ifstream file(input, std::ios::binary);
            const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
            std::printf("%s\n", input.c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    std::printf("%d inputs replayed\n", count);
    return 0;
}
