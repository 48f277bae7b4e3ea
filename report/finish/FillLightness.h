#pragma once

#include <xercesc/dom/DOM.hpp>

#include "report/finish/TextBody.h"
#include "report/package/ThemeColors.h"

namespace quillon::report {

/// Black or white: what is read better on the fill, an a:solidFill, a:gradFill or a:pattFill.
TextColor chooseTextColor(const xercesc::DOMElement* fill, const ThemeColors& theme);

}  // namespace quillon::report
