#include "report/command/Pdf.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

#include "report/command/ContentsFields.h"
#include "report/document/TemplateParts.h"
#include "report/options/QuotedText.h"
#include "report/package/OutputFile.h"
#include "report/package/XmlText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

constexpr auto program = "soffice";

std::string findProgram()
{
    const auto* path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    for (std::string folder; std::getline(folders, folder, ':');)
        if (auto file = folder + "/" + program; access(file.c_str(), X_OK) == 0) return file;
    return {};
}

/// A folder that goes with all that is in it.
class TemporaryFolder {
 public:
    TemporaryFolder()
    {
        auto name = (std::filesystem::temp_directory_path() / "quillon-pdf-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) fail("Cannot make \"{}\": {}.", name, std::strerror(errno));
        path_ = name;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string at(const char* name) const { return path_ + "/" + name; }

 private:
    std::string path_;
};

/// Runs a program in silence, and returns whether it ended well.
bool run(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (auto& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    pid_t process = 0;
    const int error = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) fail("Cannot run \"{}\": {}.", words[0], std::strerror(error));
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The settings of LibreOffice, so that charts have the decimal marks and names of the document's language.
void writeProfile(const std::string& folder, const std::string& language)
{
    if (language.empty()) return;
    std::filesystem::create_directories(folder + "/user");
    writeFile(folder + "/user/registrymodifications.xcu",
              R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Setup/L10N"><prop oor:name="ooSetupSystemLocale" oor:op="fuse"><value>)" +
                  escapeText(language) + "</value></prop></item>\n</oor:items>\n");
}

}  // namespace

void requirePdf(const std::string& path)
{
    if (findProgram().empty())
        fail(
            "Cannot make \"{}\": LibreOffice Writer makes PDFs, and there is no program {}; write a .docx "
            "file, or install it, on Debian or Ubuntu by: sudo apt install libreoffice-writer",
            path, program);
}

std::string makePdf(std::string_view document)
{
    const TemporaryFolder folder;
    Package package{std::string(document)};
    freePageNumbers(package);
    writeFile(folder.at("document.docx"), package.toBytes());
    writeProfile(folder.at("profile"), readLanguage(package));
    // A profile of its own, for LibreOffice refuses to start beside another that runs with the same one.
    const bool isDone =
        run({findProgram(), "-env:UserInstallation=file://" + folder.at("profile"), "--headless",
             "--convert-to", "pdf", "--outdir", folder.at(""), folder.at("document.docx")});
    std::ifstream file(folder.at("document.pdf"), std::ios::binary);
    if (!isDone || !file) fail("LibreOffice could not make a PDF of the document.");
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace quillon::report
