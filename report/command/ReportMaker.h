#pragma once

#include <string>

#include "report/command/ChartJob.h"
#include "report/command/Groups.h"
#include "report/command/JsonTree.h"
#include "report/document/Document.h"
#include "report/options/Listener.h"

namespace quillon::report {

/// Adds the chart of a job, with its heading. `number` names it in sentences where there are several; 0 for
/// one alone. Throws: std::runtime_error.
void addChart(Document& document, const ChartJob& job, std::size_t number, const Listener& listener);

/// The document of a job file that fills no template.
/// Requires: the job has the form of one. Throws: std::runtime_error that names the block or chart.
Document makeReport(const JsonNode& job, const JobPlace& place, const Listener& listener);

}  // namespace quillon::report
