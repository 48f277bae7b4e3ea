#include "support/FeatureService.h"

#include <cstdlib>
#include <map>
#include <mutex>

namespace quillon {
namespace {

std::mutex mutex;

std::map<std::string, bool>& settings()
{
    static std::map<std::string, bool> result;
    return result;
}

/// Whether the environment names the feature; white space around a name is not part of it.
bool isInEnvironment(const std::string& name)
{
    const char* const variable = std::getenv("QUILLON_FEATURES");
    std::string list = "," + std::string(variable != nullptr ? variable : "") + ",";
    std::erase_if(list, [](char c) { return c == ' ' || c == '\t'; });
    return list.find("," + name + ",") != std::string::npos;
}

}  // namespace

bool Feature::isOn() const
{
    const std::lock_guard lock(mutex);
    const auto setting = settings().find(name_);
    return setting != settings().end() ? setting->second : isInEnvironment(name_);
}

void setFeature(const std::string& name, bool on)
{
    const std::lock_guard lock(mutex);
    settings()[name] = on;
}

}  // namespace quillon
