#include "report/package/OutputTarget.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>

#include <cerrno>
#include <climits>

#include "report/options/PlainNumber.h"

namespace quillon::report {
namespace {

/// As many as the kernel follows.
constexpr int maximumLinks = 40;

[[noreturn]] void fail(int number)
{
    throw std::system_error(number, std::generic_category());
}

/// What stands in a folder for all, /tmp say, may be a trap: another user's link to a file of ours, a pipe
/// that the other one reads.
void requireTrusted(const Descriptor& folder, const struct stat& found)
{
    struct stat around {};
    if (fstat(folder.get(), &around) != 0) fail(errno);
    constexpr mode_t forAll = S_ISVTX | S_IWOTH;
    const bool isForAll = (around.st_mode & forAll) == forAll;
    if (isForAll && found.st_uid != geteuid() && found.st_uid != around.st_uid) fail(EACCES);
}

bool isInProc(const Descriptor& folder)
{
    struct statfs status {};
    return fstatfs(folder.get(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

std::string readLink(const Descriptor& folder, const std::string& name)
{
    std::string text(PATH_MAX, '\0');
    const auto size = readlinkat(folder.get(), name.c_str(), text.data(), text.size());
    if (size < 0) fail(errno);
    text.resize(static_cast<std::size_t>(size));
    return text;
}

/// The descriptor of this process that `name`, a number, and the file behind it say; -1 where there is none.
int findOwn(const std::string& name, const struct stat& file)
{
    const int number = readPlainNumber<int>(name).value_or(-1);
    struct stat own {};
    const bool isSame = fstat(number, &own) == 0 && own.st_dev == file.st_dev && own.st_ino == file.st_ino;
    return isSame ? number : -1;
}

}  // namespace

OutputTarget::OutputTarget(const std::string& path)
{
    if (path.find('\0') != std::string::npos) fail(EINVAL);
    enter(AT_FDCWD, path);
    look();
    for (int links = 0; status && S_ISLNK(status->st_mode); ++links) {
        if (isInProc(folder)) {
            kind = Kind::OpenFile;
            return;
        }
        if (links == maximumLinks) fail(ELOOP);
        follow();
    }
    if (!status) return;
    if (S_ISDIR(status->st_mode)) fail(EISDIR);
    requireTrusted(folder, *status);
    kind = S_ISREG(status->st_mode) ? Kind::RegularFile : Kind::Stream;
}

void OutputTarget::enter(int from, const std::string& path)
{
    if (path.empty()) fail(ENOENT);
    const auto end = path.rfind('/') + 1;
    const auto before = end == 0 ? std::string(".") : path.substr(0, end);
    Descriptor entered(openat(from, before.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!entered.isOpen()) fail(errno);
    folder = std::move(entered);
    name = path.substr(end);
    if (name.empty()) fail(EISDIR);
}

void OutputTarget::look()
{
    struct stat found {};
    if (fstatat(folder.get(), name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0)
        status = found;
    else if (errno == ENOENT)
        status.reset();
    else
        fail(errno);
}

void OutputTarget::follow()
{
    requireTrusted(folder, *status);
    const auto text = readLink(folder, name);
    enter(folder.get(), text);
    look();
}

Descriptor OutputTarget::openForWriting() const
{
    constexpr int flags = O_WRONLY | O_NOCTTY | O_CLOEXEC;
    if (kind == Kind::Stream) return Descriptor(openat(folder.get(), name.c_str(), flags | O_NOFOLLOW));
    struct stat file {};
    if (fstatat(folder.get(), name.c_str(), &file, 0) != 0) return Descriptor();
    const int own = findOwn(name, file);
    if (own >= 0) return Descriptor(fcntl(own, F_DUPFD_CLOEXEC, 0));
    // Another process goes on where it stands; we write behind what there is.
    return Descriptor(openat(folder.get(), name.c_str(), flags | O_APPEND));
}

}  // namespace quillon::report
