#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillon::report {

/// What a source knows of a cell. Text may still be read as a number or a date.
enum class CellKind : unsigned char { Text, Number, Date };

/// A cell as its source gives it. Text is well-formed UTF-8; an empty text of kind Text is an empty cell.
struct Cell {
    std::string_view text = {};
    CellKind kind = CellKind::Text;
    /// The number, or the serial number of the date in a worksheet.
    double number = 0;
    /// As in a cell of a worksheet, "0.0%"; empty: none.
    std::string_view format = {};

    bool isEmpty() const { return kind == CellKind::Text && text.empty(); }
};

/// A row as a source hands it out; valid during that call alone.
struct Row {
    /// Where the row starts: the line of the file, or the number of the row, from 1.
    std::size_t line = 0;
    /// Whether an empty line stands before it.
    bool afterBlank = false;
    std::span<const Cell> cells = {};
};

/// Hears a sentence on what was understood, replaced or left out.
using Note = std::function<void(const std::string&)>;

/// How rows are named in sentences: "sales.csv:3", or "sales.xlsx, row 3".
struct SourcePlace {
    std::string name;
    bool countsLines = true;
    /// Where else the table may be; ends sentences on a table that cannot be one.
    std::string hint = {};
    /// Whether a delimiter parts the cells, so that another may be right.
    bool isDelimited = false;

    const char* getUnit() const { return countsLines ? "line" : "row"; }
    std::string at(std::size_t line) const
    {
        return name + (countsLines ? ":" : ", row ") + std::to_string(line);
    }
};

/// Where the rows of a table come from.
class RowSource {
 public:
    /// Says whether it wants further rows.
    using Handler = std::function<bool(const Row&)>;

    virtual ~RowSource() = default;
    /// Hands out all rows from the first one on, as often as it is called.
    /// Throws: std::runtime_error with a sentence for what cannot be read, and what the handler throws.
    virtual void read(const Handler& handler) = 0;

    const SourcePlace& getPlace() const { return place_; }
    void setNumbersRows(bool numbersRows) { numbersRows_ = numbersRows; }
    /// Whether the first row holds the names of the columns beyond doubt, as in rows of objects.
    bool namesColumns() const { return namesColumns_; }
    /// Whether the first column is known to number the rows.
    bool numbersRows() const { return numbersRows_; }
    /// '.' or ',' where the kind of source speaks for it, when the numbers themselves leave it open.
    std::optional<char> getLikelyDecimal() const { return likelyDecimal_; }

 protected:
    RowSource(SourcePlace place, bool namesColumns, std::optional<char> likelyDecimal)
        : place_(std::move(place)), namesColumns_(namesColumns), likelyDecimal_(likelyDecimal)
    {
    }
    void setLikelyDecimal(std::optional<char> decimal) { likelyDecimal_ = decimal; }

 private:
    SourcePlace place_;
    bool namesColumns_;
    std::optional<char> likelyDecimal_;
    bool numbersRows_ = false;
};

}  // namespace quillon::report
