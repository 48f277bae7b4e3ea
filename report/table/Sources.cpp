#include "report/table/Sources.h"

#include <algorithm>
#include <array>

#include "report/options/QuotedText.h"
#include "report/table/DatabaseRows.h"
#include "report/table/DelimitedSource.h"
#include "report/table/Fail.h"
#include "report/table/JsonRows.h"
#include "report/table/MarkdownRows.h"
#include "report/table/WorkbookRows.h"

namespace quillon::report {
namespace {

using namespace std::string_view_literals;

enum class SourceKind { Delimited, Workbook, Json, Markdown, Database };

/// Files that are no tables, by their first bytes, and what to do with them.
struct ForeignKind {
    std::string_view start;
    const char* sentence;
};
constexpr ForeignKind foreignKinds[] = {
    {"\x1F\x8B"sv, "the file is compressed (gzip); unpack it first, as in gunzip"},
    {"BZh"sv, "the file is compressed (bzip2); unpack it first, as in bunzip2"},
    {"\xFD"
     "7zXZ"sv,
     "the file is compressed (xz); unpack it first, as in unxz"},
    {"\x28\xB5\x2F\xFD"sv, "the file is compressed (zstd); unpack it first, as in unzstd"},
    {"7z\xBC\xAF"sv, "the file is compressed (7z); unpack it first"},
    {"\xD0\xCF\x11\xE0"sv,
     "the file is a workbook of the old kind, or has a password; save it as .xlsx or .ods"},
    {"%PDF"sv, "the file is a PDF; expected a table"},
    {"PAR1"sv, "the file is in the Parquet format; save it as CSV"},
};

/// The same for text, which may begin with blanks and is written in any case. Some programs give such files
/// the name of a workbook.
constexpr auto webPage =
    "the file is a web page, whatever its name says; open it in a spreadsheet program and save it as .xlsx, "
    ".ods or CSV";
constexpr ForeignKind foreignTexts[] = {
    {"<!doctype html", webPage},
    {"<html", webPage},
    {"<table", webPage},
    {"<?xml", "the file is XML; open it in a spreadsheet program and save it as .xlsx, .ods or CSV"},
    {"{\\rtf", "the file is a text document (RTF); expected a table"},
};

void refuseForeignText(std::string_view start, const std::string& name)
{
    if (start.starts_with("\xEF\xBB\xBF")) start.remove_prefix(3);
    start.remove_prefix(std::min(start.find_first_not_of(" \t\r\n"), start.size()));
    for (const auto& kind : foreignTexts) {
        const auto isSame = [](char c, char wanted) {
            return (c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) == wanted;
        };
        const auto text = start.substr(0, kind.start.size());
        if (std::equal(text.begin(), text.end(), kind.start.begin(), kind.start.end(), isSame))
            fail("{}: {}.", name, kind.sentence);
    }
}

bool isJsonStart(std::string_view start)
{
    const auto skipBlanks = [&start](std::size_t at) {
        return std::min(start.find_first_not_of(" \t\r\n", at), start.size());
    };
    const auto first = skipBlanks(start.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    const auto second = skipBlanks(first + 1);
    if (second >= start.size()) return false;
    return (start[first] == '[' && start[second] == '{') || (start[first] == '{' && start[second] == '"');
}

bool hasJsonName(const std::string& path)
{
    return path.ends_with(".json") || path.ends_with(".jsonl") || path.ends_with(".ndjson");
}

SourceKind findKind(InputFile& file, const std::string& path)
{
    const auto start = file.peek(512);
    for (const auto& kind : foreignKinds)
        if (start.starts_with(kind.start)) fail("{}: {}.", file.getName(), kind.sentence);
    refuseForeignText(start, file.getName());
    if (start.starts_with("SQLite format 3\0"sv)) return SourceKind::Database;
    if (start.starts_with("PK\x03\x04"sv)) return SourceKind::Workbook;
    if (isMarkdown(path, start)) return SourceKind::Markdown;
    return hasJsonName(path) || isJsonStart(start) ? SourceKind::Json : SourceKind::Delimited;
}

/// An option that means one kind of source alone.
struct SourceOption {
    const char* name;
    SourceKind kind;
    std::string TableOptions::*member;
    const char* kindName;
};
constexpr std::array sourceOptions = {
    SourceOption{"--delimiter", SourceKind::Delimited, &TableOptions::delimiter, "CSV and TSV files"},
    SourceOption{"--encoding", SourceKind::Delimited, &TableOptions::encoding, "CSV and TSV files"},
    SourceOption{"--sheet", SourceKind::Workbook, &TableOptions::sheet, "workbooks"},
    SourceOption{"--range", SourceKind::Workbook, &TableOptions::range, "workbooks"},
    SourceOption{"--query", SourceKind::Database, &TableOptions::query, "SQLite databases"},
};

void refuseForeignOptions(SourceKind kind, const TableOptions& options, const std::string& name)
{
    for (const auto& option : sourceOptions)
        if (option.kind != kind && !(options.*option.member).empty())
            fail("{}: {} is for {}, which the file is not.", name, option.name, option.kindName);
    const bool hasHeaderRow = kind == SourceKind::Delimited || kind == SourceKind::Workbook;
    if (!hasHeaderRow && (options.skip > 0 || options.noHeader))
        fail("{}: --skip and --no-header are for text files and workbooks; here the columns have names.",
             name);
}

/// Both passes over the file as one work.
InputFile::Progress joinPasses(InputFile::Progress progress)
{
    if (!progress) return {};
    return [progress = std::move(progress), base = std::uint64_t{0}, last = std::uint64_t{0}](
               std::uint64_t done, std::uint64_t total) mutable {
        if (done < last && last == total) base = total;
        last = done;
        progress(base + done, 2 * total);
    };
}

}  // namespace

std::unique_ptr<RowSource> openSource(const std::string& path, const TableOptions& options, const Note& note,
                                      InputFile::Progress progress)
{
    auto file = std::make_shared<InputFile>(path);
    const auto kind = findKind(*file, path);
    refuseForeignOptions(kind, options, file->getName());
    if (kind == SourceKind::Workbook) return readWorkbookRows(*file, options, note);
    if (kind == SourceKind::Json) return readJsonRows(*file);
    if (kind == SourceKind::Markdown) return readMarkdownRows(*file);
    if (kind == SourceKind::Delimited)
        return std::make_unique<DelimitedSource>(std::move(file), options, joinPasses(std::move(progress)));
    if (path == "-") fail("standard input: a database is read from a file of its own; give its path.");
    return readDatabaseRows(path, file->getName(), options);
}

}  // namespace quillon::report
