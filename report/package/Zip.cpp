#include "report/package/Zip.h"

#include <zip.h>
#include <zlib.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace quillon::report {
namespace {

/// 1 January 1980, the first day of the format.
constexpr zip_uint16_t firstDay = 0x21;
constexpr int fastestCompression = 1;

/// Some failures say nothing; those are of memory too.
bool isOfMemory(const zip_error_t& error)
{
    const int code = zip_error_code_zip(&error);
    return code == ZIP_ER_MEMORY || code == ZIP_ER_OK ||
           (code == ZIP_ER_ZLIB && zip_error_code_system(&error) == Z_MEM_ERROR);
}

[[noreturn]] void failToZip(zip_error_t& error)
{
    if (isOfMemory(error)) throw std::bad_alloc();
    throw std::runtime_error(std::string("The document's package could not be made: ") +
                             zip_error_strerror(&error) + ".");
}

/// A new zip file in memory.
class Archive {
 public:
    Archive()
    {
        zip_error_t error;
        zip_error_init(&error);
        source_.reset(zip_source_buffer_create(nullptr, 0, 0, &error));
        if (source_) archive_.reset(zip_open_from_source(source_.get(), ZIP_TRUNCATE, &error));
        if (!archive_) failToZip(error);
        // The archive owns a share of its own.
        zip_source_keep(source_.get());
    }

    /// The bytes of `part` must outlive the archive.
    void add(const Part& part)
    {
        auto* content = zip_source_buffer(archive_.get(), part.bytes.data(), part.bytes.size(), 0);
        require(content != nullptr);
        const auto index = zip_file_add(archive_.get(), part.name.c_str(), content, ZIP_FL_ENC_UTF_8);
        if (index < 0) zip_source_free(content);
        require(index >= 0);
        const auto at = static_cast<zip_uint64_t>(index);
        require(zip_file_set_dostime(archive_.get(), at, 0, firstDay, 0) == 0);
        const auto method = part.compress ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
        require(zip_set_file_compression(archive_.get(), at, method, fastestCompression) == 0);
    }

    std::string write()
    {
        require(zip_close(archive_.get()) == 0);
        static_cast<void>(archive_.release());
        zip_stat_t status;
        requireSource(zip_source_stat(source_.get(), &status) == 0);
        std::string bytes(status.size, '\0');
        requireSource(zip_source_open(source_.get()) == 0);
        const auto count = zip_source_read(source_.get(), bytes.data(), bytes.size());
        zip_source_close(source_.get());
        requireSource(count == static_cast<zip_int64_t>(bytes.size()));
        return bytes;
    }

 private:
    struct Free {
        void operator()(zip_source_t* source) const { zip_source_free(source); }
        void operator()(zip_t* archive) const { zip_discard(archive); }
    };

    void require(bool success) const
    {
        if (!success) failToZip(*zip_get_error(archive_.get()));
    }

    void requireSource(bool success) const
    {
        if (!success) failToZip(*zip_source_error(source_.get()));
    }

    std::unique_ptr<zip_source_t, Free> source_;
    std::unique_ptr<zip_t, Free> archive_;
};

}  // namespace

std::string zipParts(const std::vector<Part>& parts)
{
    Archive archive;
    for (const auto& part : parts) archive.add(part);
    return archive.write();
}

}  // namespace quillon::report
