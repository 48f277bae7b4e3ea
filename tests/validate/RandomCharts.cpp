#include <cstdio>
#include <set>
#include <string>

#include "report/document/Document.h"
#include "report/options/Options.h"
#include "tests/validate/RandomChart.h"

// Writes documents with 1,000 random charts, the same in every run, for the validators: random_charts FOLDER.
// Each option is seen in some of them.

namespace quillon {
namespace {

constexpr unsigned documentCount = 20;
constexpr unsigned chartsInDocument = 50;

report::Document makeDocument(std::set<std::string>& optionNames)
{
    report::Document document;
    for (unsigned i = 0; i < chartsInDocument; ++i) {
        document.addHeading(pickPlainText(), static_cast<int>(1 + pick(9)));
        document.addParagraph(pickPlainText());
        const auto random = makeRandomChart();
        document.addChart(random.chart, random.options, random.data);
        optionNames.insert(random.optionNames.begin(), random.optionNames.end());
    }
    return document;
}

bool areAllOptions(const std::set<std::string>& names)
{
    for (const auto& option : report::getOptions())
        if (!names.contains(option.name)) {
            std::fprintf(stderr, "No random chart has the option %s.\n", option.name);
            return false;
        }
    return true;
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : ".";
    std::set<std::string> optionNames;
    for (unsigned i = 1; i <= quillon::documentCount; ++i)
        quillon::makeDocument(optionNames).save(folder + "/random-" + std::to_string(i) + ".docx");
    return quillon::areAllOptions(optionNames) ? 0 : 1;
}
