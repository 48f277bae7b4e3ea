#pragma once

#include <string>
#include <utility>
#include <vector>

#include "report/command/ChartJob.h"
#include "report/fill/Template.h"
#include "report/options/Listener.h"

namespace quillon::report {

/// What a template gets.
struct Filling {
    std::vector<ChartJob> charts = {};
    /// Where each chart is asked for, as in "job.json:4:3: ". Empty: on the command line.
    std::vector<std::string> places = {};
    /// Names of placeholders with what stands for them.
    std::vector<std::pair<std::string, std::string>> texts = {};
    /// The same, for placeholders that the template need not have.
    std::vector<std::pair<std::string, std::string>> furtherTexts = {};
};

/// What a template got.
struct FillResult {
    std::vector<FillReport> charts = {};
    /// Placeholders that became a chart or a table.
    std::vector<std::string> inserted = {};
    /// Placeholders in text, and how often they stood there.
    std::vector<std::pair<std::string, std::size_t>> texts = {};
    /// Placeholders that got nothing, and still stand in the text.
    std::vector<std::string> left = {};
};

/// A template, which may come by standard input ("-"). Throws: as Template::open.
Template openTemplate(const std::string& path);

/// Throws: std::runtime_error when the name of the output ends as another kind of document does: .docx for a
/// template of .docm.
void requireOutputOfKind(const Template& document, const std::string& output);

/// Gives a template its charts and texts. Throws: std::runtime_error with a line for each
/// chart and text that cannot be filled.
FillResult fillTemplate(Template& document, const Filling& filling, const Listener& listener);

/// The result in sentences, a line each.
std::string describeFilling(const FillResult& result);
/// The same as JSON.
std::string describeFillingAsJson(const FillResult& result, const std::string& output);
/// The results of several documents as one list.
std::string describeFillingsAsJson(const std::vector<FillResult>& results,
                                   const std::vector<std::string>& outputs);

}  // namespace quillon::report
