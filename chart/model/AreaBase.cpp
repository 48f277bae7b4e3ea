#include "chart/model/AreaBase.h"

namespace quillon::chart {

AreaBase::AreaBase() : AreaBase(u"", u"") {}

AreaBase::AreaBase(const std::u16string& height, const std::u16string& width)
    : height_(height), width_(width), format_(ShapeFormat::create())
{
}

AreaBase::AreaBase(const AreaBase& other)
    : Object(other), height_(other.height_), width_(other.width_), format_(copyOf(other.format_))
{
}

const char* AreaBase::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<AreaBase>());
}

}  // namespace quillon::chart
