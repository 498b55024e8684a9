// Runs a fuzz harness over files, so that its corpus and every input that once made it
// fail stay ordinary test cases in builds without libFuzzer. Arguments are files or
// folders (all regular files inside, in name order); a missing folder counts as empty.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) __attribute__((weak));

namespace fs = std::filesystem;

static std::vector<fs::path> inputsOf(const fs::path& path)
{
    std::vector<fs::path> inputs;
    std::error_code error;
    if (fs::is_directory(path, error)) {
        for (const fs::directory_entry& entry : fs::directory_iterator(path, error))
            if (entry.is_regular_file())
                inputs.push_back(entry.path());
        std::sort(inputs.begin(), inputs.end());
    } else if (fs::is_regular_file(path, error)) {
        inputs.push_back(path);
    }
    return inputs;
}

int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& input : inputsOf(argv[i])) {
            std::ifstream file(input, std::ios::binary);
            const std::vector<char> bytes((std::istreambuf_iterator<char>(file)),
                                          std::istreambuf_iterator<char>());
            std::printf("%s\n", input.c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
            ++count;
        }
    }
    std::printf("%d inputs replayed\n", count);
    return 0;
}
