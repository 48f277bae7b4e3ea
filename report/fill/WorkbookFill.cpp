#include "report/fill/WorkbookFill.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

#include "report/fill/CellRange.h"
#include "report/fill/CellStyles.h"
#include "report/fill/SheetCells.h"
#include "report/fill/SheetTable.h"
#include "report/options/QuotedText.h"
#include "report/package/XmlSpans.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Why a workbook cannot be updated.
[[noreturn]] void refuse(const std::string& reason)
{
    throw std::runtime_error(reason);
}

std::string fold(const std::string& name)
{
    return toUtf8(toLowerString(toUtf16(name)));
}

/// The blocks of a series in a fixed order; null where it has none.
std::vector<CellBlock*> getBlocks(SeriesCells& series)
{
    std::vector<CellBlock*> blocks;
    for (auto* block : {&series.name, &series.categories, &series.values})
        blocks.push_back(*block ? &**block : nullptr);
    for (auto& block : series.more) blocks.push_back(&block);
    return blocks;
}

/// How many places a new block may stand from those that there are.
constexpr std::int64_t farthest = 10'000;

constexpr std::size_t nameBlock = 0;
constexpr std::size_t categoriesBlock = 1;
constexpr std::size_t valuesBlock = 2;

std::size_t getLength(const CellBlock& block)
{
    return block.lines.empty() ? 0 : block.lines[0].getSize();
}

/// Where a block stands; without areas, nowhere.
struct Place {
    CellRange range;
    /// The defined name that the chart has for it; empty for cells.
    std::string definedName;
    /// Whether the name computes its cells, and so follows them by itself.
    bool isComputed = false;

    bool isSet() const { return !range.areas.empty(); }
    bool operator==(const Place& other) const { return range == other.range && isSet() == other.isSet(); }
};

/// Those of the blocks of a series.
using Places = std::vector<Place>;

/// Whether two series have cells of the same shape, so that one may move into those of the other.
bool isAlike(const Places& left, const Places& right)
{
    return std::ranges::equal(left, right, [](const Place& a, const Place& b) {
        return a.isSet() == b.isSet() && a.range.isRow == b.range.isRow && a.range.prefix == b.range.prefix &&
               a.definedName.empty() && b.definedName.empty();
    });
}

struct DefinedName {
    std::string name;
    /// The sheet by 0-based position that the name is for; -1 for all.
    int sheet;
    std::string text;
    XmlElement element;
};

/// A workbook on its way to new numbers.
class Filler {
 public:
    explicit Filler(const std::string& bytes);
    std::string fill(std::vector<SeriesCells>& series, std::vector<SeriesCells> removed);

 private:
    struct Sheet {
        std::string name;
        std::string part;
        /// Made when a reference leads there.
        std::unique_ptr<SheetCells> cells;
        std::vector<SheetTable> tables;
        std::vector<Area> before;
        std::vector<Area> now;
    };

    void readSheets();
    void readNames();
    Sheet& openSheet(const std::string& name);
    void load(Sheet& sheet);

    Place resolve(const CellBlock& block);
    Place resolveName(std::string_view text, int depth = 0);
    std::optional<CellRange> computeOffset(std::string_view formula, int depth);
    std::optional<Place> resolveColumn(std::string_view text);
    void cutWholeLines(CellRange& range);
    Places resolve(SeriesCells& series);
    void chooseDirection(Places& places) const;

    void closeGaps(std::vector<Places>& removed);
    void placeNewSeries(std::vector<SeriesCells>& series);
    Places placeBeside(const Places& last, std::int64_t steps, const std::vector<CellBlock*>& blocks) const;
    bool isShared(const Places& last, std::size_t block) const;
    bool isFree(const Place& place, const CellBlock& block);
    std::optional<std::size_t> findLast() const;
    void placeRest(std::vector<SeriesCells>& series);
    Place placeBeside(const Place& values, const CellBlock& block);
    void resizePlaces(std::vector<SeriesCells>& series);
    void makeRoom();
    bool canMoveRows(const Sheet& sheet) const;

