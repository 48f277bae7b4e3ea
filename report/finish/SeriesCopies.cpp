#include "report/finish/SeriesCopies.h"

namespace quillon::report {

std::shared_ptr<chart::DataSeries> copyHead(const chart::DataSeries& series)
{
    auto copy = chart::DataSeries::create(series.getName());
    copy->setFormat(series.getFormat());
    copy->setLabelFormat(series.getLabelFormat());
    copy->setFormatOptions(series.getFormatOptions());
    return copy;
}

/// A data set takes series of one length alone; those that are empty take their points when they are in it.
std::shared_ptr<chart::DataSet> makeDataSet(const std::vector<std::u16string>& categories,
                                            const std::vector<std::shared_ptr<chart::DataSeries>>& series)
{
    auto made = chart::DataSet::create(categories);
    for (const auto& one : series) made->appendSeries(copyHead(*one));
    for (std::size_t i = 0; i < series.size(); ++i)
        for (const auto& point : series[i]->getPoints()) made->getSeries(i)->appendPoint(point);
    return made;
}

}  // namespace quillon::report
