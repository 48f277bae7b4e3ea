#include "report/workbook/Workbook.h"

#include <sys/mman.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>

#include "chart/model/Chart.h"
#include "report/package/Xml.h"
#include "report/package/Zip.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr auto sheetPart = "xl/worksheets/sheet1.xml";
constexpr auto sharedStringsPart = "xl/sharedStrings.xml";

[[noreturn]] void fail(const std::string& place, lxw_error error)
{
    throw std::runtime_error("The embedded workbook could not be made: " + place + ": " +
                             lxw_strerror(error));
}

void requireCell(lxw_error error, unsigned long row, unsigned long column)
{
    if (error != LXW_NO_ERROR)
        fail("cell " + toUtf8(getColumnLetters(column)) + std::to_string(row + 1), error);
}

/// Numbers have a decimal point on this thread while it lives, whatever the program's locale: the workbook
/// library prints them with printf.
class DecimalPoint {
 public:
    DecimalPoint() : locale_(newlocale(LC_ALL_MASK, "C", nullptr))
    {
        if (locale_ == nullptr) throw std::bad_alloc();
        previous_ = uselocale(locale_);
    }
    ~DecimalPoint()
    {
        uselocale(previous_);
        freelocale(locale_);
    }
    DecimalPoint(const DecimalPoint&) = delete;
    DecimalPoint& operator=(const DecimalPoint&) = delete;

 private:
    locale_t locale_;
    locale_t previous_;
};

/// A file in memory, because the workbook library writes to a named file only.
class MemoryFile {
 public:
    MemoryFile() : descriptor_(memfd_create("workbook", MFD_CLOEXEC))
    {
        if (descriptor_ < 0)
            throw std::runtime_error(std::string("The embedded workbook could not be made: ") +
                                     std::strerror(errno));
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string getName() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

    std::string read() const
    {
        std::string bytes(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
        if (pread(descriptor_, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("The embedded workbook could not be read back.");
        return bytes;
    }

 private:
    int descriptor_;
};

/// The workbook that every chart's is made from. A sheet's data stands in two of its parts; the others are
/// the same for all, and making and compressing them for each chart would take most of the time of a
/// document.
std::string makeTemplate()
{
    const MemoryFile file;
    auto* workbook = workbook_new(file.getName().c_str());
    if (workbook == nullptr) throw std::runtime_error("The embedded workbook could not be made.");
    lxw_doc_properties properties{};
    properties.created = 1;  // A fixed time, so that equal data gives equal bytes.
    workbook_set_properties(workbook, &properties);
    auto* sheet = workbook_add_worksheet(workbook, "Sheet1");
    worksheet_write_string(sheet, 0, 0, "Any text makes a table of shared strings.", nullptr);
    if (const auto error = workbook_close(workbook); error != LXW_NO_ERROR) fail("packing", error);
    return file.read();
}

/// Text that is written to a C stream.
class TextStream {
 public:
    TextStream() : file_(open_memstream(&text_, &size_))
    {
        if (file_ == nullptr) throw std::bad_alloc();
    }
    ~TextStream()
    {
        static_cast<void>(std::fclose(file_));
        std::free(text_);
    }
    TextStream(const TextStream&) = delete;
    TextStream& operator=(const TextStream&) = delete;

    std::FILE* getFile() const { return file_; }
    std::string read() const
    {
        if (std::fflush(file_) != 0 || std::ferror(file_) != 0) throw std::bad_alloc();
        return {text_, size_};
    }

 private:
    char* text_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* file_;
};

/// One worksheet, and the table of its texts.
class Worksheet {
 public:
    Worksheet()
    {
        if (!strings_ || !sheet_) throw std::bad_alloc();
        sheet_->sst = strings_.get();
        worksheet_select(sheet_.get());
    }

    void writeText(unsigned long row, unsigned long column, const std::u16string& text)
    {
        if (text.empty()) return;
        const auto cellText = toUtf8(escapeCharacters(text));
        requireCell(worksheet_write_string(sheet_.get(), static_cast<lxw_row_t>(row),
                                           static_cast<lxw_col_t>(column), cellText.c_str(), nullptr),
                    row, column);
    }

    void writeNumber(unsigned long row, unsigned long column, double number)
    {
        if (!std::isfinite(number)) return;
        requireCell(worksheet_write_number(sheet_.get(), static_cast<lxw_row_t>(row),
                                           static_cast<lxw_col_t>(column), number, nullptr),
                    row, column);
    }

    std::string makeSheetPart() { return assemble(*sheet_, lxw_worksheet_assemble_xml_file); }
    std::string makeSharedStringsPart() { return assemble(*strings_, lxw_sst_assemble_xml_file); }

 private:
    struct Free {
        void operator()(lxw_worksheet* sheet) const { lxw_worksheet_free(sheet); }
        void operator()(lxw_sst* strings) const { lxw_sst_free(strings); }
    };

    template <typename T>
    static std::string assemble(T& part, void (*write)(T*))
    {
        const TextStream stream;
        part.file = stream.getFile();
        write(&part);
        return stream.read();
    }

    std::unique_ptr<lxw_sst, Free> strings_{lxw_sst_new()};
    std::unique_ptr<lxw_worksheet, Free> sheet_{lxw_worksheet_new(nullptr)};
};

void writeSeries(Worksheet& sheet, unsigned long column, const chart::DataSeries& series)
{
    sheet.writeText(0, column, series.getName());
    unsigned long row = 1;
    for (const auto& point : series.getPoints()) sheet.writeNumber(row++, column, point->getValue());
}

}  // namespace

std::u16string getColumnLetters(unsigned long number)
{
    std::u16string letters;
    for (unsigned long rest = number + 1; rest > 0; rest = (rest - 1) / 26)
        letters.insert(letters.begin(), static_cast<char16_t>(u'A' + (rest - 1) % 26));
    return letters;
}

std::string makeWorkbook(const chart::Chart& chart)
{
    const DecimalPoint decimalPoint;
    static const std::string workbook = makeTemplate();
    const auto& dataSet = *chart.getDataSet();
    Worksheet sheet;
    unsigned long row = 1;
    for (const auto& category : dataSet.getCategories()) sheet.writeText(row++, 0, category);
    for (unsigned long i = 0; i < dataSet.getSeriesCount(); ++i)
        writeSeries(sheet, i + 1, *dataSet.getSeries(i));
    return replaceParts(
        workbook, {{sheetPart, sheet.makeSheetPart()}, {sharedStringsPart, sheet.makeSharedStringsPart()}});
}

}  // namespace quillon::report
