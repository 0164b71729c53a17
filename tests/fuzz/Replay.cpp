/// Stands in for the fuzzer: runs every file of a corpus through the target, in the order of their names.
///
/// Each name is printed before its input runs, so that the last one printed is the one that broke.
#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "FuzzTarget.hpp"

namespace {

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const std::filesystem::path& path)
{
    std::cout << path.filename().string() << std::endl;
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot be read");
    }
    const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

}  // namespace

int main(int count, char** arguments)
{
    try {
        const auto files = filesOf(count == 2 ? arguments[1] : "");
        for (const auto& path : files) {
            replay(path);
        }
        std::cout << files.size() << " inputs\n";
        return files.empty() ? 1 : 0;
    } catch (const std::exception& e) {
        std::cerr << e.what() << '\n';
        return 1;
    }
}
