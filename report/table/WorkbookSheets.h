#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <orcus/spreadsheet/factory.hpp>
#include <orcus/spreadsheet/styles.hpp>
#include <orcus/string_pool.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "report/table/Rows.h"

namespace quillon::report {

namespace orcus_sheet = orcus::spreadsheet;

/// Texts that the cells of a workbook share, as orcus hands them over.
class SharedTexts : public orcus_sheet::iface::import_shared_strings {
 public:
    const std::string& getText(std::size_t index) const;

    std::size_t append(std::string_view text) override;
    std::size_t add(std::string_view text) override { return append(text); }
    void append_segment(std::string_view text) override { segments_ += text; }
    std::size_t commit_segments() override;

    // How a part of a text looks does not matter here.
    void set_segment_font(std::size_t /*index*/) override {}
    void set_segment_bold(bool /*on*/) override {}
    void set_segment_italic(bool /*on*/) override {}
    void set_segment_font_name(std::string_view /*name*/) override {}
    void set_segment_font_size(double /*points*/) override {}
    void set_segment_font_color(orcus_sheet::color_elem_t /*a*/, orcus_sheet::color_elem_t /*r*/,
                                orcus_sheet::color_elem_t /*g*/, orcus_sheet::color_elem_t /*b*/) override
    {
    }

 private:
    std::deque<std::string> texts_;
    std::string segments_;
};

/// A cell of a sheet that holds something, at a 0-based place.
struct SheetCell {
    std::int32_t row;
    std::int32_t column;
    CellKind kind;
    /// Of a text, its position among the shared ones.
    double value;
};

/// The cells of a sheet, as orcus hands them over; those of a sheet that nobody asked for are let go.
class Sheet : public orcus_sheet::iface::import_sheet, private orcus_sheet::iface::import_formula {
 public:
    Sheet(std::string name, bool isWanted, SharedTexts& texts)
        : name_(std::move(name)), isWanted_(isWanted), texts_(texts)
    {
    }

    const std::string& getName() const { return name_; }
    /// Sorted by row, then column; one for each place.
    const std::vector<SheetCell>& sortCells();
    /// The position of a cell's format; 0 where it has none.
    std::size_t getFormat(std::int32_t row, std::int32_t column) const;

    import_formula* get_formula() override { return this; }
    void set_auto(int row, int column, std::string_view text) override;
    void set_string(int row, int column, orcus_sheet::string_id_t index) override;
    void set_value(int row, int column, double value) override;
    void set_bool(int row, int column, bool value) override;
    void set_date_time(int row, int column, int year, int month, int day, int hour, int minute,
                       double second) override;
    void set_format(int row, int column, std::size_t format) override;
    void set_format(int firstRow, int firstColumn, int lastRow, int lastColumn, std::size_t format) override;
    void fill_down_cells(int row, int column, int count) override;
    orcus_sheet::range_size_t get_sheet_size() const override { return {1'048'576, 16'384}; }

 private:
    struct FormatRange {
        std::int32_t firstRow, firstColumn, lastRow, lastColumn;
        std::size_t format;
    };

    void add(int row, int column, CellKind kind, double value);
    void requireRoom(std::size_t count) const;

    // Of a formula, the result counts that the workbook keeps beside it.
    void set_position(int row, int column) override;
    void set_formula(orcus_sheet::formula_grammar_t /*grammar*/, std::string_view /*text*/) override {}
    void set_shared_formula_index(std::size_t /*index*/) override {}
    void set_result_string(std::string_view text) override;
    void set_result_value(double value) override;
    void set_result_bool(bool value) override;
    void set_result_empty() override {}
    void commit() override {}

    std::string name_;
    bool isWanted_;
    SharedTexts& texts_;
    std::vector<SheetCell> cells_;
    std::map<std::pair<std::int32_t, std::int32_t>, std::size_t> formats_;
    std::vector<FormatRange> formatRanges_;
    int formulaRow_ = 0;
    int formulaColumn_ = 0;
};

/// What orcus hands a workbook over to.
class SheetCollector : public orcus_sheet::iface::import_factory,
                       private orcus_sheet::iface::import_global_settings {
 public:
    /// `wanted` names a sheet, or "#2"; empty: the first.
    explicit SheetCollector(std::string wanted) : wanted_(std::move(wanted)), importStyles_(styles_, pool_) {}

    const std::deque<Sheet>& getSheets() const { return sheets_; }
    /// The sheet asked for; null: there is none.
    Sheet* findWanted();
    const SharedTexts& getTexts() const { return texts_; }
    /// The number format at a position among the formats of cells: "0.0%". Empty: General.
    std::string getNumberFormat(std::size_t cellFormat) const;
    /// Days between the workbook's day 0 and 30 December 1899.
    int getFirstDay() const { return firstDay_; }

    import_global_settings* get_global_settings() override { return this; }
    orcus_sheet::iface::import_shared_strings* get_shared_strings() override { return &texts_; }
    orcus_sheet::iface::import_styles* get_styles() override { return &importStyles_; }
    orcus_sheet::iface::import_sheet* append_sheet(int index, std::string_view name) override;
    orcus_sheet::iface::import_sheet* get_sheet(std::string_view name) override;
    orcus_sheet::iface::import_sheet* get_sheet(int index) override;
    void finalize() override {}

 private:
    bool isWanted(std::size_t index, std::string_view name) const;

    void set_origin_date(int year, int month, int day) override;
    void set_default_formula_grammar(orcus_sheet::formula_grammar_t /*grammar*/) override {}
    orcus_sheet::formula_grammar_t get_default_formula_grammar() const override
    {
        return orcus_sheet::formula_grammar_t::unknown;
    }
    void set_character_set(orcus::character_set_t /*set*/) override {}

    std::string wanted_;
    SharedTexts texts_;
    std::deque<Sheet> sheets_;
    orcus_sheet::styles styles_;
    orcus::string_pool pool_;
    orcus_sheet::import_styles importStyles_;
    int firstDay_ = 0;
};

}  // namespace quillon::report
