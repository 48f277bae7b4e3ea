#pragma once

#include <string>
#include <xercesc/dom/DOMError.hpp>
#include <xercesc/dom/DOMErrorHandler.hpp>

namespace quillon::chart {

/// Keeps the first error of one parse, and stops the parser there.
class ErrorHandler : public xercesc::DOMErrorHandler {
 public:
    bool handleError(const xercesc::DOMError& error) override;

    bool hasError() const { return hasError_; }
    /// The parser's own message.
    const std::u16string& getMessage() const { return message_; }
    /// Decimal texts, counted from 1; empty for an error without a location.
    const std::u16string& getLine() const { return line_; }
    const std::u16string& getColumn() const { return column_; }

 private:
    bool hasError_ = false;
    std::u16string message_;
    std::u16string line_;
    std::u16string column_;
};

}  // namespace quillon::chart
