#include "chart/writer/ErrorHandler.h"

#include <xercesc/dom/DOMLocator.hpp>

#include "support/Text.h"

namespace quillon::chart {

bool ErrorHandler::handleError(const xercesc::DOMError& error)
{
    hasError_ = true;
    message_ = error.getMessage();
    if (const auto* location = error.getLocation()) {
        line_ = num2str(static_cast<unsigned long>(location->getLineNumber()));
        column_ = num2str(static_cast<unsigned long>(location->getColumnNumber()));
    }
    return false;
}

}  // namespace quillon::chart
