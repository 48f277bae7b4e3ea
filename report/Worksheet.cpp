#include "report/Worksheet.h"

#include <sys/mman.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "chart/model/Chart.h"
#include "report/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

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
        for (std::size_t done = 0; done < bytes.size();) {
            const auto count =
                pread(descriptor_, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
            if (count <= 0) throw std::runtime_error("The embedded workbook could not be read back.");
            done += static_cast<std::size_t>(count);
        }
        return bytes;
    }

 private:
    int descriptor_;
};

void require(lxw_error error, const char* what)
{
    if (error != LXW_NO_ERROR)
        throw std::runtime_error(std::string("The embedded workbook could not be made: ") + what + ": " +
                                 lxw_strerror(error));
}

void writeText(lxw_worksheet* sheet, unsigned long row, unsigned long column, const std::u16string& text)
{
    if (text.empty()) return;
    require(worksheet_write_string(sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                   toUtf8(escapeCharacters(text)).c_str(), nullptr),
            "a text");
}

void writeSeries(lxw_worksheet* sheet, unsigned long column, const chart::DataSeries& series)
{
    writeText(sheet, 0, column, series.getName());
    unsigned long row = 1;
    for (const auto& point : series.getPoints()) {
        if (std::isfinite(point->getValue()))
            require(worksheet_write_number(sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column),
                                           point->getValue(), nullptr),
                    "a number");
        ++row;
    }
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
    const MemoryFile file;
    auto* workbook = workbook_new(file.getName().c_str());
    if (workbook == nullptr) throw std::runtime_error("The embedded workbook could not be made.");
    lxw_doc_properties properties{};
    properties.created = 1;  // A fixed time, so that equal data gives equal bytes.
    workbook_set_properties(workbook, &properties);

    auto* sheet = workbook_add_worksheet(workbook, "Sheet1");
    const auto& dataSet = *chart.getDataSet();
    unsigned long row = 1;
    for (const auto& category : dataSet.getCategories()) writeText(sheet, row++, 0, category);
    for (unsigned long i = 0; i < dataSet.getSeriesCount(); ++i)
        writeSeries(sheet, i + 1, *dataSet.getSeries(i));

    require(workbook_close(workbook), "packing");
    return file.read();
}

}  // namespace quillon::report
