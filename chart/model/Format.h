#pragma once

#include <cstdint>
#include <type_traits>

#include "chart/model/Color.h"
#include "chart/model/Object.h"

namespace quillon::chart {

/// What borders and fills share: a colour and a transparency.
class QUILLON_EXPORT Format : public Object {
 public:
    /// The colour, as an object of its own: a change through it is a change of the format. Never null.
    /// Default: "white".
    std::shared_ptr<Color> getColor() const { return color_; }
    /// Writes `text` into the held colour, as Color::setText does.
    void setColor(const std::u16string& text) { color_->setText(text); }

    /// Percent; stored as given; the range is not checked. Default: 0.
    std::uint32_t getTransparency() const { return transparency_; }
    void setTransparency(std::uint32_t percent) { transparency_ = percent; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 protected:
    Format();
    explicit Format(const std::u16string& colorText);
    /// Copies the colour into a new one.
    Format(const Format& other);

 private:
    std::shared_ptr<Color> color_;
    std::uint32_t transparency_ = 0;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Format> /*type*/)
{
    return "quillon.chart.Format";
}

}  // namespace quillon::chart
