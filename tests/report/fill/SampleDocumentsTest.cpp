#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "report/fill/Template.h"

namespace quillon::report {
namespace {

/// Every chart is filled with what it shows: nothing may differ.
TEST(SampleDocuments, KeepTheirBytesWhenFilledWithTheirOwnData)
{
    const char* folder = std::getenv("QUILLON_SAMPLE_DOCUMENTS");
    if (folder == nullptr) GTEST_SKIP() << "QUILLON_SAMPLE_DOCUMENTS names no folder of documents.";
    std::size_t documents = 0;
    std::size_t filled = 0;
    std::size_t refused = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        if (!file.path().extension().string().starts_with(".do")) continue;
        ++documents;
        const auto original = Template::open(file.path().string());
        for (const auto& chart : original.getCharts()) {
            if (!chart.problem.empty()) {
                std::cout << file.path().filename() << ", chart " << chart.number << ": " << chart.problem
                          << "\n";
                ++refused;
                continue;
            }
            ++filled;
            auto copy = original;
            const auto key = std::to_string(chart.number);
            const auto report = copy.fill(key, original.getChartData(key));
            EXPECT_EQ(report.count(FillReport::Change::Matched), chart.series.size());
            EXPECT_TRUE(report.warnings.empty()) << report.warnings[0];
            for (const auto& part : copy.getPackage().getPartNames())
                EXPECT_TRUE(copy.getPackage().getPart(part) == original.getPackage().getPart(part))
                    << file.path().filename() << ", chart " << chart.number << ": " << part;
        }
    }
    std::cout << documents << " documents, " << filled << " charts filled, " << refused << " refused\n";
    EXPECT_GT(filled, 0U);
}

}  // namespace
}  // namespace quillon::report
