#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "report/fill/ChartFinder.h"
#include "report/fill/ChartMarkup.h"
#include "report/fill/DocumentTexts.h"
#include "report/fill/FoundChart.h"
#include "report/fill/Kept.h"
#include "report/fill/Look.h"
#include "report/fill/WorkbookMarkup.h"
#include "report/package/Package.h"

namespace quillon::report {

/// A chart part with the colours that belong to it.
struct ReadChart {
    ReadChart(const Package& package, const std::string& name);

    ChartMarkup part;
    Palette palette;
};

using Drawings = std::vector<ChartDrawing>;

/// What the parts of a document say as it was opened. Copies of the document share it, and read what they
/// have not changed once for all; they may do so on different threads.
class Originals {
 public:
    explicit Originals(const Package& opened) : opened_(opened) {}

    std::shared_ptr<const Drawings> getDrawings();
    /// The workbooks that several drawings had.
    std::shared_ptr<const std::set<std::string>> getSharedWorkbooks();

    // What a part of `copy` says. A part that the copy has changed is read anew.
    // Throw: std::runtime_error when it cannot be read.

    std::shared_ptr<const ReadChart> getChart(const Package& copy, const std::string& part);
    /// Never throws for what is in the part: that is the chart's problem.
    std::shared_ptr<const FoundChart> describeChart(const Package& copy, const std::string& part);
    std::shared_ptr<const WorkbookMarkup> getWorkbook(const Package& copy, const std::string& part);
    std::shared_ptr<const TextPart> getText(const Package& copy, const std::string& part);

 private:
    /// Of the files of workbooks that are kept, in bytes. What was read of them takes some 20 times as much.
    static constexpr std::size_t workbookRoom = std::size_t{2} << 20;

    bool isChanged(const Package& copy, const std::string& part) const;

    const Package opened_;
    Kept<Drawings> drawings_;
    Kept<std::set<std::string>> sharedWorkbooks_;
    KeptByName<ReadChart> charts_;
    KeptByName<FoundChart> descriptions_;
    KeptByName<WorkbookMarkup> workbooks_{workbookRoom};
    KeptByName<TextPart> texts_;
};

}  // namespace quillon::report
