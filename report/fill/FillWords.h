#pragma once

#include "report/fill/FillReport.h"
#include "report/fill/Placeholder.h"

/// The words for what a document holds and what a fill did, as programs read them.
namespace quillon::report {

constexpr const char* nameOf(PlaceholderKind kind)
{
    switch (kind) {
        case PlaceholderKind::Text:
            return "text";
        case PlaceholderKind::Paragraph:
            return "paragraph";
        case PlaceholderKind::Picture:
            return "picture";
        case PlaceholderKind::Table:
            return "table";
    }
    return "";
}

constexpr const char* nameOf(FillReport::Change change)
{
    switch (change) {
        case FillReport::Change::Matched:
            return "matched";
        case FillReport::Change::Renamed:
            return "renamed";
        case FillReport::Change::Added:
            return "added";
        case FillReport::Change::Removed:
            return "removed";
    }
    return "";
}

}  // namespace quillon::report
