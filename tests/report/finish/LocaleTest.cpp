#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <cstdlib>
#include <string>

#include "chart/model/LineChart.h"
#include "report/document/Document.h"
#include "report/options/Options.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {
namespace {

std::string write()
{
    ChartOptions options{.valueMin = 0.25, .log = 2.5, .tickRotation = 0.5, .fontSize = 10.5};
    for (const auto& [name, text] : {std::pair("value-max", "1500.5"), std::pair("width", "12.5cm")}) {
        const auto& option = *findOption(name);
        setOption(options, option, readOptionText(option, text, name), name);
    }
    Document document;
    document.addChart(makeChart<chart::LineChart>(2, {0.5, 1234.75}), options);
    return document.toBytes();
}

/// Makes a locale with a decimal comma in a folder of its own, and sets it while it lives.
class CommaLocale {
 public:
    CommaLocale()
    {
        const std::string folder = testing::TempDir() + "quillon_locales";
        const auto command = "mkdir -p '" + folder + "' && localedef -i de_DE -f UTF-8 '" + folder +
                             "/de_DE.UTF-8' 2>/dev/null";
        isMade_ = std::system(command.c_str()) == 0;
        setenv("LOCPATH", folder.c_str(), 1);
        isMade_ = isMade_ && std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    }
    ~CommaLocale()
    {
        unsetenv("LOCPATH");
        std::setlocale(LC_ALL, "C");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    bool isMade() const { return isMade_; }

 private:
    bool isMade_;
};

TEST(Locale, ChangesNoDocument)
{
    const auto expected = write();
    const CommaLocale locale;
    if (!locale.isMade())
        GTEST_SKIP() << "localedef makes no de_DE.UTF-8 here; the package locales has its source.";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_EQ(write(), expected);
}

}  // namespace
}  // namespace quillon::report
