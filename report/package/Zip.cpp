#include "report/package/Zip.h"

#include <zip.h>

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

}  // namespace quillon::report
