#include <dlfcn.h>
#include <expat.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <atomic>
#include <thread>

#include "report/fill/Template.h"
#include "support/Export.h"
#include "tests/report/fill/TestTemplates.h"

namespace {

/// How often something was unpacked, and parsed, in this process.
std::atomic<int> unpacked = 0;
std::atomic<int> parsed = 0;

template <typename Function>
Function findNext(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// These stand before the functions of the libraries, and call them.

QUILLON_EXPORT int inflate(z_streamp stream, int flush)
{
    ++unpacked;
    static const auto next = findNext<decltype(&inflate)>("inflate");
    return next(stream, flush);
}

QUILLON_EXPORT XML_Status XML_Parse(XML_Parser parser, const char* text, int size, int isLast)
{
    ++parsed;
    static const auto next = findNext<decltype(&XML_Parse)>("XML_Parse");
    return next(parser, text, size, isLast);
}

namespace quillon::report {
namespace {

struct Reads {
    int unpacked;
    int parsed;
    bool operator==(const Reads& other) const = default;
};

template <typename Work>
Reads countReads(const Work& work)
{
    const Reads before{unpacked, parsed};
    work();
    return {unpacked - before.unpacked, parsed - before.parsed};
}

std::ostream& operator<<(std::ostream& out, const Reads& reads)
{
    return out << reads.unpacked << " unpacked, " << reads.parsed << " parsed";
}

/// Two charts, one of which is to be found by its title, and texts.
Template makeReport(bool hasOwnAltTexts = true)
{
    Document document;
    document.addParagraph("In {{month}}, {{who}} sold {{what}}.");
    for (const auto* title : {"Sales", "Costs"}) {
        const auto chart = makeChart<chart::ColumnChart>();
        chart->setTitle(chart::Title::create(toUtf16(title)));
        document.addChart(chart, {.altText = hasOwnAltTexts ? "A chart" : ""});
    }
    return Template(document.toBytes());
}

/// Other numbers each time, and all that a fill may have to look at in a workbook: new categories and series,
/// formats of numbers, a text that goes.
std::string fillAndSave(Template document, int time)
{
    const auto data = makeData({"Jan", "New " + std::to_string(time), "Mar"},
                               {{"North", {1, 2, gap}}, {"New", {4, 5.0 + time, 6}}, {"More", {7, 8, 9}}});
    document.fill("Sales", data, {.numberFormat = "0.00"});
    for (const auto* name : {"month", "who", "what"}) document.replace(name, "text");
    static_cast<void>(document.getPlaceholders());
    return document.toBytes();
}

TEST(Reading, WhatATemplateSaysIsReadOnce)
{
    const auto opened = makeReport();
    EXPECT_GT(countReads([&] { fillAndSave(opened, 1); }).parsed, 0);
    EXPECT_EQ(countReads([&] { fillAndSave(opened, 2); }), (Reads{0, 0}));
}

TEST(Reading, CopiesOnSeveralThreadsReadOnceTogether)
{
    const auto alone = makeReport();
    const auto once = countReads([&] { fillAndSave(alone, 0); });
    const auto opened = makeReport();
    constexpr int count = 8;
    std::vector<std::string> made(count);
    const auto together = countReads([&] {
        std::vector<std::thread> threads;
        for (int i = 0; i < count; ++i)
            threads.emplace_back([&, i] { made[static_cast<std::size_t>(i)] = fillAndSave(opened, i); });
        for (auto& thread : threads) thread.join();
    });
    EXPECT_EQ(together, once);
    for (int i = 0; i < count; ++i) EXPECT_EQ(made[static_cast<std::size_t>(i)], fillAndSave(alone, i)) << i;
}

TEST(Reading, TextsAndChartsAreFilledInAnyOrder)
{
    // Alternative texts that were made of the data stand in the same part as texts.
    const auto opened = makeReport(false);
    const auto fill = [](Template& document) {
        document.fill("Sales", makeData({"Jan", "Feb"}, {{"North", {7, 9}}}));
    };
    auto between = opened;
    between.replace("month", "May");
    fill(between);
    between.replace("who", "we");
    auto before = opened;
    fill(before);
    before.replace("who", "we");
    before.replace("month", "May");
    EXPECT_EQ(between.getPackage().getPart("word/document.xml"),
              before.getPackage().getPart("word/document.xml"));
    EXPECT_NE(before.getPackage().getPart("word/document.xml").find("In May, we sold"), std::string::npos);
    EXPECT_NE(before.getCharts()[0].altText, opened.getCharts()[0].altText);
}

}  // namespace
}  // namespace quillon::report
