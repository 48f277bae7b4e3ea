#include <algorithm>

#include "report/command/JobForm.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"

namespace quillon::report {
namespace {

std::vector<std::string> listCaptions(const JsonNode& blocks)
{
    std::vector<std::string> names;
    for (const auto& block : blocks.items)
        if (const auto* name = block.find("name"); name != nullptr && block.find("caption") != nullptr)
            names.push_back(name->text);
    return names;
}

/// Whether the name shows only when texts are filled in.
bool isOpen(const std::string& name)
{
    return name.find("{{") != std::string::npos;
}

void collectReferences(const JsonNode& node, std::vector<const JsonNode*>& references)
{
    for (const auto& item : node.items) collectReferences(item, references);
    for (const auto& [name, position, value] : node.members) {
        if (name == "reference") references.push_back(&value);
        collectReferences(value, references);
    }
}

}  // namespace

std::vector<Problem> findLostReferences(const JsonNode& job)
{
    const auto* blocks = job.find("blocks");
    if (blocks == nullptr) return {};
    const auto captions = listCaptions(*blocks);
    if (std::ranges::any_of(captions, isOpen)) return {};
    std::vector<const JsonNode*> references;
    collectReferences(job, references);
    std::vector<Problem> problems;
    for (const auto* reference : references) {
        const auto& name = reference->text;
        if (name.empty() || isOpen(name) || std::ranges::find(captions, name) != captions.end()) continue;
        problems.push_back({reference->position, "\"reference\": there is no caption with the name " +
                                                     quoteText(name) + suggestName(name, captions)});
    }
    return problems;
}

}  // namespace quillon::report
