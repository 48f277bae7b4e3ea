#include "report/table/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

constexpr std::size_t blockSize = 1U << 16U;

std::string nameFile(const std::string& path)
{
    return path == "-" ? "standard input" : showText(path, path.size());
}

int openFile(const std::string& path, const std::string& name)
{
    if (path.find('\0') != std::string::npos)
        fail("Cannot read \"{}\": the path holds a null character.", name);
    const int descriptor = path == "-" ? dup(STDIN_FILENO) : open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) fail("Cannot read \"{}\": {}.", name, std::strerror(errno));
    return descriptor;
}

/// Reads as much as there is for the block, over interruptions. -1: an error, in errno.
ssize_t readBlock(int descriptor, std::span<char> block)
{
    std::size_t filled = 0;
    while (filled < block.size()) {
        const auto count = ::read(descriptor, block.data() + filled, block.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return -1;
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

}  // namespace

InputFile::InputFile(const std::string& path) : name_(nameFile(path)), descriptor_(openFile(path, name_))
{
    try {
        struct stat status {};
        if (fstat(descriptor_, &status) != 0) refuse(errno);
        if (S_ISDIR(status.st_mode)) fail("Cannot read \"{}\": it is a folder.", name_);
        size_ = static_cast<std::uint64_t>(status.st_size);
        if (path == "-" || !S_ISREG(status.st_mode)) spool();
    } catch (...) {
        close(descriptor_);
        throw;
    }
}

InputFile::~InputFile()
{
    close(descriptor_);
}

void InputFile::refuse(int error) const
{
    fail("Cannot read \"{}\": {}.", name_, std::strerror(error));
}

void InputFile::spool()
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> copy(std::tmpfile(), &std::fclose);
    if (!copy) fail("Cannot keep a copy of \"{}\": {}.", name_, std::strerror(errno));
    std::vector<char> block(blockSize);
    size_ = 0;
    while (const auto count = read(block)) {
        if (std::fwrite(block.data(), 1, count, copy.get()) != count)
            fail("Cannot keep a copy of \"{}\": {}.", name_, std::strerror(errno));
        size_ += count;
    }
    if (std::fflush(copy.get()) != 0) fail("Cannot keep a copy of \"{}\": {}.", name_, std::strerror(errno));
    if (dup2(fileno(copy.get()), descriptor_) < 0) refuse(errno);
    rewind();
}

std::string InputFile::peek(std::size_t count) const
{
    std::string bytes(count, '\0');
    std::size_t filled = 0;
    while (filled < count) {
        const auto got =
            pread(descriptor_, bytes.data() + filled, count - filled, static_cast<off_t>(filled));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) refuse(errno);
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
    }
    bytes.resize(filled);
    return bytes;
}

void InputFile::rewind()
{
    if (lseek(descriptor_, 0, SEEK_SET) < 0) refuse(errno);
}

std::size_t InputFile::read(std::span<char> block)
{
    const auto count = readBlock(descriptor_, block);
    if (count < 0) refuse(errno);
    return static_cast<std::size_t>(count);
}

std::string InputFile::readAll(std::uint64_t most)
{
    rewind();
    std::string bytes;
    std::vector<char> block(blockSize);
    while (const auto count = read(block)) {
        bytes.append(block.data(), count);
        if (bytes.size() > most)
            fail("{}: the file is larger than {} MB, the most of its kind; CSV files may be larger.", name_,
                 most >> 20U);
    }
    return bytes;
}

}  // namespace quillon::report