    void collectAreas(const std::vector<Places>& places, std::vector<Area> Sheet::*areas);
    static std::optional<Area> findForeign(const Sheet& sheet, const Area& area);
    static void requireRoom(const Sheet& sheet);
    void write(std::vector<SeriesCells>& series, CellStyles& styles);
    void writeBlock(const CellBlock& block, const Place& place, const Place& look, CellStyles& styles);
    void clearRest(Sheet& sheet);
    void requireNoFormulas(const Sheet& sheet) const;
    void saveSheet(Sheet& sheet);
    void emptyLeftStrings();
    void noteNames();
    void saveMain();
    void reportReferences(std::vector<SeriesCells>& series) const;

    Package book_;
    std::vector<std::string> strings_;
    std::vector<Sheet> sheets_;
    std::unique_ptr<XmlSpans> main_;
    std::vector<DefinedName> names_;
    /// The text that a defined name is to have, by its position.
    std::map<std::size_t, std::string> newNames_;
    bool needsCalculation_ = false;
    /// Shared texts that cells of the chart held.
    std::set<std::uint32_t> leftStrings_;
    /// Of all references.
    std::uint64_t cellCount_ = 0;
    /// By series: where its cells stood, where they stand now, and whose look they take.
    std::vector<Places> before_;
    std::vector<Places> now_;
    std::vector<Places> looks_;
};

Filler::Filler(const std::string& bytes) : book_(bytes)
{
    main_ = std::make_unique<XmlSpans>(book_.getPart(book_.getMainPart()), book_.getMainPart());
    if (!main_->getRoot().is(Ns::Sheet, "workbook")) refuse("it is not an .xlsx or .xlsm file");
    strings_ = readSharedStrings(book_);
    readSheets();
    readNames();
}

void Filler::readSheets()
{
    const auto relationships = book_.getRelationships(book_.getMainPart());
    for (const auto sheet : main_->getRoot().findChild("sheets").getChildren()) {
        const auto id = sheet.getAttribute(Ns::OfficeRelationships, "id");
        const auto row = std::ranges::find_if(relationships, [&](const auto& r) { return r.id == id; });
        sheets_.push_back({sheet.getAttribute("name").value_or(""),
                           row == relationships.end() || row->isExternal ? "" : row->target,
                           {},
                           {},
                           {},
                           {}});
    }
}

void Filler::readNames()
{
    for (const auto element : main_->getRoot().findChild("definedNames").getChildren()) {
        const auto sheet = element.getAttribute("localSheetId");
        names_.push_back({element.getAttribute("name").value_or(""), sheet ? std::atoi(sheet->c_str()) : -1,
                          element.getText(), element});
    }
}

Filler::Sheet& Filler::openSheet(const std::string& name)
{
    const auto sheet =
        std::ranges::find_if(sheets_, [&](const Sheet& s) { return fold(s.name) == fold(name); });
    if (sheet == sheets_.end()) refuse("it has no sheet " + quoteText(name));
    if (!sheet->cells) load(*sheet);
    return *sheet;
}

void Filler::load(Sheet& sheet)
{
    if (!book_.hasPart(sheet.part)) refuse("its sheet " + quoteText(sheet.name) + " is missing");
    sheet.cells = std::make_unique<SheetCells>(book_.getPart(sheet.part), sheet.part, strings_);
    for (const auto& relationship : book_.getRelationships(sheet.part))
        if (relationship.getKind() == "table" && book_.hasPart(relationship.target))
            sheet.tables.emplace_back(book_, relationship.target);
}

Place Filler::resolve(const CellBlock& block)
{
    if (block.reference.empty()) return {};
    if (auto range = parseRange(block.reference)) {
        cutWholeLines(*range);
        return {std::move(*range), {}};
    }
    if (auto column = resolveColumn(block.reference)) return *column;
    return resolveName(block.reference);
}

/// A name stands for cells: "Sales", "Sheet1!Sales", "[0]!Sales".
Place Filler::resolveName(std::string_view text, int depth)
{
    const auto mark = text.rfind('!');
    const auto name = std::string(mark == std::string_view::npos ? text : text.substr(mark + 1));
    const DefinedName* found = nullptr;
    for (const auto& defined : names_)
        if (fold(defined.name) == fold(name) && (found == nullptr || defined.sheet >= 0)) found = &defined;
    if (found == nullptr) refuse(quoteText(text) + " names no cells");
    if (auto range = parseRange(found->text)) {
        cutWholeLines(*range);
        return {std::move(*range), found->name};
    }
    if (auto range = computeOffset(found->text, depth)) return {std::move(*range), found->name, true};
    refuse("the name " + quoteText(name) + " is computed");
}

