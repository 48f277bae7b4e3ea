#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "report/table/InputFile.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// Whether a file holds a table in Markdown, by its name and its first bytes: a line of names between bars,
/// and a line of dashes below.
bool isMarkdown(const std::string& path, std::string_view start);

/// The rows of the table, as extract writes it; text before and behind it is left out.
/// Throws: std::runtime_error as InputFile and StoredRows.
std::unique_ptr<RowSource> readMarkdownRows(InputFile& file);

}  // namespace quillon::report
