#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "report/package/Descriptor.h"

namespace quillon::report {

/// Where bytes for a path go: a name in an open folder, and what stands there. The last links of the path are
/// followed one by one, because a rename would replace them, and because the kernel guards only those that it
/// follows itself.
struct OutputTarget {
    enum class Kind {
        /// Of a new file.
        Nothing,
        RegularFile,
        /// A pipe, a device, or a socket.
        Stream,
        /// A link of /proc to an open file; its text names no path.
        OpenFile
    };

    /// Throws: std::system_error for a path that leads nowhere, to a folder, or by way of what somebody else
    /// may have left in a folder for all.
    explicit OutputTarget(const std::string& path);

    /// Opens a stream or an open file for writing. An open file of our own goes on where it stands.
    /// Returns none, and errno, on failure.
    Descriptor openForWriting() const;

    Descriptor folder;
    std::string name;
    Kind kind = Kind::Nothing;
    /// Unset where there is nothing.
    std::optional<struct stat> status;

 private:
    void enter(int from, const std::string& path);
    void look();
    void follow();
};

}  // namespace quillon::report
