#include "report/finish/SeriesNumbers.h"

namespace quillon::report {

std::vector<double> listValues(const chart::DataSeries& series)
{
    std::vector<double> values;
    values.reserve(series.getSize());
    for (const auto& point : series.getPoints()) values.push_back(point->getValue());
    return values;
}

std::vector<double> listX(const chart::DataSeries& series)
{
    std::vector<double> x;
    x.reserve(series.getSize());
    for (const auto& point : series.getPoints()) x.push_back(point->getX());
    return x;
}

}  // namespace quillon::report
