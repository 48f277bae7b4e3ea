#include "report/package/OutputFile.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/xattr.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <system_error>

#include "report/package/OutputTarget.h"

namespace quillon::report {
namespace {

using Interruption = std::function<void()>;

constexpr auto accessList = "system.posix_acl_access";
constexpr auto descriptorFolder = "/proc/self/fd";

void require(bool success)
{
    if (!success) throw std::system_error(errno, std::generic_category());
}

/// After a call that failed: goes on where a signal did that, or where a pipe has to be waited for.
void goOn(int descriptor, const Interruption& onInterruption)
{
    if (errno == EAGAIN) {
        pollfd waiting{descriptor, POLLOUT, 0};
        if (poll(&waiting, 1, -1) >= 0) return;
    }
    require(errno == EINTR);
    if (onInterruption) onInterruption();
}

void writeAll(int descriptor, std::string_view bytes, const Interruption& onInterruption)
{
    while (!bytes.empty()) {
        const auto count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0) {
            goOn(descriptor, onInterruption);
            continue;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
        // A signal ends a call early that has written some bytes.
        if (!bytes.empty() && onInterruption) onInterruption();
    }
}

/// Some file systems cannot be asked for it.
void sync(int descriptor)
{
    int result = 0;
    do result = fsync(descriptor);
    while (result != 0 && errno == EINTR);
    require(result == 0 || errno == EINVAL);
}

/// While it lives, the signals that end a program wait on this thread: they would leave a file behind.
class SignalsHeldBack {
 public:
    SignalsHeldBack()
    {
        sigset_t ends;
        sigemptyset(&ends);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&ends, signal);
        pthread_sigmask(SIG_BLOCK, &ends, &previous_);
    }
    ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
    sigset_t previous_{};
};

std::string readAttribute(int file, const char* name)
{
    const auto size = fgetxattr(file, name, nullptr, 0);
    std::string value(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    const auto read = fgetxattr(file, name, value.data(), value.size());
    value.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    return value;
}

std::string listAttributes(int file)
{
    const auto size = flistxattr(file, nullptr, 0);
    std::string names(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    const auto read = flistxattr(file, names.data(), names.size());
    names.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    return names;
}

/// What the system refuses is left out.
void copyAttributes(int from, int to)
{
    // A new file may have an access list from its folder.
    static_cast<void>(fremovexattr(to, accessList));
    const auto names = listAttributes(from);
    for (std::size_t at = 0; at < names.size(); at += std::strlen(&names[at]) + 1) {
        const auto value = readAttribute(from, &names[at]);
        static_cast<void>(fsetxattr(to, &names[at], value.data(), value.size(), 0));
    }
}

/// Gives the new file the owner of the old one where that is allowed. Returns the mode that fits: no rights
/// go to a group or a user that did not have them.
mode_t keepOwner(int file, const struct stat& old)
{
    const mode_t mode = old.st_mode & 07777;
    if (fchown(file, old.st_uid, old.st_gid) == 0) return mode;
    const mode_t ofOwner = mode & ~static_cast<mode_t>(S_ISUID);
    if (fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0) return ofOwner;
    const mode_t ofGroup = ofOwner & (ofOwner << 3) & S_IRWXG;
    return (ofOwner & ~static_cast<mode_t>(S_ISGID | S_IRWXG)) | ofGroup;
}

/// A new file that takes the place of its target, removed unless it did. It has no name until it is whole,
/// where the file system offers that.
class Replacement {
 public:
    explicit Replacement(const OutputTarget& target) : target_(target)
    {
        requireWritable();
        // Nobody else reads what replaces a private file.
        const mode_t mode = target.status ? 0600 : 0666;
        if (access(descriptorFolder, X_OK) == 0)
            file_ = Descriptor(openat(getFolder(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        if (file_.isOpen()) return;
        takeName([this, mode](const char* name) {
            file_ = Descriptor(openat(getFolder(), name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
            return file_.isOpen();
        });
    }
    ~Replacement()
    {
        if (!name_.empty()) unlinkat(getFolder(), name_.c_str(), 0);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void write(std::string_view bytes) const { writeAll(file_.get(), bytes, nullptr); }

    void finish()
    {
        if (target_.status) keepAttributes();
        sync(file_.get());
        if (name_.empty()) nameFile();
        require(file_.closeNow());
        require(renameat(getFolder(), name_.c_str(), getFolder(), target_.name.c_str()) == 0);
        name_.clear();
        syncFolder();
    }

 private:
    int getFolder() const { return target_.folder.get(); }

    /// The superuser may write everything; what its owner protects is refused all the same.
    void requireWritable() const
    {
        if (!target_.status) return;
        const bool isProtected = (target_.status->st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
        if (isProtected) errno = EACCES;
        require(!isProtected && faccessat(getFolder(), target_.name.c_str(), W_OK, AT_EACCESS) == 0);
    }

    /// Calls `make` with names that nobody else uses until it makes a file of that name.
    template <typename Make>
    void takeName(const Make& make)
    {
        heldBack_.emplace();
        std::string name;
        bool isMade = false;
        do {
            name = ".quillon-" + std::to_string(getpid()) + "-" + std::to_string(++fileCount);
            isMade = make(name.c_str());
        } while (!isMade && errno == EEXIST);
        require(isMade);
        name_ = std::move(name);
    }

    void nameFile()
    {
        const auto unnamed = std::string(descriptorFolder) + "/" + std::to_string(file_.get());
        takeName([&](const char* name) {
            return linkat(AT_FDCWD, unnamed.c_str(), getFolder(), name, AT_SYMLINK_FOLLOW) == 0;
        });
    }

    void keepAttributes() const
    {
        const auto mode = keepOwner(file_.get(), *target_.status);
        const Descriptor old(
            openat(getFolder(), target_.name.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
        require(old.isOpen() || errno == EACCES);
        if (old.isOpen()) copyAttributes(old.get(), file_.get());
        require(fchmod(file_.get(), mode) == 0);
    }

    /// The name is safe after that. A folder that may not be read cannot be asked for it.
    void syncFolder() const
    {
        const Descriptor folder(openat(getFolder(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        require(folder.isOpen() || errno == EACCES);
        if (folder.isOpen()) sync(folder.get());
    }

    static inline std::atomic<unsigned> fileCount = 0;

    const OutputTarget& target_;
    /// While the file has a name of its own.
    std::optional<SignalsHeldBack> heldBack_;
    std::string name_;
    Descriptor file_;
};

void replace(const OutputTarget& target, std::string_view bytes)
{
    Replacement file(target);
    file.write(bytes);
    file.finish();
}

void writeInto(const OutputTarget& target, std::string_view bytes, const Interruption& onInterruption)
{
    Descriptor file = target.openForWriting();
    while (!file.isOpen()) {
        require(errno == EINTR);
        if (onInterruption) onInterruption();
        file = target.openForWriting();
    }
    writeAll(file.get(), bytes, onInterruption);
    require(file.closeNow());
}

}  // namespace

FileError::FileError(const std::string& path, int number)
    : std::runtime_error("Cannot write \"" + path + "\": " + std::strerror(number) + "."), number_(number)
{
}

void writeFile(const std::string& path, std::string_view bytes, const Interruption& onInterruption)
{
    try {
        const OutputTarget target(path);
        const bool isFile =
            target.kind == OutputTarget::Kind::Nothing || target.kind == OutputTarget::Kind::RegularFile;
        if (isFile)
            replace(target, bytes);
        else
            writeInto(target, bytes, onInterruption);
    } catch (const std::system_error& error) {
        throw FileError(path, error.code().value());
    }
}

}  // namespace quillon::report
