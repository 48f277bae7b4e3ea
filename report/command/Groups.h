#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "report/command/ChartJob.h"
#include "report/command/JobForm.h"
#include "report/command/JsonTree.h"
#include "report/table/RowGroups.h"

namespace quillon::report {

using NamedTexts = std::vector<std::pair<std::string, std::string>>;

/// The rows of a table that make one document.
struct Group : RowGroup {
    /// The table, and how it was read.
    std::shared_ptr<const ChartJob> source;
    /// The column that parts it.
    std::string by;
    /// The path of the document.
    std::string output;
};

/// Where a job is done.
struct JobPlace {
    /// The files that it names are from here on.
    std::filesystem::path folder;
    /// The rows that charts of its table show; null: all.
    const Group* group = nullptr;
    /// Where its values stand; makeReport needs it.
    const JobText* source = nullptr;
};

/// The groups of a job's "for-each", in the order of their first rows. Texts become names of files: what
/// parts folders, and control characters, become "-". Throws: std::runtime_error for a column that is not
/// there, a row without a text, and two groups whose documents would have one name.
std::vector<Group> readGroups(const JsonNode& forEach, const JobPlace& place, const Note& note);

/// Lets a chart of the group's table show the rows of the group alone.
void showGroup(ChartJob& job, const Group& group);

/// The job with texts in the place of {{name}}, in values wherever they stand.
JsonNode fillInTexts(JsonNode job, const NamedTexts& texts);

/// The job of one group: its texts filled in.
JsonNode makeGroupJob(const JsonNode& job, const Group& group);

/// A {{name}} that no text stands for.
struct Unfilled {
    std::string name;
    /// Where the text that holds it begins, in the job file.
    std::size_t position;
};
/// Those that are left in a job whose texts are filled in, each name once.
std::vector<Unfilled> findUnfilled(const JsonNode& job);

}  // namespace quillon::report
