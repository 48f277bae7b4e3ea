#include <stdexcept>
#include <string>
#include <vector>

#include "chart/host/ModuleEntry.h"
#include "chart/model/Chart.h"
#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/PackageReader.h"
#include "orca/BindingRegistry.h"
#include "orca/Script.h"
#include "report/document/ChartParts.h"
#include "support/FeatureService.h"

// Objects are made and used by names, with any values and handles; charts among them are written now and
// then. When all handles are gone, nothing is bound.

namespace quillon::fuzz {
namespace {

using orca::HostArray;

bool start()
{
    setFeature("QuillonCharts", true);
    CVInitialize_shared_quillon_charts();
    return true;
}

/// Handles, and what is done with them.
class HostScript {
 public:
    explicit HostScript(Input& input) : input_(input) {}

    void runStep()
    {
        const auto step = input_.takeIndex(10);
        if (step < 3 || handles_.empty()) return construct();
        const auto object = takeHandle();
        const auto* const info =
            object.getFirstObject() != nullptr ? object.getFirstObject()->getClass() : nullptr;
        if (step == 8) return letGo();
        if (step == 9 || info == nullptr) return look(object);
        use(object, *info, step);
    }

 private:
    void construct()
    {
        const auto& info = *input_.pick(orca::ClassRegistry::instance().getClasses());
        handles_.push_back(orca::construct(info.getName(), takeArguments(info.getOwnConstructors())));
    }

    void use(const HostArray& object, const orca::factory::ClassInfo& info, std::size_t step)
    {
        if (step == 7 && !info.getOwnMethods().empty()) {
            const auto& name = input_.pick(info.getOwnMethods())->getName();
            handles_.push_back(orca::call(object, name, takeArguments(info.getOwnMethods())));
        } else if (!info.getProperties().empty()) {
            const auto& name = input_.pick(info.getProperties())->getName();
            if (step < 5)
                handles_.push_back(orca::get(object, name));
            else
                orca::set(object, name, takeValue());
        }
    }

    void look(const HostArray& object)
    {
        const auto chart = object.getNative<chart::Chart>();
        if (chart && input_.takeChance(2)) return write(*chart);
        object.describe();
        static_cast<void>(object == takeValue());
        handles_.push_back(orca::get(object, input_.takeBytes(10)));
    }

    static void write(const chart::Chart& chart)
    {
        const auto parts = report::makeChartParts(chart, {}, 1, "rId1");
        readXml("chart", parts.chart);
        readXml("run", parts.run);
        readSoundPackage(parts.workbook);
    }

    /// A handle goes while others may still use its object.
    void letGo()
    {
        handles_.erase(handles_.begin() + static_cast<std::ptrdiff_t>(input_.takeIndex(handles_.size())));
    }

    HostArray takeHandle() { return handles_.empty() ? HostArray() : input_.pick(handles_); }

    orca::internal::Name takeClassName()
    {
        return orca::internal::makeInterned(
            input_.pick(orca::ClassRegistry::instance().getClasses())->getName());
    }

    /// Mostly arguments that one of the forms takes.
    template <typename Forms>
    std::vector<HostArray> takeArguments(const Forms& forms)
    {
        std::vector<HostArray> arguments;
        if (forms.empty() || input_.takeChance(4)) {
            for (auto left = input_.takeIndex(5); left > 0; --left) arguments.push_back(takeValue());
            return arguments;
        }
        for (const auto& type : input_.pick(forms)->getInputs()) arguments.push_back(takeValueOf(type.text));
        return arguments;
    }

    HostArray takeValueOf(const std::string& type)
    {
        if (type.find("String") != std::string::npos) return input_.takeText();
        if (type.find("double") != std::string::npos) return input_.takeDouble();
        return takeValue();
    }

    HostArray takeValue(unsigned depth = 0)
    {
        switch (input_.takeIndex(14)) {
            case 0:
                return {};
            case 1:
                return input_.takeDouble();
            case 2:
                return static_cast<std::uint32_t>(input_.takeNumber(0, UINT32_MAX));
            case 3:
                return input_.takeNumber(0, UINT64_MAX);
            case 4:
                return input_.takeChance(2);
            case 5:
                return input_.takeText();
            case 6:
                return HostArray::textArray(
                    std::vector<std::u16string>(input_.takeIndex(4), input_.takeText()));
            case 7:
                return HostArray::matrix(input_.takeIndex(5), input_.takeIndex(5),
                                         std::vector<double>(input_.takeIndex(5), 0.5));
            case 8:
                return HostArray::matrix<std::uint32_t>(1, 2,
                                                        {static_cast<std::uint32_t>(input_.takeByte()), 7});
            case 9:
                return takeCells(depth);
            case 10:
                return takeObjects();
            case 11:
                return HostArray::empty(takeClassName());
            default:
                return takeHandle();
        }
    }

    HostArray takeCells(unsigned depth)
    {
        if (depth > 3) return {};
        std::vector<HostArray> cells(input_.takeIndex(4));
        for (auto& cell : cells) cell = takeValue(depth + 1);
        const auto count = cells.size();
        return HostArray::cells(1, count, std::move(cells));
    }

    HostArray takeObjects()
    {
        auto array = orca::omCreateORCAMatrix(input_.takeIndex(3), input_.takeIndex(4), takeClassName());
        for (auto left = input_.takeIndex(5); left > 0; --left)
            orca::omSetArrayElement(array, input_.takeIndex(6), takeHandle());
        if (input_.takeChance(2)) orca::omSetClassOfHeterogeneousArray(array, takeClassName());
        return array;
    }

    Input& input_;
    std::vector<HostArray> handles_;
};

void runScript(Input& input)
{
    HostScript script(input);
    for (unsigned i = 0; i < 150 && !input.isEmpty(); ++i) {
        try {
            script.runStep();
        } catch (const std::runtime_error&) {
            // What the library and the host refuse.
        } catch (const std::out_of_range&) {
            // Positions behind the end of a text or a list.
        } catch (const std::length_error&) {
            // A list larger than memory.
        }
    }
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    static const bool isStarted = start();
    Input input(data, size);
    runScript(input);
    require(isStarted && orca::BindingRegistry::size() == 0, "objects that are still bound");
    return 0;
}
