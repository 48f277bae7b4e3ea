#include "chart/host/FormatClasses.h"
#include "orca/HostArray.h"

namespace quillon::chart::mi {
namespace {

using orca::HostArray;
using orca::factory::HostArrayProxy;

/// A list of other than three numbers is black. A number outside 0 to 1 is taken as it is.
void setTriplet(Color& color, const std::vector<double>& numbers)
{
    if (numbers.size() == 3)
        color.setFromTriplet(numbers[0], numbers[1], numbers[2]);
    else
        color.setFromTriplet(0, 0, 0);
}

/// Takes a text or a numeric vector. Whatever else comes leaves the colour as it is, and is not an error.
void setColor(Color& color, const HostArrayProxy& proxy)
{
    const HostArray value(proxy);
    if (const auto* const text = value.getText()) return color.setFromText(*text);
    const bool isVector = value.getRowCount() == 1 || value.getColumnCount() == 1;
    if (value.isEmpty() || !isVector) return;
    if (const auto numbers = value.getMatrixElements()) setTriplet(color, *numbers);
}

HostArrayProxy getColor(const Color& color)
{
    if (!color.isFromTriplet()) return HostArray(color.getText()).getProxy();
    const auto [red, green, blue] = color.toTriplet();
    return HostArray::row({red, green, blue}).getProxy();
}

}  // namespace

CosColor::CosColor()
    : CosClass("A colour: a name, \"rgb(255,128,0)\", \"#ff8000\", or three numbers between 0 and 1.")
{
    constructor<>();
    constructor<std::u16string>({"text"});
    adaptedProperty<Color>("Color", "The colour in the form in which it was given, text or three numbers.",
                           getColor, setColor);
}

}  // namespace quillon::chart::mi
