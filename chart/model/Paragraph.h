#pragma once

#include <type_traits>
#include <vector>

#include "chart/model/Text.h"
#include "chart/model/TextBase.h"

namespace quillon::chart {

/// An ordered list of runs.
class QUILLON_EXPORT Paragraph : public TextBase {
 public:
    Paragraph() = default;
    /// One new run with `content`, also when it is empty.
    explicit Paragraph(const std::u16string& content);
    /// One run: the given one itself.
    explicit Paragraph(std::shared_ptr<Text> text);
    /// Copies every run into a new one.
    Paragraph(const Paragraph& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<Paragraph> create(Args&&... args)
    {
        struct ParagraphCreator final : Retracting<Paragraph> {
            using Retracting<Paragraph>::Retracting;
        };
        return std::make_shared<ParagraphCreator>(std::forward<Args>(args)...);
    }

    /// The runs in the order in which they are written. Default: none.
    std::vector<std::shared_ptr<Text>> getContent() const { return content_; }
    /// Appends the given run itself, which may stand here already, and returns it.
    std::shared_ptr<Text> appendText(std::shared_ptr<Text> text);

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::vector<std::shared_ptr<Text>> content_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Paragraph> /*type*/)
{
    return "quillon.chart.Paragraph";
}

}  // namespace quillon::chart
