#pragma once

#include <zip.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace quillon::report {

/// Reads the parts of a package in memory.
class PackageReader {
 public:
    explicit PackageReader(std::string bytes) : bytes_(std::move(bytes))
    {
        auto* source = zip_source_buffer_create(bytes_.data(), bytes_.size(), 0, nullptr);
        archive_.reset(zip_open_from_source(source, ZIP_RDONLY, nullptr));
        if (!archive_) throw std::runtime_error("The package is no zip file.");
    }

    bool hasPart(const std::string& name) const
    {
        return zip_name_locate(archive_.get(), name.c_str(), 0) >= 0;
    }

    std::string getPart(const std::string& name) const
    {
        zip_stat_t status;
        if (zip_stat(archive_.get(), name.c_str(), 0, &status) < 0) throw std::runtime_error("No " + name);
        std::string text(status.size, '\0');
        const std::unique_ptr<zip_file_t, Close> file(zip_fopen(archive_.get(), name.c_str(), 0));
        zip_fread(file.get(), text.data(), text.size());
        return text;
    }

 private:
    struct Close {
        void operator()(zip_t* archive) const { zip_discard(archive); }
        void operator()(zip_file_t* file) const { zip_fclose(file); }
    };

    std::string bytes_;
    std::unique_ptr<zip_t, Close> archive_;
};

}  // namespace quillon::report