/// The cells of "OFFSET(Sheet1!$B$1,1,0,COUNTA(Sheet1!$B:$B)-1,1)", as names that grow by themselves are
/// written, or of "OFFSET(Dates,0,1)"; down to the first that is empty where the height is computed.
std::optional<CellRange> Filler::computeOffset(std::string_view formula, int depth)
{
    constexpr int deepest = 8;
    const auto offset = parseOffset(formula);
    if (!offset || depth > deepest) return {};
    auto range = parseRange(offset->base);
    if (!range) range = resolveName(offset->base, depth + 1).range;
    auto& area = range->areas[0];
    const auto bottom = area.bottom + offset->rows;
    const auto right = area.right + offset->columns;
    if (range->areas.size() != 1 || area.top + offset->rows < 0 || area.left + offset->columns < 0 ||
        std::cmp_greater(bottom, maximumRow) || std::cmp_greater(right, maximumColumn))
        return {};
    *range = range->shift(offset->rows, offset->columns);
    if (!offset->hasHeight) return range;
    auto& moved = range->areas[0];
    const auto& cells = *openSheet(range->getSheet()).cells;
    moved.right = moved.left;
    moved.bottom = moved.top;
    while (moved.bottom < maximumRow && !cells.isEmpty(moved.bottom + 1, moved.left)) ++moved.bottom;
    return range;
}

/// A column of a table: "Table1[North]", "Table1[[#Headers],[North]]".
std::optional<Place> Filler::resolveColumn(std::string_view text)
{
    const auto bracket = text.find('[');
    if (bracket == std::string_view::npos || bracket == 0 || !text.ends_with(']')) return {};
    auto column = text.substr(bracket + 1, text.size() - bracket - 2);
    constexpr std::string_view header = "[#Headers],[";
    const bool isHeader = column.starts_with(header);
    if (isHeader) column = column.substr(header.size(), column.size() - header.size() - 1);
    for (auto& sheet : sheets_) {
        if (!sheet.cells && book_.hasPart(sheet.part)) load(sheet);
        for (const auto& table : sheet.tables) {
            if (fold(table.getName()) != fold(std::string(text.substr(0, bracket)))) continue;
            auto quoted = sheet.name;
            for (std::size_t at = 0; (at = quoted.find('\'', at)) != std::string::npos; at += 2)
                quoted.insert(at, 1, '\'');
            if (const auto area = table.findColumn(std::string(column), isHeader))
                return Place{{"'" + quoted + "'!", {*area}}, {}};
        }
    }
    return {};
}

/// Whole columns and rows end where the sheet's cells do.
void Filler::cutWholeLines(CellRange& range)
{
    const auto used = openSheet(range.getSheet()).cells->getUsedArea().value_or(Area());
    for (auto& area : range.areas) {
        if (area.bottom == maximumRow && area.top == 0) area.bottom = used.bottom;
        if (area.right == maximumColumn && area.left == 0) area.right = used.right;
    }
}

Places Filler::resolve(SeriesCells& series)
{
    Places places;
    for (const auto* block : getBlocks(series))
        places.push_back(block == nullptr ? Place() : resolve(*block));
    for (const auto& place : places)
        for (const auto& area : place.range.areas) cellCount_ += area.countCells();
    if (cellCount_ > maximumCells) refuse("the chart names more cells than a chart can show");
    chooseDirection(places);
    // A whole column holds the name as well.
    if (places[nameBlock].isSet())
        for (std::size_t i = 1; i < places.size(); ++i)
            for (auto& area : places[i].range.areas)
                if (area.getHeight() > 1 && area.contains(places[nameBlock].range.areas[0]))
                    area.top = places[nameBlock].range.areas[0].bottom + 1;
    return places;
}

