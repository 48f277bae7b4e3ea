#include <cstdlib>

#include "chart/model/Object.h"
#include "orca/ClassRegistry.h"
#include "support/FeatureService.h"
#include "tests/ThrownText.h"
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

void actsOnceAndOnlyWhenTheFeatureIsOn()
{
    const std::pair<bool, std::size_t> calls[] = {{false, 0}, {true, 47}, {true, 47}, {false, 47}};
    for (const auto& [isOn, count] : calls) {
        setFeature(feature, isOn);
        findModuleEntry()();
        EXPECT_EQ(classCount(), count);
    }
}

void letsTheEnvironmentDecideUntilTheProgramDoes()
{
    unsetenv("QUILLON_FEATURES");
    EXPECT_FALSE(Feature(feature).isOn());
    setenv("QUILLON_FEATURES", "NoQuillonCharts,QuillonChartsToo", 1);
    EXPECT_FALSE(Feature(feature).isOn());
    setenv("QUILLON_FEATURES", "Other, QuillonCharts", 1);
    EXPECT_TRUE(Feature(feature).isOn());
    findModuleEntry()();
    EXPECT_EQ(classCount(), 47);
    setFeature(feature, false);
    EXPECT_FALSE(Feature(feature).isOn());
}

struct Stranger : orca::factory::StdShareableHandleClassInfo<Object> {
    Stranger() : StdShareableHandleClassInfo("quillon.chart.Title", {}, "") {}
    bool isInstance(const orca::factory::full::StdShareable* /*object*/) const override { return false; }
};

void triesAgainAfterARefusedRegistration()
{
    setFeature(feature, true);
    orca::factory::registerOrcaNamespace("strangers",
                                         [](auto* added) { added->template addClass<Stranger>(); });
    for (int call = 0; call < 2; ++call) {
        EXPECT_EQ(thrownText(findModuleEntry()), "the class quillon.chart.Title is registered already.");
        EXPECT_EQ(classCount(), 1);
    }
}

TEST(ModuleEntryDeathTest, RegistersOnceAndOnlyWhenItMay)
{
    for (const auto scenario :
         {actsOnceAndOnlyWhenTheFeatureIsOn, letsTheEnvironmentDecideUntilTheProgramDoes,
          triesAgainAfterARefusedRegistration})
        EXPECT_EXIT(scenario(); std::exit(HasFailure() ? 1 : 0), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quillon::chart
