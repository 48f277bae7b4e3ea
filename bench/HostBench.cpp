#include <benchmark/benchmark.h>

#include <functional>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "bench/Benchmarks.h"
#include "chart/host/ModuleEntry.h"
#include "chart/model/DataSeries.h"
#include "orca/BindingRegistry.h"
#include "orca/Script.h"
#include "support/FeatureService.h"

namespace quillon::bench {
namespace {

using chart::DataPoint;
using chart::DataSeries;
using orca::HostArray;

/// Steps that are timed together; a thousandth of a millisecond for all is a nanosecond for each.
constexpr std::size_t stepCount = 1000;
constexpr std::size_t pointCount = 100'000;

/// What a host cannot do without: one look for a name in a table.
bool findName(std::string_view name)
{
    static const std::unordered_map<std::string_view, bool> names = {
        {"Name", true}, {"Size", true}, {"Format", true}, {"LabelFormat", true}, {"appendPoint", true}};
    return names.find(name)->second;
}

/// The objects that a case works on, from both sides.
struct Objects {
    HostArray host = orca::construct("quillon.chart.DataSeries", {u"North"});
    std::shared_ptr<DataSeries> series = host.getNative<DataSeries>();
    HostArray hostPoint = orca::call(host, "appendPoint", {2.5});
    std::shared_ptr<DataPoint> point = hostPoint.getNative<DataPoint>();
    HostArray label = HostArray(u"South");

    const orca::factory::impl::PropertyImpl& name = orca::classOf(host).requireProperty("Name");
    const orca::factory::impl::PropertyImpl& value = orca::classOf(hostPoint).requireProperty("Value");
    const orca::factory::OverloadSet& append = orca::classOf(host).requireMethod("appendPoint");
};

using Step = void (*)(Objects& objects, std::size_t number);

/// One use of a member: through the face with the member looked up once, by its name, and directly.
struct Case {
    const char* name;
    Step kept;
    Step named;
    Step direct;
};

template <typename T>
void keep(T&& value)
{
    benchmark::DoNotOptimize(value);
}

double asDouble(std::size_t number)
{
    return static_cast<double>(number);
}

const Case cases[] = {
    {"get a number", [](Objects& o, std::size_t) { keep(o.value.get(o.hostPoint)); },
     [](Objects& o, std::size_t) { keep(orca::get(o.hostPoint, "Value")); },
     [](Objects& o, std::size_t) { keep(o.point->getValue()); }},
    {"set a number", [](Objects& o, std::size_t number) { o.value.set(o.hostPoint, asDouble(number)); },
     [](Objects& o, std::size_t number) { orca::set(o.hostPoint, "Value", asDouble(number)); },
     [](Objects& o, std::size_t number) { o.point->setValue(asDouble(number)); }},
    {"get a text", [](Objects& o, std::size_t) { keep(o.name.get(o.host)); },
     [](Objects& o, std::size_t) { keep(orca::get(o.host, "Name")); },
     [](Objects& o, std::size_t) { keep(std::u16string(o.series->getName())); }},
    {"set a text", [](Objects& o, std::size_t) { o.name.set(o.host, o.label); },
     [](Objects& o, std::size_t) { orca::set(o.host, "Name", o.label); },
     [](Objects& o, std::size_t) { o.series->setName(*o.label.getText()); }},
    {"appendPoint",
     [](Objects& o, std::size_t number) {
         const HostArray value = asDouble(number);
         keep(o.append.invoke(o.host, {&value, 1}));
     },
     [](Objects& o, std::size_t number) { keep(orca::call(o.host, "appendPoint", {asDouble(number)})); },
     [](Objects& o, std::size_t number) { keep(o.series->appendPoint(asDouble(number))); }},
};

double secondsOf(Step step, bool looksUp)
{
    Objects objects;
    return seconds([&] {
        for (std::size_t i = 0; i < stepCount; ++i) {
            if (looksUp) keep(findName("LabelFormat"));
            step(objects, i);
        }
    });
}

void compareSteps(benchmark::State& state, Step face, Step direct)
{
    compare(
        state, [=] { return secondsOf(face, false); }, [=] { return secondsOf(direct, true); });
    state.counters["ns"] = state.counters["ours"].value * 1e9 / stepCount;
}

void requireReleased(std::size_t bindings)
{
    if (orca::BindingRegistry::size() != bindings)
        throw std::logic_error("The host still holds points that nobody names.");
}

/// A series of many points through the face, and by direct calls without any look-up.
void compareSeries(benchmark::State& state)
{
    const auto face = [] {
        return seconds([] {
            const auto series = orca::construct("quillon.chart.DataSeries");
            const auto& append = orca::classOf(series).requireMethod("appendPoint");
            for (std::size_t i = 0; i < pointCount; ++i) {
                const HostArray value = makeValue(0, i);
                append.invoke(series, {&value, 1});
            }
            requireReleased(1);
        });
    };
    const auto direct = [] {
        return seconds([] {
            const auto series = DataSeries::create();
            for (std::size_t i = 0; i < pointCount; ++i) series->appendPoint(makeValue(0, i));
        });
    };
    compare(state, face, direct);
    state.counters["ns/point"] = state.counters["ours"].value * 1e9 / pointCount;
}

void add(const std::string& name, const std::function<void(benchmark::State&)>& run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.5);
}

}  // namespace

void registerHostBenchmarks()
{
    setFeature("QuillonCharts", true);
    CVInitialize_shared_quillon_charts();
    for (const auto& item : cases) {
        add(item.name + std::string(", 1,000 times"),
            [item](benchmark::State& state) { compareSteps(state, item.kept, item.direct); });
        add(item.name + std::string(" by name, 1,000 times"),
            [item](benchmark::State& state) { compareSteps(state, item.named, item.direct); });
    }
    add("series by names, 1 x 100,000", compareSeries);
}

}  // namespace quillon::bench
