#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon::report {

/// The styles of a document by their names. A style that every word processor knows is added when it is
/// first used and the part does not define it.
class Styles {
 public:
    /// Those of new documents.
    Styles();
    /// Part: the markup of the styles part of another document.
    explicit Styles(std::string part) : part_(std::move(part)) {}

    /// Whether there is, or can be, a style of that kind ("paragraph", "character", "table") and name, in
    /// upper or lower case.
    bool has(std::string_view kind, std::string_view name) const;
    /// The id that paragraphs, runs and tables name it by.
    /// Throws: std::runtime_error that lists the styles of the kind when there is none of that name.
    std::u16string use(std::string_view kind, std::string_view name);
    /// The tab stops of a paragraph style, in twentieths of a point.
    std::vector<std::int64_t> getTabStops(std::string_view name) const;
    /// The language of all texts.
    std::string getLanguage() const;
    void setLanguage(const std::string& language);

    /// The markup with what was added.
    std::string getPart() const;

 private:
    struct Style {
        std::string id;
        /// Markup that is added when the style is used; empty for one that the part has.
        std::string markup;
        std::vector<std::int64_t> tabStops;
    };
    /// By kind and name in lower case.
    using Table = std::map<std::pair<std::string, std::string>, Style>;

    static void read(Table& table, const std::string& part, bool isOwn);
    Table& getTable() const;

    std::string part_;
    /// Read at the first use.
    mutable Table table_;
    std::string added_;
    std::string language_;
};

}  // namespace quillon::report
