#pragma once

#include <string>
#include <vector>

#include "report/document/ChartParts.h"
#include "tests/report/MarkupReader.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {

/// The chart part of a chart that is 10 by 10 cm unless the options say otherwise, and what the caller heard
/// while it was written.
class FinishedPart {
 public:
    explicit FinishedPart(const std::shared_ptr<chart::Chart>& chart, ChartOptions options = {})
        : markup_(write(*chart, std::move(options)))
    {
    }

    std::string find(const std::string& path) const { return markup_.find(path); }
    const std::vector<std::string>& getWarnings() const { return warnings_; }
    const std::string& getBytes() const { return bytes_; }

 private:
    std::string write(const chart::Chart& chart, ChartOptions options)
    {
        if (options.width == ChartOptions().width) options.width = options.height = "10cm";
        const Listener listener = {.warning = [this](const auto& text) { warnings_.push_back(text); }};
        return bytes_ = makeChartParts(chart, options, 1, "rId1", listener).chart;
    }

    std::vector<std::string> warnings_;
    std::string bytes_;
    MarkupReader markup_;
};

}  // namespace quillon::report
