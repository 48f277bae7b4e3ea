#include "chart/model/TextBase.h"

namespace quillon::chart {

TextBase::TextBase() : TextBase(u"black") {}

TextBase::TextBase(const std::u16string& color) : color_(Color::create(color)) {}

TextBase::TextBase(const TextBase& other) : Object(other), color_(copyOf(other.color_)) {}

const char* TextBase::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<TextBase>());
}

}  // namespace quillon::chart
