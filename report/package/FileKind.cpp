#include "report/package/FileKind.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "support/Text.h"

namespace quillon::report {
namespace {

struct Signature {
    std::string_view start;
    const char* sentence;
};

constexpr std::string_view binaryFile{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8};

/// What people take for a document, by how it starts.
constexpr std::array<Signature, 3> signatures = {{
    {"{\\rtf", "The file is in Rich Text Format (.rtf); save it as .docx first."},
    {"%PDF-", "The file is a PDF; expected a word-processing document (.docx, .docm, .dotx or .dotm)."},
    {"<", "The file is one of XML or HTML; save it as .docx first."},
}};

/// A name in the directory of a binary file, which is UTF-16.
bool holdsStream(std::string_view bytes, std::string_view name)
{
    std::string wide;
    for (const char c : name) wide += {c, '\0'};
    return bytes.find(wide) != std::string_view::npos;
}

[[noreturn]] void failAsBinary(std::string_view bytes)
{
    if (holdsStream(bytes, "EncryptedPackage"))
        throw std::runtime_error("The file is protected with a password; save a copy without one.");
    if (holdsStream(bytes, "WordDocument"))
        throw std::runtime_error(
            "The file is a document in the old binary format (.doc); save it as .docx first.");
    throw std::runtime_error("The file is in an old binary format; save it in a format of today first.");
}

struct MainType {
    std::string_view contentType;
    const char* what;
};

constexpr std::array<MainType, 4> foreignTypes = {{
    {"spreadsheetml", "a workbook"},
    {"ms-excel", "a workbook"},
    {"presentationml", "a presentation"},
    {"ms-powerpoint", "a presentation"},
}};

bool isDocumentType(std::string_view contentType)
{
    constexpr std::array<std::string_view, 4> types = {
        "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml",
        "application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml",
        "application/vnd.ms-word.document.macroenabled.main+xml",
        "application/vnd.ms-word.template.macroenabledtemplate.main+xml",
    };
    return std::ranges::find(types, toLower(contentType)) != types.end();
}

}  // namespace

std::string requireZip(std::string bytes)
{
    if (bytes.empty()) throw std::runtime_error("The file is empty.");
    if (bytes.starts_with(binaryFile)) failAsBinary(bytes);
    const std::string_view mark = "\xEF\xBB\xBF";
    const auto text = std::string_view(bytes).substr(bytes.starts_with(mark) ? mark.size() : 0);
    for (const auto& [start, sentence] : signatures)
        if (text.starts_with(start)) throw std::runtime_error(sentence);
    if (!bytes.starts_with("PK"))
        throw std::runtime_error(
            "The file is not a document: expected a zip file, as .docx, .docm, .dotx and .dotm are.");
    return bytes;
}

void requireDocumentType(std::string_view contentType)
{
    if (isDocumentType(contentType)) return;
    const char* what = "no document";
    for (const auto& [part, name] : foreignTypes)
        if (contentType.find(part) != std::string_view::npos) what = name;
    throw std::runtime_error(std::string("The file is ") + what +
                             "; expected a word-processing document (.docx, .docm, .dotx or .dotm).");
}

}  // namespace quillon::report
