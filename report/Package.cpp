#include "report/Package.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace quillon::report {
namespace {

/// 1 January 1980, the first day of the format.
constexpr zip_uint16_t firstDay = 0x21;
constexpr int fastestCompression = 1;

[[noreturn]] void failToZip(const char* reason)
{
    throw std::runtime_error(std::string("The document's package could not be made: ") + reason);
}

struct FreeSource {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};

struct DiscardArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

void addPart(zip_t* archive, const Part& part)
{
    auto* source = zip_source_buffer(archive, part.bytes.data(), part.bytes.size(), 0);
    if (source == nullptr) failToZip(zip_strerror(archive));
    const auto index = zip_file_add(archive, part.name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        failToZip(zip_strerror(archive));
    }
    const auto at = static_cast<zip_uint64_t>(index);
    zip_file_set_dostime(archive, at, 0, firstDay, 0);
    zip_set_file_compression(archive, at, part.compress ? ZIP_CM_DEFLATE : ZIP_CM_STORE, fastestCompression);
}

std::string readAll(zip_source_t* source)
{
    zip_stat_t status;
    zip_source_stat(source, &status);
    std::string bytes(status.size, '\0');
    if (zip_source_open(source) < 0) failToZip("the result cannot be read.");
    const auto count = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    if (count != static_cast<zip_int64_t>(bytes.size())) failToZip("the result is incomplete.");
    return bytes;
}

[[noreturn]] void failToWrite(const std::string& path, int error)
{
    throw std::runtime_error("Cannot write \"" + path + "\": " + std::strerror(error) + ".");
}

/// A new file beside the target; removed unless it was moved there.
class TemporaryFile {
 public:
    explicit TemporaryFile(const std::string& target) : target_(target), name_(target + ".XXXXXX")
    {
        descriptor_ = mkstemp(name_.data());
        if (descriptor_ < 0) failToWrite(target_, errno);
    }
    ~TemporaryFile()
    {
        if (descriptor_ >= 0) close(descriptor_);
        if (!moved_) unlink(name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(const std::string& bytes) const
    {
        for (std::size_t done = 0; done < bytes.size();) {
            const auto count = ::write(descriptor_, bytes.data() + done, bytes.size() - done);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) failToWrite(target_, errno);
            done += static_cast<std::size_t>(count);
        }
    }

    void moveToTarget()
    {
        const auto mask = umask(0);
        umask(mask);
        fchmod(descriptor_, 0666 & ~mask);
        const int closed = close(descriptor_);
        descriptor_ = -1;
        if (closed < 0 || std::rename(name_.c_str(), target_.c_str()) != 0) failToWrite(target_, errno);
        moved_ = true;
    }

 private:
    const std::string& target_;
    std::string name_;
    int descriptor_ = -1;
    bool moved_ = false;
};

}  // namespace

std::string zipParts(const std::vector<Part>& parts)
{
    zip_error_t error;
    zip_error_init(&error);
    const std::unique_ptr<zip_source_t, FreeSource> source(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (!source) failToZip("out of memory.");
    std::unique_ptr<zip_t, DiscardArchive> archive(zip_open_from_source(source.get(), ZIP_TRUNCATE, &error));
    if (!archive) failToZip(zip_error_strerror(&error));
    zip_source_keep(source.get());
    for (const auto& part : parts) addPart(archive.get(), part);
    if (zip_close(archive.get()) < 0) failToZip(zip_strerror(archive.get()));
    static_cast<void>(archive.release());
    return readAll(source.get());
}

void writeFile(const std::string& path, const std::string& bytes)
{
    TemporaryFile file(path);
    file.write(bytes);
    file.moveToTarget();
}

}  // namespace quillon::report
