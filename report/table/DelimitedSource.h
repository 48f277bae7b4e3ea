#pragma once

#include <memory>

#include "report/table/InputFile.h"
#include "report/table/Rows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// The rows of a text file whose cells are parted by commas, semicolons, tabs or bars. The file is read block
/// by block, each time anew; `progress` hears of the bytes.
class DelimitedSource : public RowSource {
 public:
    /// Throws: std::runtime_error for an unknown encoding; as Decoder.
    DelimitedSource(std::shared_ptr<InputFile> file, const TableOptions& options,
                    InputFile::Progress progress);

    /// Throws: std::runtime_error that names the line: bytes that are not in the encoding, an open quote, a
    /// cell or a row beyond all bounds.
    void read(const Handler& handler) override;

 private:
    std::shared_ptr<InputFile> file_;
    std::string encoding_;
    InputFile::Progress progress_;
    /// Lines to leave out: those that the author names, and a line "sep=;".
    std::size_t skippedLines_ = 0;
    char delimiter_ = ',';
    bool isChecked_ = false;
};

}  // namespace quillon::report
