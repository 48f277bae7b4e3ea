#pragma once

#include <cstdint>
#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// What a data label says: which items it contains and what stands between them.
class QUILLON_EXPORT DataLabelContentOptions : public Object {
 public:
    /// What stands between two items of a label.
    enum class Separator : std::uint32_t {
        Comma = 0,
        Semicolon = 1,
        Period = 2,
        NewLine = 3,
        Space = 4,
    };

    DataLabelContentOptions() = default;
    DataLabelContentOptions(const DataLabelContentOptions& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataLabelContentOptions> create(Args&&... args)
    {
        struct DataLabelContentOptionsCreator final : Retracting<DataLabelContentOptions> {
            using Retracting<DataLabelContentOptions>::Retracting;
        };
        return std::make_shared<DataLabelContentOptionsCreator>(std::forward<Args>(args)...);
    }

    /// Default: true.
    bool getContainsValue() const { return containsValue_; }
    void setContainsValue(bool contains) { containsValue_ = contains; }

    /// Default: false.
    bool getContainsSeriesName() const { return containsSeriesName_; }
    void setContainsSeriesName(bool contains) { containsSeriesName_ = contains; }

    /// Default: true.
    bool getContainsCategoryName() const { return containsCategoryName_; }
    void setContainsCategoryName(bool contains) { containsCategoryName_ = contains; }

    /// Default: false.
    bool getContainsLegendKey() const { return containsLegendKey_; }
    void setContainsLegendKey(bool contains) { containsLegendKey_ = contains; }

    /// Default: false.
    bool getShowLeaderLines() const { return showLeaderLines_; }
    void setShowLeaderLines(bool shows) { showLeaderLines_ = shows; }

    /// Default: Comma.
    Separator getSeparator() const { return separator_; }
    void setSeparator(Separator separator) { separator_ = separator; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    bool containsValue_ = true;
    bool containsSeriesName_ = false;
    bool containsCategoryName_ = true;
    bool containsLegendKey_ = false;
    bool showLeaderLines_ = false;
    Separator separator_ = Separator::Comma;
};

using DataLabelContentSeparator = DataLabelContentOptions::Separator;

/// The names under which the host knows the two.
constexpr const char* hostNameOf(std::type_identity<DataLabelContentOptions> /*type*/)
{
    return "quillon.chart.DataLabelContentOptions";
}

constexpr const char* hostNameOf(std::type_identity<DataLabelContentOptions::Separator> /*type*/)
{
    return "quillon.chart.DataLabelContentSeparator";
}

}  // namespace quillon::chart
