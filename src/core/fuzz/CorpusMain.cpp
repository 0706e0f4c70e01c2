// Runs a fuzz harness over files: each argument is an input or a folder of inputs.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size);

namespace {
void runFile(std::filesystem::path const & path)
{
    std::ifstream file(path, std::ios::binary);
    std::string const input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const *>(input.data()), input.size());
}
} // namespace

int main(int argc, char ** argv)
{
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            runFile(argv[i]);
            ++count;
            continue;
        }
        for (auto const & entry : std::filesystem::directory_iterator(argv[i])) {
            runFile(entry.path());
            ++count;
        }
    }
    std::cout << count << " inputs\n";
    return count > 0 ? 0 : 1;
}
