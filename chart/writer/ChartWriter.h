#pragma once

#include "support/Export.h"

namespace quillon::chart {

/// Base of all chart writers, whatever they write.
class QUILLON_EXPORT ChartWriter {
 public:
    ChartWriter() = default;
    ChartWriter(const ChartWriter&) = delete;
    ChartWriter& operator=(const ChartWriter&) = delete;
    virtual ~ChartWriter() = 0;
};

}  // namespace quillon::chart
