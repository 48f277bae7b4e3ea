#include "report/command/Output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <optional>

#include "report/command/Pdf.h"
#include "report/options/QuotedText.h"
#include "report/package/OutputFile.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr mode_t mayWrite = S_IWUSR | S_IWGRP | S_IWOTH;

std::string getEnding(const std::string& path)
{
    return toLower(std::filesystem::path(path).extension().string());
}

bool isPdf(const std::string& path)
{
    return getEnding(path) == ".pdf";
}

/// Whether a name promises a file that is no document of ours. A table of that name would be lost for one.
bool isForeign(const std::string& path)
{
    constexpr std::string_view endings[] = {".doc",  ".odt", ".rtf",  ".htm", ".html", ".txt",
                                            ".md",   ".csv", ".tsv",  ".xls", ".ods",  ".xlsx",
                                            ".xlsm", ".ppt", ".pptx", ".json"};
    return std::ranges::find(endings, getEnding(path)) != std::end(endings);
}

/// Whether a word processor would refuse a new document by that name, as its content is that of .docx.
bool isOtherKind(const std::string& path)
{
    constexpr std::string_view endings[] = {".docm", ".dotx", ".dotm"};
    return std::ranges::find(endings, getEnding(path)) != std::end(endings);
}

[[noreturn]] void refuseName(const std::string& path)
{
    fail("Cannot write {}: expected a name that ends in .docx or .pdf.", quoteText(path, 200));
}

/// The mode of a file that nobody may write; nothing for others, and where there is none.
std::optional<mode_t> findProtection(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    if ((status.st_mode & mayWrite) != 0) return {};
    return status.st_mode & ~static_cast<mode_t>(S_IFMT);
}

bool isSameFile(const std::string& input, const std::string& output)
{
    std::error_code isNoFile;
    return input != "-" && output != "-" && std::filesystem::equivalent(input, output, isNoFile);
}

void writeStandard(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw FileError("standard output", errno);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

/// Lets a protected file be replaced, and protects it again.
class Unprotected {
 public:
    explicit Unprotected(const std::string& path) : path_(path), mode_(findProtection(path))
    {
        if (mode_ && chmod(path_.c_str(), *mode_ | S_IWUSR) != 0) throw FileError(path_, errno);
    }
    ~Unprotected()
    {
        if (mode_) static_cast<void>(chmod(path_.c_str(), *mode_));
    }
    Unprotected(const Unprotected&) = delete;
    Unprotected& operator=(const Unprotected&) = delete;

 private:
    const std::string& path_;
    std::optional<mode_t> mode_;
};

}  // namespace

void Output::requireOtherThanTemplate(const std::string& document) const
{
    if (!force && isSameFile(document, path))
        fail("Cannot write {}: the document is made from it; --force replaces it.", quoteText(path, 200));
}

void Output::requireOther(const std::string& input) const
{
    if (isSameFile(input, path)) fail("Cannot write {}: the document is made from it.", quoteText(path, 200));
}

void Output::requireNew() const
{
    if (!force && !isStandard() && std::filesystem::exists(path))
        fail("Cannot write {}: it is there already; --force replaces it.", quoteText(path, 200));
}

void Output::requireUnprotected() const
{
    if (!force && findProtection(path))
        fail("Cannot write {}: it is write-protected; --force replaces it.", quoteText(path, 200));
}

void Output::requireNameOfNew() const
{
    if (isOtherKind(path)) refuseName(path);
}

void Output::requireWritable() const
{
    if (isForeign(path)) refuseName(path);
    if (isPdf(path)) requirePdf(path);
    if (!isStandard()) requireUnprotected();
    if (isStandard() && isatty(STDOUT_FILENO) != 0)
        fail("Standard output is a terminal; expected a file or a program behind it, or another --output.");
}

void Output::write(std::string_view document) const
{
    requireWritable();
    if (isPdf(path))
        writePlain(makePdf(document));
    else
        writePlain(document);
}

void Output::writePlain(std::string_view bytes) const
{
    if (isStandard()) return writeStandard(bytes);
    requireUnprotected();
    const Unprotected unprotected(path);
    writeFile(path, bytes);
}

}  // namespace quillon::report
