#pragma once

#include <type_traits>

#include "chart/model/Object.h"
#include "chart/model/Paragraph.h"

namespace quillon::chart {

/// The title of a chart: one paragraph.
class QUILLON_EXPORT Title : public Object {
 public:
    /// "Chart Title".
    Title();
    explicit Title(const std::u16string& text);
    /// A new paragraph of one run: the given one itself.
    explicit Title(std::shared_ptr<chart::Text> text);
    /// Shares the given paragraph.
    explicit Title(std::shared_ptr<Paragraph> paragraph) : text_(std::move(paragraph)) {}
    /// Copies the paragraph and its runs into new ones.
    Title(const Title& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<Title> create(Args&&... args)
    {
        struct TitleCreator final : Retracting<Title> {
            using Retracting<Title>::Retracting;
        };
        return std::make_shared<TitleCreator>(std::forward<Args>(args)...);
    }

    std::shared_ptr<Paragraph> getText() const { return text_; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<Paragraph> text_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Title> /*type*/)
{
    return "quillon.chart.Title";
}

}  // namespace quillon::chart