/// Values follow each other to the right where they stand in one row, or behind their name.
void Filler::chooseDirection(Places& places) const
{
    const auto& values = places[valuesBlock];
    if (!values.isSet()) return;
    const auto& first = values.range.areas[0];
    const auto& name = places[nameBlock];
    bool isRow = first.getWidth() > 1;
    if (first.getWidth() == 1 && first.getHeight() == 1) {
        isRow = values.range.areas.size() > 1 && values.range.areas[1].top == first.top;
        if (name.isSet())
            isRow = name.range.areas[0].top == first.top && name.range.areas[0].left < first.left;
    }
    for (auto& place : places) place.range.isRow = isRow;
}

/// Series behind a removed one move up into its cells, so that no empty column stays between them.
void Filler::closeGaps(std::vector<Places>& removed)
{
    if (removed.empty()) return;
    auto slots = before_;
    slots.insert(slots.end(), removed.begin(), removed.end());
    const bool isRegular = std::ranges::all_of(slots, [&](const Places& places) {
        return places[valuesBlock].isSet() && isAlike(places, slots[0]);
    });
    if (!isRegular) return;
    const auto getStart = [](const Places& places) {
        const auto& area = places[valuesBlock].range.areas[0];
        return places[valuesBlock].range.isRow ? area.top : area.left;
    };
    std::ranges::stable_sort(slots, {}, getStart);
    std::vector<std::size_t> order(before_.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return getStart(before_[i]); });
    for (std::size_t i = 0; i < order.size(); ++i) now_[order[i]] = slots[i];
}

/// The cells that a new series has `steps` places beside the last one; what all series share stays, and what
/// the last one does without stands behind.
Places Filler::placeBeside(const Places& last, std::int64_t steps,
                           const std::vector<CellBlock*>& blocks) const
{
    const bool isRow = last[valuesBlock].range.isRow;
    const auto getEnd = [&](const Place& place) {
        return isRow ? place.range.areas.back().bottom : place.range.areas.back().right;
    };
    auto end = getEnd(last[valuesBlock]);
    for (std::size_t i = 0; i < last.size(); ++i)
        if (last[i].isSet() && !isShared(last, i)) end = std::max(end, getEnd(last[i]));
    Places places(last.size());
    for (std::size_t i = 0; i < last.size(); ++i) {
        if (blocks[i] == nullptr || blocks[i]->lines.empty()) continue;
        const bool isThere = last[i].isSet();
        auto by = steps;
        if (!isThere) by += ++end - getEnd(last[valuesBlock]);
        const auto& like = last[isThere ? i : valuesBlock].range;
        places[i].range = isShared(last, i) ? like : like.shift(isRow ? by : 0, isRow ? 0 : by);
    }
    return places;
}

/// Whether other series have a block in the same cells. New categories are their own.
bool Filler::isShared(const Places& last, std::size_t block) const
{
    return block != categoriesBlock && last[block].isSet() &&
           std::ranges::count_if(before_, [&](const Places& p) { return p[block] == last[block]; }) > 1;
}

/// Whether a block may stand there: cells that nobody has, or that a series has left.
bool Filler::isFree(const Place& place, const CellBlock& block)
{
    const auto& sheet = openSheet(place.range.getSheet());
    const auto isIn = [&](const Area& area, const Place& other) {
        return other.range.prefix == place.range.prefix &&
               std::ranges::any_of(other.range.areas, [&](const Area& own) { return own.overlaps(area); });
    };
    for (const auto& area : place.range.resize(getLength(block)).areas) {
        if (area.right > maximumColumn || area.bottom > maximumRow) refuse("the sheet has no room left");
        for (const auto& places : now_)
            if (std::ranges::any_of(places, [&](const Place& other) { return isIn(area, other); }))
                return false;
        if (findForeign(sheet, area)) return false;
    }
    return true;
}

/// The series whose values stand behind all others; nothing when none has cells.
std::optional<std::size_t> Filler::findLast() const
{
    std::optional<std::size_t> last;
    const auto getStart = [&](std::size_t i) {
        const auto& range = now_[i][valuesBlock].range;
        return range.isRow ? range.areas[0].top : range.areas[0].left;
    };
    for (std::size_t i = 0; i < before_.size(); ++i)
        if (before_[i][valuesBlock].isSet() && (!last || getStart(i) >= getStart(*last))) last = i;
    return last;
}

