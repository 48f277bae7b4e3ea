#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quillon::report {

/// A file open for reading, as often as wanted from its start. What can be read once only, as standard input
/// and pipes, is first copied into a temporary file without a name.
class InputFile {
 public:
    /// Hears how many bytes are read, of how many.
    using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

    /// Opens a path; "-" is standard input.
    /// Throws: std::runtime_error with the system's reason, for a folder, and for a path with a null
    /// character.
    explicit InputFile(const std::string& path);
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// The path as it stands in sentences: control characters escaped, "standard input" for "-".
    const std::string& getName() const { return name_; }
    std::uint64_t getSize() const { return size_; }
    /// The first bytes, `count` of them where there are as many.
    std::string peek(std::size_t count) const;
    void rewind();
    /// Fills the block as far as there are bytes; 0 at the end.
    /// Throws: std::runtime_error with the system's reason: a file that cannot be read to its end is refused.
    std::size_t read(std::span<char> block);
    /// All bytes. Throws: std::runtime_error when there are more than `most`; as read.
    std::string readAll(std::uint64_t most);

 private:
    [[noreturn]] void refuse(int error) const;
    void spool();

    std::string name_;
    int descriptor_ = -1;
    std::uint64_t size_ = 0;
};

}  // namespace quillon::report
