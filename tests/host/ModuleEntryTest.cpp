#include <cstdlib>

#include "chart/model/Object.h"
#include "orca/ClassRegistry.h"
#include "support/FeatureService.h"
#include "tests/host/HostTest.h"

/// The entry acts once in a process, so each scenario runs in a process of its own, and before any other
/// test.
namespace quillon::chart {
namespace {

constexpr auto feature = "QuillonCharts";

std::size_t classCount()
{
    return orca::ClassRegistry::instance().getClasses().size();
}

/// Ends the process with 0 when the steps hold, and with the number of the first that does not.
[[noreturn]] void finish(std::initializer_list<bool> steps)
{
    int number = 0;
    for (const bool holds : steps) {
        ++number;
        if (!holds) std::_Exit(number);
    }
    std::exit(0);
}

std::size_t countAfterEntry(bool isOn)
{
    setFeature(feature, isOn);
    findModuleEntry()();
    return classCount();
}

[[noreturn]] void offThenOnThenTwice()
{
    finish({countAfterEntry(false) == 0, countAfterEntry(true) == 47, countAfterEntry(true) == 47,
            countAfterEntry(false) == 47});
}

[[noreturn]] void environmentDecidesUntilTheProgramDoes()
{
    unsetenv("QUILLON_FEATURES");
    const bool offWithout = !Feature(feature).isOn();
    setenv("QUILLON_FEATURES", "NoQuillonCharts,QuillonChartsToo", 1);
    const bool offAmongOthers = !Feature(feature).isOn();
    setenv("QUILLON_FEATURES", "Other, QuillonCharts", 1);
    const bool onByName = Feature(feature).isOn();
    findModuleEntry()();
    const bool registered = classCount() == 47;
    setFeature(feature, false);
    finish({offWithout, offAmongOthers, onByName, registered, !Feature(feature).isOn()});
}

struct Stranger : orca::factory::StdShareableHandleClassInfo<Object> {
    Stranger() : StdShareableHandleClassInfo("quillon.chart.Title", {}, "") {}
    bool isInstance(const orca::factory::full::StdShareable* /*object*/) const override { return false; }
};

void addStranger(orca::COSNamespace* strangers)
{
    strangers->addClass<Stranger>();
}

[[noreturn]] void refusedRegistration()
{
    setFeature(feature, true);
    orca::factory::registerOrcaNamespace("strangers", addStranger);
    const auto entry = findModuleEntry();
    const std::string refused = "the class quillon.chart.Title is registered already.";
    // The second call tries again, for the first has not set the flag.
    finish({messageOf(entry) == refused, classCount() == 1, messageOf(entry) == refused, classCount() == 1});
}

TEST(ModuleEntryDeathTest, RegistersOnceAndOnlyWhenItMay)
{
    const auto success = testing::ExitedWithCode(0);
    EXPECT_EXIT(offThenOnThenTwice(), success, "");
    EXPECT_EXIT(environmentDecidesUntilTheProgramDoes(), success, "");
    EXPECT_EXIT(refusedRegistration(), success, "");
}

}  // namespace
}  // namespace quillon::chart
