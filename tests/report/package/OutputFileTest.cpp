#include "report/package/OutputFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <thread>

#include "tests/report/TestFolder.h"

namespace quillon::report {
namespace {

/// The errno of the FileError that `path` gives; 0 where it is written.
int writeAndGetError(const std::string& path)
{
    try {
        writeFile(path, "new");
    } catch (const FileError& error) {
        return error.getNumber();
    }
    return 0;
}

struct stat getStatus(const std::string& path)
{
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

mode_t getMode(const std::string& path)
{
    return getStatus(path).st_mode & 07777;
}

std::string readDescriptor(int descriptor)
{
    std::string bytes(100, '\0');
    const auto count = pread(descriptor, bytes.data(), bytes.size(), 0);
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
}

TEST(OutputFile, FollowsLinksAndKeepsThem)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder / "sub");
    writeText(folder / "sub/old", "old");
    const std::array<std::array<const char*, 3>, 5> links = {{{"absolute", "", "sub/old"},
                                                              {"relative", "sub/old", "sub/old"},
                                                              {"chain", "sub/back", "chained"},
                                                              {"dangling", "sub/new", "sub/new"},
                                                              {"out", "./sub/../sub/other", "sub/other"}}};
    std::filesystem::create_symlink("../chained", folder / "sub/back");
    for (const auto& [link, text, file] : links) {
        const std::string target = text;
        std::filesystem::create_symlink(target.empty() ? folder / "sub/old" : target, folder / link);
        EXPECT_EQ(writeAndGetError(folder / link), 0) << link;
        EXPECT_TRUE(std::filesystem::is_symlink(folder / link)) << link;
        EXPECT_TRUE(S_ISREG(getStatus(folder / file).st_mode)) << link;
        EXPECT_EQ(readText(folder / file), "new") << link;
        writeText(folder / file, "old");
    }
}

TEST(OutputFile, RefusesPathsThatLeadNowhere)
{
    const TestFolder folder;
    std::filesystem::create_symlink("loop2", folder / "loop1");
    std::filesystem::create_symlink("loop1", folder / "loop2");
    std::filesystem::create_symlink("missing/file", folder / "dangling");
    writeText(folder / "file", "old");
    const std::pair<std::string, int> cases[] = {{folder / "loop1", ELOOP},
                                                 {folder / "dangling", ENOENT},
                                                 {folder / "missing/file", ENOENT},
                                                 {folder / "file/below", ENOTDIR},
                                                 {folder / "", EISDIR},
                                                 {folder / ".", EISDIR},
                                                 {"", ENOENT},
                                                 {(folder / "file") + std::string("\0x", 2), EINVAL},
                                                 {folder / std::string(256, 'x'), ENAMETOOLONG}};
    for (const auto& [path, number] : cases) EXPECT_EQ(writeAndGetError(path), number) << path;
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "loop1"));
    EXPECT_EQ(folder.countFiles(), 4);
}

TEST(OutputFile, WritesToOpenFilesAndReplacesNone)
{
    const TestFolder folder;
    std::filesystem::create_symlink("/dev/fd", folder / "fd");
    for (const auto* place : {"/dev/fd/", "/proc/self/fd/", "/proc/thread-self/fd/", "linked"}) {
        const int descriptor = open((folder / "open").c_str(), O_RDWR | O_CREAT | O_EXCL | O_APPEND, 0600);
        ASSERT_EQ(write(descriptor, "before ", 7), 7);
        unlink((folder / "open").c_str());
        const auto path = (place[0] == '/' ? place : folder / "fd/") + std::to_string(descriptor);
        EXPECT_EQ(writeAndGetError(path), 0) << path;
        EXPECT_EQ(readDescriptor(descriptor), "before new") << path;
        close(descriptor);
    }
    EXPECT_EQ(writeAndGetError("/dev/fd/987654"), ENOENT);
    EXPECT_EQ(folder.countFiles(), 1);
}

