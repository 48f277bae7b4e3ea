#pragma once

#include <type_traits>

#include "chart/model/TextBase.h"

namespace quillon::chart {

/// A run: characters of one colour.
class QUILLON_EXPORT Text : public TextBase {
 public:
    Text() = default;
    explicit Text(const std::u16string& content) : content_(content) {}
    Text(const Text& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<Text> create(Args&&... args)
    {
        struct TextCreator final : Retracting<Text> {
            using Retracting<Text>::Retracting;
        };
        return std::make_shared<TextCreator>(std::forward<Args>(args)...);
    }

    /// Default: empty.
    const std::u16string& getContent() const { return content_; }
    void setContent(const std::u16string& content) { content_ = content; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::u16string content_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Text> /*type*/)
{
    return "quillon.chart.Text";
}

}  // namespace quillon::chart
