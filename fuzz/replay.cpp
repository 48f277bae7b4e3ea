#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/Check.h"

// Runs the harness that it is linked with over files, and all files of folders: fuzz_texts PATH...

namespace {

using Path = std::filesystem::path;

std::vector<Path> listFiles(const Path& path)
{
    if (!std::filesystem::is_directory(path)) return {path};
    std::vector<Path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const Path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("Cannot read " + path.string() + ".");
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // The last line before a crash.
    std::cout << path.string() << std::endl;
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    std::size_t count = 0;
    for (const auto* path : std::vector<const char*>(arguments + 1, arguments + argumentCount))
        for (const auto& file : listFiles(path)) {
            replay(file);
            ++count;
        }
    std::cout << count << " inputs\n";
    return count > 0 ? 0 : 1;
}
