#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "support/Export.h"

namespace quillon::report {

/// Says that a file cannot be written: the path, and the reason.
class QUILLON_EXPORT FileError : public std::runtime_error {
 public:
    /// Number: as in errno.
    FileError(const std::string& path, int number);
    int getNumber() const noexcept { return number_; }

 private:
    int number_;
};

/// Writes `bytes` to `path` by way of a file beside it, which never stays behind. Links are followed; a pipe
/// or a device is written to directly.
/// Throws: FileError.
QUILLON_EXPORT void writeFile(const std::string& path, std::string_view bytes);

}  // namespace quillon::report
