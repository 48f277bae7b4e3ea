#include "report/package/PartNames.h"

#include <algorithm>
#include <vector>

#include "support/Text.h"

namespace quillon::report {
namespace {

int readHexDigit(char c)
{
    const auto digit = std::string_view("0123456789abcdef").find(toLower(c));
    return digit == std::string_view::npos ? -1 : static_cast<int>(digit);
}

/// Resolves "%20"; everything else stays.
std::string decodePercent(std::string_view text)
{
    std::string decoded;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const int high = text[at] == '%' && at + 2 < text.size() ? readHexDigit(text[at + 1]) : -1;
        const int low = high < 0 ? -1 : readHexDigit(text[at + 2]);
        decoded += low < 0 ? text[at] : static_cast<char>(high * 16 + low);
        if (low >= 0) at += 2;
    }
    return decoded;
}

std::string getFolder(std::string_view name)
{
    const auto slash = name.rfind('/');
    return std::string(slash == std::string_view::npos ? "" : name.substr(0, slash + 1));
}

std::vector<std::string_view> splitPath(std::string_view path)
{
    std::vector<std::string_view> steps;
    while (!path.empty()) {
        const auto end = std::min(path.find('/'), path.size());
        steps.push_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return steps;
}

}  // namespace

std::string encodePartName(std::string_view name)
{
    constexpr std::string_view plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~!$&'()*+,;=:@/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (plain.find(c) != std::string_view::npos)
            encoded += c;
        else
            encoded += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return encoded;
}

std::string makePartKey(std::string_view name)
{
    auto key = toLower(decodePercent(name));
    std::ranges::replace(key, '\\', '/');
    key.erase(0, std::min(key.find_first_not_of('/'), key.size()));
    return key;
}

std::string nameRelationships(std::string_view source)
{
    const auto folder = getFolder(source);
    return folder + "_rels/" + std::string(source.substr(folder.size())) + ".rels";
}

std::string resolveTarget(std::string_view source, std::string_view target)
{
    auto path = decodePercent(target.substr(0, target.find_first_of("#?")));
    std::ranges::replace(path, '\\', '/');
    if (!path.starts_with('/')) path.insert(0, getFolder(source));
    std::vector<std::string_view> steps;
    for (const auto step : splitPath(path)) {
        if (step == ".." && !steps.empty()) steps.pop_back();
        if (!step.empty() && step != "." && step != "..") steps.push_back(step);
    }
    std::string name;
    for (const auto step : steps) name.append(name.empty() ? "" : "/").append(step);
    return name;
}

std::string writeTarget(std::string_view source, std::string_view target)
{
    const auto folder = getFolder(source);
    const auto from = splitPath(folder);
    const auto to = splitPath(target);
    std::size_t shared = 0;
    while (shared < from.size() && shared + 1 < to.size() && from[shared] == to[shared]) ++shared;
    std::string path;
    for (auto i = shared; i < from.size(); ++i) path += "../";
    for (auto i = shared; i < to.size(); ++i) path.append(i > shared ? "/" : "").append(to[i]);
    return encodePartName(path);
}

}  // namespace quillon::report
