#include <string>

#include "report/document/Document.h"
#include "tests/validate/RandomChart.h"

// Writes documents with random charts, the same in every run, for the validators: random_charts FOLDER.

namespace quillon {
namespace {

constexpr unsigned documentCount = 20;
constexpr unsigned chartsInDocument = 50;

report::Document makeDocument()
{
    report::Document document;
    for (unsigned i = 0; i < chartsInDocument; ++i) {
        document.addHeading(pickPlainText(), static_cast<int>(1 + pick(9)));
        document.addParagraph(pickPlainText());
        const auto random = makeRandomChart();
        document.addChart(random.chart, random.options, random.data);
    }
    return document;
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : ".";
    for (unsigned i = 1; i <= quillon::documentCount; ++i)
        quillon::makeDocument().save(folder + "/random-" + std::to_string(i) + ".docx");
}
