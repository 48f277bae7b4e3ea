#include "chart/model/ShapeFormat.h"

#include <stdexcept>
#include <typeinfo>

#include "chart/model/GradientBorderFormat.h"
#include "chart/model/SolidBorderFormat.h"
#include "chart/model/SolidFillFormat.h"

namespace quillon::chart {
namespace {

std::shared_ptr<BorderFormat> copyBorder(const BorderFormat* border)
{
    if (border == nullptr) throw std::bad_typeid();
    if (const auto* solid = dynamic_cast<const SolidBorderFormat*>(border))
        return std::shared_ptr<BorderFormat>(new SolidBorderFormat(*solid));
    if (const auto* gradient = dynamic_cast<const GradientBorderFormat*>(border))
        return std::shared_ptr<BorderFormat>(new GradientBorderFormat(*gradient));
    throw std::runtime_error(std::string("Unknown border format type: ") +
                             border->getFullyQualifiedOrcaTypeName());
}

/// Only a solid fill can be copied.
std::shared_ptr<FillFormat> copyFill(const FillFormat* fill)
{
    if (fill == nullptr) throw std::bad_typeid();
    if (const auto* solid = dynamic_cast<const SolidFillFormat*>(fill))
        return std::shared_ptr<FillFormat>(new SolidFillFormat(*solid));
    throw std::runtime_error(std::string("Unsupported fill format type: ") +
                             fill->getFullyQualifiedOrcaTypeName());
}

}  // namespace

ShapeFormat::ShapeFormat() : ShapeFormat(u"white") {}

ShapeFormat::ShapeFormat(const std::u16string& colorText) : ShapeFormat(colorText, colorText) {}

ShapeFormat::ShapeFormat(const std::u16string& fillColorText, const std::u16string& borderColorText)
    : fill_(SolidFillFormat::create(fillColorText)),
      border_(SolidBorderFormat::create(borderColorText)),
      effects_(Effects::create())
{
}

// In this order, so that of two formats that cannot be copied the border is the one reported.
ShapeFormat::ShapeFormat(const ShapeFormat& other) : Object(other)
{
    effects_ = copyOf(other.effects_);
    border_ = copyBorder(other.border_.get());
    fill_ = copyFill(other.fill_.get());
}

const char* ShapeFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<ShapeFormat>());
}

}  // namespace quillon::chart