/// A series without cells gets some beside those of the last one, as near as there is room.
void Filler::placeNewSeries(std::vector<SeriesCells>& series)
{
    const auto last = findLast();
    std::int64_t steps = 0;
    for (std::size_t i = 0; i < series.size(); ++i) {
        if (before_[i][valuesBlock].isSet() || !series[i].values) continue;
        const auto blocks = getBlocks(series[i]);
        if (!last || blocks.size() != now_[*last].size())
            refuse("no series has cells beside which a new one could stand");
        if (isShared(now_[*last], valuesBlock)) refuse("all series share their cells");
        const auto areFree = [&](const Places& places) {
            for (std::size_t b = 0; b < blocks.size(); ++b)
                if (places[b].isSet() && !isShared(now_[*last], b) && !isFree(places[b], *blocks[b]))
                    return false;
            return true;
        };
        Places places;
        do {
            if (++steps > farthest) refuse("there is no room for a new series");
            places = placeBeside(now_[*last], steps, blocks);
        } while (!areFree(places));
        now_[i] = std::move(places);
        looks_[i] = looks_[*last];
    }
}

/// What a series had no cells for, such as categories that differ from those of the others, stands before its
/// values, or as near behind them as there is room.
void Filler::placeRest(std::vector<SeriesCells>& series)
{
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || blocks[b]->lines.empty()) continue;
            auto& place = now_[i][b];
            if (place.isSet() && blocks[b]->lines.size() <= place.range.getLineCount()) continue;
            if (b == nameBlock || !now_[i][valuesBlock].isSet())
                refuse("a series has no cells for all of its data");
            place = {};
            place = placeBeside(now_[i][valuesBlock], *blocks[b]);
        }
    }
}

Place Filler::placeBeside(const Place& values, const CellBlock& block)
{
    const bool isRow = values.range.isRow;
    const auto lines = static_cast<std::uint32_t>(block.lines.size());
    auto area = values.range.areas[0];
    const auto start = isRow ? area.top : area.left;
    (isRow ? area.bottom : area.right) = start + lines - 1;
    const CellRange like{values.range.prefix, {area}, false, isRow};
    const auto isFreeAt = [&](std::int64_t steps) {
        return isFree({like.shift(isRow ? steps : 0, isRow ? 0 : steps), {}}, block);
    };
    std::int64_t steps = -std::int64_t{lines};
    if (start < lines || !isFreeAt(steps)) {
        steps = 1;
        while (steps <= farthest && !isFreeAt(steps)) ++steps;
        if (steps > farthest) refuse("there is no room for all data of a series");
    }
    return {like.shift(isRow ? steps : 0, isRow ? 0 : steps), {}};
}

void Filler::resizePlaces(std::vector<SeriesCells>& series)
{
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr) continue;
            auto& place = now_[i][b];
            const auto& lines = blocks[b]->lines;
            // Others may have sizes and error bars that this series does without.
            if (!place.isSet()) continue;
            if (lines.size() < place.range.getLineCount() && place.range.areas.size() == 1 && !lines.empty())
                place.range = place.range.keepLines(lines.size());
            place.range = place.range.resize(getLength(*blocks[b]));
            for (const auto& area : place.range.areas)
                if (area.right > maximumColumn || area.bottom > maximumRow)
                    refuse("the sheet has no room left");
        }
    }
}

void Filler::collectAreas(const std::vector<Places>& places, std::vector<Area> Sheet::*areas)
{
    for (const auto& series : places)
        for (const auto& place : series)
            for (const auto& area : place.range.areas) {
                auto& list = openSheet(place.range.getSheet()).*areas;
                if (std::ranges::find(list, area) == list.end()) list.push_back(area);
            }
}

/// The first cell that holds what is none of the chart's; nothing when all are empty, or were the chart's.
std::optional<Area> Filler::findForeign(const Sheet& sheet, const Area& area)
{
    for (auto row = area.top; row <= area.bottom; ++row)
        for (auto column = area.left; column <= area.right; ++column) {
            const auto isOwn = [&](const Area& old) { return old.contains(row, column); };
            if (!sheet.cells->isEmpty(row, column) && std::ranges::none_of(sheet.before, isOwn))
                return Area{row, column, row, column};
        }
    return {};
}

