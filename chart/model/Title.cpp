#include "chart/model/Title.h"

namespace quillon::chart {

Title::Title() : Title(u"Chart Title") {}

Title::Title(const std::u16string& text) : text_(Paragraph::create(text)) {}

Title::Title(std::shared_ptr<chart::Text> text) : text_(Paragraph::create(std::move(text))) {}

Title::Title(const Title& other) : Object(other), text_(copyOf(other.text_)) {}

const char* Title::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Title>());
}

}  // namespace quillon::chart
