#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "report/command/JsonTree.h"

namespace quillon::report {

using NamedTexts = std::vector<std::pair<std::string, std::string>>;

/// The rows of a table that make one document.
struct Group {
    /// Their text in the column that parts them.
    std::string name;
    /// What all rows have in common: columns with their text. They stand for {{column}} in the document.
    NamedTexts texts;
    /// The path of the document.
    std::string output;
};

/// The groups of a job's "for-each", in the order of their first rows; files are from `folder` on. Texts
/// become names of files: what parts folders, and control characters, become "-".
/// Throws: std::runtime_error for a column that is not there, a row without a text, and two groups whose
/// documents would have one name.
std::vector<Group> readGroups(const JsonNode& forEach, const std::filesystem::path& folder);

/// The job with texts in the place of {{name}}, in values wherever they stand.
JsonNode fillInTexts(JsonNode job, const NamedTexts& texts);

/// The job of one group: its texts filled in, and of the table of "for-each" only its rows.
JsonNode makeGroupJob(const JsonNode& job, const Group& group);

}  // namespace quillon::report
