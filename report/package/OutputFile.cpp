#include "report/package/OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace quillon::report {
namespace {

/// The file behind the links of `path`; `path` itself where there is none.
std::string followLinks(const std::string& path)
{
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

/// Whether `path` leads to what is written to but never replaced.
bool isPipeOrDevice(const std::string& path)
{
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    return exists(status) && !is_regular_file(status) && !is_directory(status);
}

/// A new file beside the target, removed unless it was moved there; or the target itself if that is a pipe or
/// a device.
class OutputFile {
 public:
    explicit OutputFile(const std::string& path) : path_(path), target_(followLinks(path))
    {
        if (isPipeOrDevice(target_))
            descriptor_ = open(target_.c_str(), O_WRONLY | O_CLOEXEC);
        else
            openTemporary();
        if (descriptor_ < 0) throw FileError(path_, errno);
    }
    ~OutputFile()
    {
        if (descriptor_ >= 0) close(descriptor_);
        if (!temporary_.empty()) unlink(temporary_.c_str());
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    void write(std::string_view bytes) const
    {
        for (std::size_t done = 0; done < bytes.size();) {
            const auto count = ::write(descriptor_, bytes.data() + done, bytes.size() - done);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) throw FileError(path_, errno);
            done += static_cast<std::size_t>(count);
        }
    }

    void finish()
    {
        const int closed = close(descriptor_);
        descriptor_ = -1;
        if (closed < 0) throw FileError(path_, errno);
        if (temporary_.empty()) return;
        if (std::rename(temporary_.c_str(), target_.c_str()) != 0) throw FileError(path_, errno);
        temporary_.clear();
    }

 private:
    void openTemporary()
    {
        do {
            temporary_ = target_ + "." + std::to_string(getpid()) + "-" + std::to_string(++fileCount);
            descriptor_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (descriptor_ < 0 && errno == EEXIST);
    }

    static inline std::atomic<unsigned> fileCount = 0;

    const std::string& path_;
    std::string target_;
    /// Empty for a pipe or a device.
    std::string temporary_;
    int descriptor_ = -1;
};

}  // namespace

FileError::FileError(const std::string& path, int number)
    : std::runtime_error("Cannot write \"" + path + "\": " + std::strerror(number) + "."), number_(number)
{
}

void writeFile(const std::string& path, std::string_view bytes)
{
    OutputFile file(path);
    file.write(bytes);
    file.finish();
}

}  // namespace quillon::report