/// What else stands in the sheet is never overwritten.
void Filler::requireRoom(const Sheet& sheet)
{
    for (const auto& area : sheet.now)
        if (const auto cell = findForeign(sheet, area))
            refuse("cell " + formatArea(*cell) + ", into which the data would grow, is taken");
}

/// Moving rows is safe where nothing refers to them.
bool Filler::canMoveRows(const Sheet& sheet) const
{
    const auto& root = sheet.cells->getXml().getRoot();
    for (const auto* name :
         {"mergeCells", "conditionalFormatting", "dataValidations", "drawing", "hyperlinks", "legacyDrawing"})
        if (root.findChild(name)) return false;
    return sheet.tables.size() <= 1 && names_.empty() && sheets_.size() == 1 && !sheet.cells->hasFormulas();
}

/// What stands below data that grow, such as a remark, moves down with its rows.
void Filler::makeRoom()
{
    for (auto& sheet : sheets_) {
        std::uint32_t oldLast = 0;
        std::uint32_t newLast = 0;
        for (const auto& area : sheet.before) oldLast = std::max(oldLast, area.bottom);
        for (const auto& area : sheet.now) newLast = std::max(newLast, area.bottom);
        if (!sheet.cells || newLast <= oldLast) continue;
        const auto used = sheet.cells->getUsedArea().value_or(Area());
        const bool isTaken = std::ranges::any_of(sheet.now, [&](const Area& area) {
            for (auto row = oldLast + 1; row <= std::min(area.bottom, used.bottom); ++row)
                for (auto column = area.left; column <= area.right; ++column)
                    if (!sheet.cells->isEmpty(row, column)) return true;
            return false;
        });
        const auto by = newLast - oldLast;
        if (!isTaken || !canMoveRows(sheet) || used.bottom + by > maximumRow) continue;
        book_.setPart(sheet.part, sheet.cells->moveRows(oldLast, by));
        sheet.cells = std::make_unique<SheetCells>(book_.getPart(sheet.part), sheet.part, strings_);
    }
}

void Filler::writeBlock(const CellBlock& block, const Place& place, const Place& look, CellStyles& styles)
{
    auto& cells = *openSheet(place.range.getSheet()).cells;
    cells.reserveWrites(place.range.getLength() * place.range.getLineCount());
    const auto visit = [](const CellRange& range, const auto& call) {
        std::size_t index = 0;
        for (const auto& area : range.areas)
            for (std::uint32_t i = 0; i < (range.isRow ? area.getWidth() : area.getHeight()); ++i, ++index)
                for (std::uint32_t line = 0; line < range.getLineCount(); ++line)
                    call(index, line, range.isRow ? area.top + line : area.top + i,
                         range.isRow ? area.left + i : area.left + line);
    };
    std::vector<std::vector<int>> looks(place.range.getLineCount());
    visit(look.range, [&](std::size_t, std::uint32_t line, std::uint32_t row, std::uint32_t column) {
        if (line < looks.size()) looks[line].push_back(cells.getStyle(row, column));
    });
    visit(place.range, [&](std::size_t index, std::uint32_t line, std::uint32_t row, std::uint32_t column) {
        const auto& known = looks[line];
        const int style = known.empty() ? SheetCells::noStyle : known[std::min(index, known.size() - 1)];
        const auto* values = line < block.lines.size() ? &block.lines[line] : nullptr;
        const bool isNumber = values != nullptr && values->isNumber(index);
        cells.write(row, column, values, index,
                    isNumber ? styles.withFormat(style, block.numberFormat) : style);
    });
}

void Filler::write(std::vector<SeriesCells>& series, CellStyles& styles)
{
    std::vector<std::pair<const CellBlock*, const Place*>> done;
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || !now_[i][b].isSet()) continue;
            // Categories that all series share are written once.
            const bool isDone = std::ranges::any_of(done, [&](const auto& other) {
                return *other.second == now_[i][b] && other.first->lines == blocks[b]->lines;
            });
            if (!isDone) writeBlock(*blocks[b], now_[i][b], looks_[i][b], styles);
            if (b == categoriesBlock) done.emplace_back(blocks[b], &now_[i][b]);
        }
    }
}

