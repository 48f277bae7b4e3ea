#include "report/Package.h"

#include <fcntl.h>
#include <unistd.h>
#include <zip.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>

#include "report/Document.h"

namespace quillon::report {
namespace {

/// 1 January 1980, the first day of the format.
constexpr zip_uint16_t firstDay = 0x21;
constexpr int fastestCompression = 1;

[[noreturn]] void failToZip(const char* reason)
{
    throw std::runtime_error(std::string("The document's package could not be made: ") + reason);
}

/// A zip file in memory that is read, changed and written.
class Archive {
 public:
    /// Empty bytes make an empty archive. `bytes` must outlive it.
    explicit Archive(const std::string& bytes)
        : source_(zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr))
    {
        if (!source_) failToZip("out of memory.");
        zip_error_t error;
        zip_error_init(&error);
        archive_.reset(zip_open_from_source(source_.get(), bytes.empty() ? ZIP_TRUNCATE : 0, &error));
        if (!archive_) failToZip(zip_error_strerror(&error));
        // The archive owns a share of its own.
        zip_source_keep(source_.get());
    }

    /// The bytes of `part` must outlive the archive.
    void add(const Part& part)
    {
        auto* content = zip_source_buffer(archive_.get(), part.bytes.data(), part.bytes.size(), 0);
        if (content == nullptr) failToZip(zip_strerror(archive_.get()));
        const auto index = zip_file_add(archive_.get(), part.name.c_str(), content, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(content);
            failToZip(zip_strerror(archive_.get()));
        }
        const auto at = static_cast<zip_uint64_t>(index);
        zip_file_set_dostime(archive_.get(), at, 0, firstDay, 0);
        zip_set_file_compression(archive_.get(), at, part.compress ? ZIP_CM_DEFLATE : ZIP_CM_STORE,
                                 fastestCompression);
    }

    void remove(const std::string& name)
    {
        const auto index = zip_name_locate(archive_.get(), name.c_str(), 0);
        if (index < 0 || zip_delete(archive_.get(), static_cast<zip_uint64_t>(index)) < 0)
            failToZip(zip_strerror(archive_.get()));
    }

    std::string write()
    {
        if (zip_close(archive_.get()) < 0) failToZip(zip_strerror(archive_.get()));
        static_cast<void>(archive_.release());
        zip_stat_t status;
        zip_source_stat(source_.get(), &status);
        std::string bytes(status.size, '\0');
        if (zip_source_open(source_.get()) < 0) failToZip("the result cannot be read.");
        const auto count = zip_source_read(source_.get(), bytes.data(), bytes.size());
        zip_source_close(source_.get());
        if (count != static_cast<zip_int64_t>(bytes.size())) failToZip("the result is incomplete.");
        return bytes;
    }

 private:
    struct Free {
        void operator()(zip_source_t* source) const { zip_source_free(source); }
        void operator()(zip_t* archive) const { zip_discard(archive); }
    };

    std::unique_ptr<zip_source_t, Free> source_;
    std::unique_ptr<zip_t, Free> archive_;
};

/// A new file beside the target; removed unless it was moved there.
class TemporaryFile {
 public:
    explicit TemporaryFile(const std::string& target) : target_(target), path_(resolve(target))
    {
        do {
            name_ = path_ + "." + std::to_string(getpid()) + "-" + std::to_string(++fileCount);
            descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (descriptor_ < 0 && errno == EEXIST);
        if (descriptor_ < 0) throw FileError(target_, errno);
    }
    ~TemporaryFile()
    {
        if (descriptor_ >= 0) close(descriptor_);
        if (!moved_) unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(std::string_view bytes) const
    {
        for (std::size_t done = 0; done < bytes.size();) {
            const auto count = ::write(descriptor_, bytes.data() + done, bytes.size() - done);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) throw FileError(target_, errno);
            done += static_cast<std::size_t>(count);
        }
    }

    void moveToTarget()
    {
        const int closed = close(descriptor_);
        descriptor_ = -1;
        if (closed < 0 || std::rename(name_.c_str(), path_.c_str()) != 0) throw FileError(target_, errno);
        moved_ = true;
    }

 private:
    static inline std::atomic<unsigned> fileCount = 0;

    /// The file that a link leads to; a link stays one.
    static std::string resolve(const std::string& target)
    {
        std::error_code error;
        const auto path = std::filesystem::canonical(target, error);
        if (error) return target;
        if (std::filesystem::is_regular_file(path, error)) return path.string();
        throw FileError(target, std::filesystem::is_directory(path, error) ? EISDIR : EINVAL);
    }

    const std::string& target_;
    std::string path_;
    std::string name_;
    int descriptor_ = -1;
    bool moved_ = false;
};

}  // namespace

std::string zipParts(const std::vector<Part>& parts)
{
    Archive archive("");
    for (const auto& part : parts) archive.add(part);
    return archive.write();
}

std::string replaceParts(const std::string& archive, const std::vector<Part>& parts)
{
    Archive changed(archive);
    // A part that is replaced in its place would keep the compression level of the archive.
    for (const auto& part : parts) {
        changed.remove(part.name);
        changed.add(part);
    }
    return changed.write();
}

void writeFile(const std::string& path, std::string_view bytes)
{
    TemporaryFile file(path);
    file.write(bytes);
    file.moveToTarget();
}

}  // namespace quillon::report
