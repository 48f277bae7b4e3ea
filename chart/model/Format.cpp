#include "chart/model/Format.h"

namespace quillon::chart {

Format::Format() : color_(Color::create()) {}

Format::Format(const std::u16string& colorText) : color_(Color::create(colorText)) {}

Format::Format(const Format& other)
    : Object(other), color_(copyOf(other.color_)), transparency_(other.transparency_)
{
}

const char* Format::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Format>());
}

}  // namespace quillon::chart
