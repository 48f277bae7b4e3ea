#pragma once

#include <type_traits>

#include "chart/model/BorderFormat.h"
#include "chart/model/SolidBorderCapType.h"
#include "chart/model/SolidBorderCompoundType.h"
#include "chart/model/SolidBorderDashType.h"
#include "chart/model/SolidBorderJoinType.h"

namespace quillon::chart {

/// An outline of one colour, with the style of its line.
class QUILLON_EXPORT SolidBorderFormat : public BorderFormat {
 public:
    SolidBorderFormat() = default;
    explicit SolidBorderFormat(std::u16string colorText) : BorderFormat(colorText) {}
    SolidBorderFormat(const SolidBorderFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<SolidBorderFormat> create(Args&&... args)
    {
        struct SolidBorderFormatCreator final : Retracting<SolidBorderFormat> {
            using Retracting<SolidBorderFormat>::Retracting;
        };
        return std::make_shared<SolidBorderFormatCreator>(std::forward<Args>(args)...);
    }

    /// Default: Simple.
    SolidBorderCompoundType getCompoundType() const { return compoundType_; }
    void setCompoundType(SolidBorderCompoundType type) { compoundType_ = type; }

    /// Default: Solid.
    SolidBorderDashType getDashType() const { return dashType_; }
    void setDashType(SolidBorderDashType type) { dashType_ = type; }

    /// Default: Flat.
    SolidBorderCapType getCapType() const { return capType_; }
    void setCapType(SolidBorderCapType type) { capType_ = type; }

    /// Default: Rounded.
    SolidBorderJoinType getJoinType() const { return joinType_; }
    void setJoinType(SolidBorderJoinType type) { joinType_ = type; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    SolidBorderCompoundType compoundType_ = SolidBorderCompoundType::Simple;
    SolidBorderDashType dashType_ = SolidBorderDashType::Solid;
    SolidBorderCapType capType_ = SolidBorderCapType::Flat;
    SolidBorderJoinType joinType_ = SolidBorderJoinType::Rounded;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<SolidBorderFormat> /*type*/)
{
    return "quillon.chart.SolidBorderFormat";
}

}  // namespace quillon::chart