/// Empties the cells that the chart had and has no longer.
void Filler::clearRest(Sheet& sheet)
{
    for (const auto& area : sheet.before)
        for (auto row = area.top; row <= area.bottom; ++row)
            for (auto column = area.left; column <= area.right; ++column) {
                const auto isKept = [&](const Area& now) { return now.contains(row, column); };
                if (std::ranges::none_of(sheet.now, isKept))
                    sheet.cells->write(row, column, nullptr, 0, sheet.cells->getStyle(row, column));
            }
}

void Filler::requireNoFormulas(const Sheet& sheet) const
{
    if (!sheet.cells->hasFormulas()) return;
    for (const auto* areas : {&sheet.before, &sheet.now})
        for (const auto& area : *areas)
            for (auto row = area.top; row <= area.bottom; ++row)
                for (auto column = area.left; column <= area.right; ++column)
                    if (sheet.cells->hasFormula(row, column) && sheet.cells->willChange(row, column))
                        refuse("cell " + formatArea({row, column, row, column}) + " holds a formula");
}

/// An area that ends where the data ended ends where they end now.
Area follow(const Area& area, const Area& before, const Area& now)
{
    auto followed = area;
    if (!before.contains(area)) return area;
    if (area.bottom == before.bottom && area.getHeight() > 1)
        followed.bottom = std::max(now.bottom, area.top);
    if (area.right == before.right && area.getWidth() > 1) followed.right = std::max(now.right, area.left);
    return followed;
}

Area join(const std::vector<Area>& areas)
{
    auto all = areas.at(0);
    for (const auto& area : areas) all = all.join(area);
    return all;
}

/// The areas of "A1:B7 D1:D7", each followed.
std::string followAreas(const std::string& text, const Area& before, const Area& now)
{
    std::string followed;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find(' ', at), text.size());
        const auto part = text.substr(at, end - at);
        const auto area = parseArea(part);
        const bool isSame = !area || follow(*area, before, now) == *area;
        followed += (followed.empty() ? "" : " ") + (isSame ? part : formatArea(follow(*area, before, now)));
        at = end + 1;
    }
    return followed;
}

/// A defined name that the chart has for cells stands for those that they are now.
void Filler::noteNames()
{
    for (const auto& places : now_)
        for (const auto& place : places)
            for (std::size_t i = 0; i < names_.size(); ++i)
                if (!place.definedName.empty() && !place.isComputed && names_[i].name == place.definedName)
                    newNames_[i] = place.range.format();
}

void Filler::saveSheet(Sheet& sheet)
{
    const bool hasFormulas = sheet.cells->hasFormulas() || book_.hasPart("xl/calcChain.xml");
    Edits behind;
    const auto& xml = sheet.cells->getXml();
    const auto before = join(sheet.before);
    const auto now = join(sheet.now);
    for (const auto child : xml.getRoot().getChildren())
        for (const auto* name : {"ref", "sqref"})
            if (child.getName() == "autoFilter" || child.getName() == "conditionalFormatting")
                if (const auto text = child.getAttribute(name))
                    behind.setAttribute(child, name, followAreas(*text, before, now));
    for (const auto& table : sheet.tables) table.save(book_);
    for (std::size_t i = 0; i < names_.size(); ++i) {
        auto range = parseRange(names_[i].text);
        if (!range || fold(range->getSheet()) != fold(sheet.name) || newNames_.contains(i)) continue;
        auto followed = *range;
        for (auto& area : followed.areas) area = follow(area, before, now);
        if (!(followed == *range)) newNames_[i] = followed.format();
    }
    Edits head;
    auto changed = sheet.cells->apply(head, behind);
    needsCalculation_ = needsCalculation_ || (hasFormulas && changed != book_.getPart(sheet.part));
    sheet.cells.reset();
    book_.setPart(sheet.part, std::move(changed));
}

