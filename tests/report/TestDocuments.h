#pragma once

#include <zip.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "chart/model/Chart.h"

namespace quillon::report {

/// A chart of equal series named "North", with a category "c" for each value.
template <typename Type>
std::shared_ptr<chart::Chart> makeChart(std::size_t seriesCount = 1,
                                        const std::vector<double>& values = {1, -2})
{
    auto data = chart::DataSet::create(std::vector<std::u16string>(values.size(), u"c"));
    for (std::size_t i = 0; i < seriesCount; ++i) appendSeries(*data, u"North", values);
    auto chart = Type::create();
    chart->setDataSet(data);
    return chart;
}

/// The bytes of a part of a package. Throws: std::runtime_error when there is no such part.
inline std::string readPart(const std::string& package, const std::string& name)
{
    auto* source = zip_source_buffer_create(package.data(), package.size(), 0, nullptr);
    const std::unique_ptr<zip_t, decltype(&zip_discard)> archive(
        zip_open_from_source(source, ZIP_RDONLY, nullptr), zip_discard);
    zip_stat_t status;
    if (!archive || zip_stat(archive.get(), name.c_str(), 0, &status) < 0)
        throw std::runtime_error("There is no part " + name + ".");
    std::string bytes(status.size, '\0');
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(zip_fopen(archive.get(), name.c_str(), 0),
                                                                  zip_fclose);
    zip_fread(file.get(), bytes.data(), bytes.size());
    return bytes;
}

}  // namespace quillon::report
