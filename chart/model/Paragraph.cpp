#include "chart/model/Paragraph.h"

namespace quillon::chart {

Paragraph::Paragraph(const std::u16string& content) : Paragraph(Text::create(content)) {}

Paragraph::Paragraph(std::shared_ptr<Text> text)
{
    content_.push_back(std::move(text));
}

Paragraph::Paragraph(const Paragraph& other) : TextBase(other)
{
    content_.reserve(other.content_.size());
    for (const auto& run : other.content_) content_.push_back(copyOf(run));
}

std::shared_ptr<Text> Paragraph::appendText(std::shared_ptr<Text> text)
{
    content_.push_back(std::move(text));
    return content_.back();
}

const char* Paragraph::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Paragraph>());
}

}  // namespace quillon::chart