/// Texts of the chart that no cell of the workbook holds any more are not left in the file. The others keep
/// their positions.
void Filler::emptyLeftStrings()
{
    if (leftStrings_.empty()) return;
    try {
        for (const auto& sheet : sheets_) {
            if (!book_.hasPart(sheet.part)) continue;
            const SheetCells cells(book_.getPart(sheet.part), sheet.part, strings_);
            for (const auto kept : cells.findKeptStrings()) leftStrings_.erase(kept);
        }
    } catch (const std::runtime_error&) {
        // A sheet that cannot be read may hold any of them.
        return;
    }
    for (const auto& relationship : book_.getRelationships(book_.getMainPart())) {
        if (relationship.getKind() != "sharedStrings" || !book_.hasPart(relationship.target)) continue;
        const XmlSpans xml(book_.getPart(relationship.target), relationship.target);
        Edits edits;
        std::uint32_t index = 0;
        for (const auto item : xml.getRoot().getChildren()) {
            if (item.getName() != "si" || !leftStrings_.contains(index++)) continue;
            edits.setInner(item, "<" + std::string(item.getPrefix()) + "t/>");
        }
        if (!edits.isEmpty()) book_.setPart(relationship.target, edits.apply(xml));
    }
}

/// Writes the defined names; formulas elsewhere are computed anew when the workbook is opened.
void Filler::saveMain()
{
    Edits edits;
    for (const auto& [index, text] : newNames_) edits.setInner(names_[index].element, escapeText(text));
    const auto calculation = main_->getRoot().findChild("calcPr");
    if (calculation && needsCalculation_) edits.setAttribute(calculation, "fullCalcOnLoad", "1");
    if (!edits.isEmpty()) book_.setPart(book_.getMainPart(), edits.apply(*main_));
}

/// Gives the chart the references that it is to have; those that still hold stay as they are written.
void Filler::reportReferences(std::vector<SeriesCells>& series) const
{
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || !now_[i][b].definedName.empty()) continue;
            const bool isSame = now_[i][b] == before_[i][b] && parseRange(blocks[b]->reference);
            if (!isSame) blocks[b]->reference = now_[i][b].range.format();
        }
    }
}

std::string Filler::fill(std::vector<SeriesCells>& series, std::vector<SeriesCells> removed)
{
    for (auto& one : series) before_.push_back(resolve(one));
    std::vector<Places> gone;
    for (auto& one : removed) gone.push_back(resolve(one));
    now_ = before_;
    looks_ = before_;
    closeGaps(gone);
    collectAreas(before_, &Sheet::before);
    collectAreas(gone, &Sheet::before);
    placeNewSeries(series);
    placeRest(series);
    resizePlaces(series);
    collectAreas(now_, &Sheet::now);
    noteNames();
    makeRoom();
    CellStyles styles(book_);
    write(series, styles);
    for (auto& sheet : sheets_) {
        if (!sheet.cells || sheet.before.empty()) continue;
        requireRoom(sheet);
        clearRest(sheet);
        sheet.cells->arrangeWrites();
        // A sheet that announces other cells than it has, or a table of other ones, is not ours to mend.
        if (sheet.before == sheet.now && sheet.cells->willStay()) continue;
        requireNoFormulas(sheet);
        const auto tables = sheet.tables;
        for (auto& table : sheet.tables) table.follow(*sheet.cells, sheet.before, sheet.now, tables);
        const auto left = sheet.cells->findLeftStrings();
        leftStrings_.insert(left.begin(), left.end());
        saveSheet(sheet);
    }
    emptyLeftStrings();
    saveMain();
    reportReferences(series);
    return book_.toBytes();
}

}  // namespace

CellValue CellLine::get(std::size_t index) const
{
    if (isNumber(index)) return points_->numbers[index];
    if (index >= points_->texts.size() || points_->texts[index].empty()) return {};
    return points_->texts[index];
}

FilledWorkbook fillWorkbook(const std::string& workbook, std::vector<SeriesCells> series,
                            const std::vector<SeriesCells>& removed)
{
    FilledWorkbook filled{{}, std::move(series), {}};
    try {
        filled.bytes = Filler(workbook).fill(filled.series, removed);
    } catch (const std::runtime_error& error) {
        filled.reason = error.what();
    }
    return filled;
}

}  // namespace quillon::report
