#pragma once

#include <functional>
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

/// Writes `bytes` to `path` by way of a new file that takes its place at once and whole: whatever ends the
/// program, the old file is there or the new one.
///
/// A new file follows the umask. One that replaces another keeps its mode and, where the system allows it,
/// its owner and its extended attributes; other names of the old file (hard links) keep the old bytes. A file
/// that nobody may write is refused. Links are followed, and stay. Pipes, devices and open files, as
/// /dev/stdout and /dev/fd/5, are written to.
///
/// `onInterruption` is called when a signal interrupts the writing to a pipe or a device; it throws to give
/// up. Default: the writing goes on. Throws: FileError.
QUILLON_EXPORT void writeFile(const std::string& path, std::string_view bytes,
                              const std::function<void()>& onInterruption = nullptr);

}  // namespace quillon::report
