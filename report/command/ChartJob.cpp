#include "report/command/ChartJob.h"

namespace quillon::report {
namespace {

std::string trim(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

}  // namespace

std::vector<std::string> splitList(const std::string& text)
{
    std::vector<std::string> items(1);
    int depth = 0;
    for (const char c : text) {
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (c == ',' && depth <= 0)
            items.emplace_back();
        else
            items.back() += c;
    }
    for (auto& item : items) item = trim(item);
    return items;
}

}  // namespace quillon::report
