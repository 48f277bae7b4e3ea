#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace quillon::fuzz {

/// A file of this process, for readers that want a path; gone at its end.
class TemporaryFile {
 public:
    explicit TemporaryFile(const std::string& extension)
        : path_(std::filesystem::temp_directory_path() /
                ("quillon-fuzz-" + std::to_string(getpid()) + extension))
    {
    }
    ~TemporaryFile() { unlink(path_.c_str()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& write(const std::string& bytes) const
    {
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
        return path_;
    }

 private:
    std::string path_;
};

}  // namespace quillon::fuzz
