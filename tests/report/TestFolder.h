#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace quillon::report {

/// An empty folder that no other test knows, removed at the end.
class TestFolder {
 public:
    TestFolder()
    {
        auto pattern = testing::TempDir() + "quillon-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("There is no folder for the test.");
        path_ = pattern;
    }
    ~TestFolder() { std::filesystem::remove_all(path_); }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

    /// How many files it holds, hidden ones too.
    std::ptrdiff_t countFiles() const
    {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

 private:
    std::filesystem::path path_;
};

inline void writeText(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string readText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace quillon::report
