#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "report/options/Enumerations.h"
#include "report/options/Options.h"

/// From a member of ChartOptions to the form, the choices and the value of its option.
namespace quillon::report {

template <typename T>
struct OptionalOf {
    using Type = T;
    static constexpr bool isOptional = false;
};
template <typename T>
struct OptionalOf<std::optional<T>> {
    using Type = T;
    static constexpr bool isOptional = true;
};
template <typename T>
struct ListOf {
    using Type = T;
    static constexpr bool isList = false;
};
template <typename T>
struct ListOf<std::vector<T>> {
    using Type = T;
    static constexpr bool isList = true;
};

template <auto Member>
using MemberType = std::remove_cvref_t<decltype(std::declval<ChartOptions>().*Member)>;
/// The type of one value: of an optional, or of the items of a list.
template <auto Member>
using ItemType = typename ListOf<typename OptionalOf<MemberType<Member>>::Type>::Type;

template <auto Member>
constexpr OptionForm formOf()
{
    using Item = ItemType<Member>;
    constexpr bool isList = ListOf<MemberType<Member>>::isList;
    if constexpr (std::is_same_v<Item, bool>) return OptionForm::Flag;
    if constexpr (std::is_same_v<Item, double>) return OptionForm::Number;
    if constexpr (std::is_same_v<Item, std::pair<std::string, std::string>>) return OptionForm::TextPairs;
    if constexpr (std::is_enum_v<Item>) return isList ? OptionForm::Choices : OptionForm::Choice;
    if constexpr (std::is_same_v<Item, std::string>) return isList ? OptionForm::Texts : OptionForm::Text;
    return OptionForm::Integer;
}

template <typename Value>
constexpr auto takeTexts(const char* EnumRow<Value>::*member)
{
    std::array<const char*, rowsOf<Value>().size()> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = rowsOf<Value>()[i].*member;
    return texts;
}
template <typename Value>
constexpr auto choiceNames = takeTexts<Value>(&EnumRow<Value>::name);
template <typename Value>
constexpr auto choiceMeanings = takeTexts<Value>(&EnumRow<Value>::meaning);

template <auto Member>
constexpr std::span<const char* const> choicesOf()
{
    if constexpr (std::is_enum_v<ItemType<Member>>)
        return choiceNames<ItemType<Member>>;
    else
        return {};
}
template <auto Member>
constexpr std::span<const char* const> meaningsOf()
{
    if constexpr (std::is_enum_v<ItemType<Member>>)
        return choiceMeanings<ItemType<Member>>;
    else
        return {};
}

template <typename Item>
auto writeItem(const Item& item)
{
    if constexpr (std::is_enum_v<Item>)
        return std::string(findRow(rowsOf<Item>(), item).name);
    else if constexpr (std::is_same_v<Item, bool> || !std::is_arithmetic_v<Item>)
        return item;
    else
        return static_cast<double>(item);
}

template <auto Member>
OptionValue getMember(const ChartOptions& options)
{
    const auto& member = options.*Member;
    if constexpr (OptionalOf<MemberType<Member>>::isOptional) {
        if (!member) return {};
        return writeItem(*member);
    } else if constexpr (ListOf<MemberType<Member>>::isList) {
        std::vector<decltype(writeItem(member.front()))> items;
        items.reserve(member.size());
        for (const auto& item : member) items.push_back(writeItem(item));
        return items;
    } else {
        return writeItem(member);
    }
}

template <typename Item, typename Value>
Item readItem(const Value& value)
{
    if constexpr (std::is_enum_v<Item>)
        return findRowOf(rowsOf<Item>(), value)->value;
    else
        return static_cast<Item>(value);
}

template <auto Member>
void setMember(ChartOptions& options, const OptionValue& value)
{
    using Item = ItemType<Member>;
    auto& member = options.*Member;
    if constexpr (ListOf<MemberType<Member>>::isList) {
        using Stored = std::conditional_t<std::is_enum_v<Item>, std::string, Item>;
        member.clear();
        for (const auto& item : std::get<std::vector<Stored>>(value)) member.push_back(readItem<Item>(item));
    } else if constexpr (std::is_same_v<Item, bool>) {
        member = std::get<bool>(value);
    } else if constexpr (std::is_arithmetic_v<Item>) {
        member = readItem<Item>(std::get<double>(value));
    } else {
        member = readItem<Item>(std::get<std::string>(value));
    }
}

}  // namespace quillon::report
