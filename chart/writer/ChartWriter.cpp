#include "chart/writer/ChartWriter.h"

namespace quillon::chart {

ChartWriter::~ChartWriter() = default;

}  // namespace quillon::chart