TEST(OutputFile, WritesOnWhereAnOpenFileStands)
{
    const TestFolder folder;
    const int descriptor = open((folder / "open").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(write(descriptor, "1 2 old", 7), 7);
    lseek(descriptor, 2, SEEK_SET);
    const auto before = getStatus(folder / "open").st_ino;
    EXPECT_EQ(writeAndGetError("/dev/fd/" + std::to_string(descriptor)), 0);
    EXPECT_EQ(readDescriptor(descriptor), "1 newld");
    EXPECT_EQ(getStatus(folder / "open").st_ino, before);
    close(descriptor);
}

TEST(OutputFile, WritesToPipesAndDevices)
{
    const TestFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const int reader = open((folder / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(writeAndGetError(folder / "pipe"), 0);
    std::array<char, 4> bytes{};
    EXPECT_EQ(read(reader, bytes.data(), bytes.size()), 3);
    close(reader);
    EXPECT_TRUE(S_ISFIFO(getStatus(folder / "pipe").st_mode));
    EXPECT_EQ(writeAndGetError("/dev/null"), 0);
    EXPECT_TRUE(S_ISCHR(getStatus("/dev/null").st_mode));
    EXPECT_EQ(writeAndGetError("/dev/full"), ENOSPC);
}

TEST(OutputFile, KeepsModeOwnerAndAttributes)
{
    const TestFolder folder;
    for (const mode_t mode : {0600U, 0640U, 0664U, 0751U}) {
        const auto path = folder / std::to_string(mode);
        writeText(path, "old");
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        const bool hasAttributes = setxattr(path.c_str(), "user.author", "me", 2, 0) == 0;
        if (geteuid() == 0) {
            ASSERT_EQ(chown(path.c_str(), 65533, 65534), 0);
        }
        const auto old = getStatus(path);
        writeFile(path, "new");
        const auto now = getStatus(path);
        EXPECT_NE(now.st_ino, old.st_ino);
        EXPECT_EQ(std::tuple(now.st_mode, now.st_uid, now.st_gid),
                  std::tuple(old.st_mode, old.st_uid, old.st_gid));
        std::array<char, 3> author{};
        const auto size = getxattr(path.c_str(), "user.author", author.data(), author.size());
        EXPECT_EQ(size, hasAttributes ? 2 : -1);
        EXPECT_STREQ(author.data(), hasAttributes ? "me" : "");
    }
}

TEST(OutputFile, FollowsTheUmask)
{
    const TestFolder folder;
    for (const mode_t mask : {0U, 022U, 027U, 077U}) {
        const auto previous = umask(mask);
        writeFile(folder / std::to_string(mask), "new");
        umask(previous);
        EXPECT_EQ(getMode(folder / std::to_string(mask)), 0666U & ~mask);
    }
}

TEST(OutputFile, RefusesWhatNobodyMayWrite)
{
    const TestFolder folder;
    const auto path = folder / "protected";
    writeText(path, "old");
    chmod(path.c_str(), 0444);
    EXPECT_EQ(writeAndGetError(path), EACCES);
    EXPECT_EQ(readText(path), "old");
    EXPECT_EQ(folder.countFiles(), 1);
    try {
        writeFile(path, "new");
    } catch (const FileError& error) {
        EXPECT_EQ(error.what(), "Cannot write \"" + path + "\": Permission denied.");
    }
}

TEST(OutputFile, LeavesTheOtherNamesOfAFile)
{
    const TestFolder folder;
    writeText(folder / "one", "old");
    std::filesystem::create_hard_link(folder / "one", folder / "two");
    writeFile(folder / "one", "new");
    EXPECT_EQ(readText(folder / "one"), "new");
    EXPECT_EQ(readText(folder / "two"), "old");
}

TEST(OutputFile, TakesNamesOfAnyLength)
{
    const TestFolder folder;
    const auto path = folder / std::string(255, 'x');
    for (const auto* text : {"first", "second"}) {
        writeFile(path, text);
        EXPECT_EQ(readText(path), text);
    }
    EXPECT_EQ(folder.countFiles(), 1);
}

TEST(OutputFile, AvoidsTrapsInAFolderForAll)
{
    if (geteuid() != 0) GTEST_SKIP() << "Only the superuser makes files of others.";
    const TestFolder folder;
    chmod((folder / ".").c_str(), 01777);
    constexpr uid_t other = 65534;
    writeText(folder / "mine", "old");
    writeText(folder / "theirs", "old");
    std::filesystem::create_symlink("mine", folder / "link");
    std::filesystem::create_symlink("mine", folder / "own link");
    mkfifo((folder / "pipe").c_str(), 0666);
    for (const auto* name : {"link", "pipe", "theirs"})
        ASSERT_EQ(lchown((folder / name).c_str(), other, other), 0);
    for (const auto* name : {"link", "pipe", "theirs"})
        EXPECT_EQ(writeAndGetError(folder / name), EACCES) << name;
    EXPECT_EQ(readText(folder / "mine"), "old");
    EXPECT_EQ(writeAndGetError(folder / "own link"), 0);
    // In a folder of one's own nobody leaves traps.
    chmod((folder / ".").c_str(), 0755);
    EXPECT_EQ(writeAndGetError(folder / "link"), 0);
}

/// Sends a signal to this thread after a tenth of a second, and then every `interval` seconds while it lives.
class Signals {
 public:
    explicit Signals(time_t interval)
    {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, &previous_);
        const itimerval times{{interval, 0}, {0, 100'000}};
        setitimer(ITIMER_REAL, &times, nullptr);
    }
    ~Signals()
    {
        const itimerval never{};
        setitimer(ITIMER_REAL, &never, nullptr);
        sigaction(SIGALRM, &previous_, nullptr);
    }
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

 private:
    struct sigaction previous_ {};
};

TEST(OutputFile, CanBeInterruptedAtAFullPipe)
{
    const TestFolder folder;
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ASSERT_EQ(mkfifo((folder / "unread").c_str(), 0600), 0);
    const std::string bytes(1 << 20, 'x');
    for (const auto& path : {"/dev/fd/" + std::to_string(ends[1]), folder / "unread"}) {
        const Signals signals(5);
        const auto start = std::chrono::steady_clock::now();
        const auto giveUp = [] { throw std::logic_error("enough"); };
        EXPECT_THROW(writeFile(path, bytes, giveUp), std::logic_error) << path;
        // The first signal is enough, also where some bytes were written before it.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3)) << path;
    }
    close(ends[0]);
    close(ends[1]);
}

TEST(OutputFile, GoesOnAfterAnInterruption)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    // The pipe makes nobody wait; the writer has to wait for the reader itself.
    fcntl(ends[1], F_SETFL, O_NONBLOCK);
    const std::string bytes(1 << 20, 'x');
    std::string received;
    // The timer's signals come to the thread that writes.
    std::thread reader([&] {
        sigset_t alarm;
        sigemptyset(&alarm);
        sigaddset(&alarm, SIGALRM);
        pthread_sigmask(SIG_BLOCK, &alarm, nullptr);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        std::array<char, 4096> part{};
        for (ssize_t count = 0; (count = read(ends[0], part.data(), part.size())) > 0;)
            received.append(part.data(), static_cast<std::size_t>(count));
    });
    {
        const Signals signals(1);
        writeFile("/dev/fd/" + std::to_string(ends[1]), bytes);
        close(ends[1]);
        reader.join();
    }
    close(ends[0]);
    EXPECT_EQ(received, bytes);
}

}  // namespace
}  // namespace quillon::report
