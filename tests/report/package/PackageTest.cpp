#include "report/package/Package.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <barrier>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <tuple>

#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"
#include "report/package/Zip.h"
#include "tests/ThrownText.h"
#include "tests/report/TestDocuments.h"
#include "tests/report/package/RawZip.h"

namespace quillon::report {
namespace {

constexpr auto contentTypes =
    "<Types xmlns='http://schemas.openxmlformats.org/package/2006/content-types'>"
    "<Default Extension='RELS' ContentType='application/vnd.openxmlformats-package.relationships+xml'/>"
    "<Default Extension='xml' ContentType='application/xml'/>"
    "<Override PartName='/word/Document.xml' "
    "ContentType='application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml'/></"
    "Types>";
constexpr auto rootRelationships =
    "<Relationships xmlns='http://schemas.openxmlformats.org/package/2006/relationships'><Relationship "
    "Id='a' "
    "Type='http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument' "
    "Target='/word/document.xml'/></Relationships>";
constexpr auto documentRelationships =
    "<r:Relationships xmlns:r='http://schemas.openxmlformats.org/package/2006/relationships'>"
    "<r:Relationship Id='rId1' Type='http://x/chart' Target='../word/./Charts/My%20chart.xml#top'/>"
    "<r:Relationship Id='rId2' Type='http://x/chart' Target='/WORD/charts/my chart.xml'/>"
    "<r:Relationship Id='x' Type='http://x/oleObject' Target='file:///D:/a%20b.xlsx' TargetMode='External'/>"
    "<r:Relationship Id='up' Type='http://x/image' Target='../../../etc/passwd'/></r:Relationships>";

std::vector<RawEntry> makeEntries()
{
    return {{.name = "word/"},
            {.name = "word/document.xml", .content = "<w/>", .hasDescriptor = true},
            {.name = "[Content_Types].xml", .content = contentTypes, .extra = std::string("XX\2\0ab", 6)},
            {.name = "_rels/.rels", .content = rootRelationships, .isWide = true},
            {.name = "word\\_rels\\document.xml.rels", .content = documentRelationships},
            {.name = "word/charts/my chart.xml", .content = "<c/>", .hasDescriptor = true, .isWide = true},
            {.name = "word/media/logo.png", .content = "\x89PNG"}};
}

std::string makePackage(const std::vector<RawEntry>& more = {})
{
    auto entries = makeEntries();
    entries.insert(entries.end(), more.begin(), more.end());
    return RawZip(entries, "a comment").getBytes();
}

/// What a reader of zip files finds out about an entry without unpacking it.
struct EntryFacts {
    std::string name;
    std::string packed;
    std::string extra;
    std::time_t time;
    std::uint32_t attributes;
    std::string comment;
    bool operator==(const EntryFacts&) const = default;
};

EntryFacts readFacts(zip_t* archive, zip_uint64_t index)
{
    EntryFacts facts{};
    zip_stat_t status;
    zip_stat_index(archive, index, 0, &status);
    facts.name = status.name;
    facts.time = status.mtime;
    facts.packed.resize(status.comp_size);
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(
        zip_fopen_index(archive, index, ZIP_FL_COMPRESSED), zip_fclose);
    if (zip_fread(file.get(), facts.packed.data(), facts.packed.size()) < 0) facts.packed = "unreadable";
    const auto extraCount = zip_file_extra_fields_count(archive, index, ZIP_FL_CENTRAL);
    for (int i = 0; i < extraCount; ++i) {
        zip_uint16_t size = 0;
        const auto* field = zip_file_extra_field_get(archive, index, static_cast<zip_uint16_t>(i), nullptr,
                                                     &size, ZIP_FL_CENTRAL);
        facts.extra.append(reinterpret_cast<const char*>(field), size);
    }
    zip_uint8_t system = 0;
    zip_file_get_external_attributes(archive, index, 0, &system, &facts.attributes);
    zip_uint32_t size = 0;
    const auto* comment = zip_file_get_comment(archive, index, &size, 0);
    facts.comment.assign(comment == nullptr ? "" : comment, size);
    return facts;
}

std::vector<EntryFacts> readFacts(const std::string& package)
{
    zip_error_t error;
    auto* source = zip_source_buffer_create(package.data(), package.size(), 0, &error);
    const std::unique_ptr<zip_t, decltype(&zip_discard)> archive(
        zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error), zip_discard);
    std::vector<EntryFacts> facts;
    if (!archive) throw std::runtime_error(zip_error_strerror(&error));
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive.get(), 0); ++i)
        facts.push_back(readFacts(archive.get(), static_cast<zip_uint64_t>(i)));
    return facts;
}

void expectUntouched(const std::string& before, const std::string& after, const std::string& changedPart)
{
    const auto old = readFacts(before);
    const auto now = readFacts(after);
    ASSERT_EQ(old.size(), now.size());
    for (std::size_t i = 0; i < old.size(); ++i) {
        EXPECT_EQ(old[i].name, now[i].name);
        if (old[i].name == changedPart)
            EXPECT_EQ(old[i].time, now[i].time);
        else
            EXPECT_TRUE(old[i] == now[i]) << old[i].name;
    }
}

TEST(Package, KeepsEveryEntryThatIsNotChanged)
{
    const auto bytes = makePackage();
    Package package(bytes);
    EXPECT_EQ(package.toBytes(), bytes);
    package.setPart("/Word/DOCUMENT.xml", "<w>changed</w>");
    const auto changed = package.toBytes();
    expectUntouched(bytes, changed, "word/document.xml");
    EXPECT_EQ(readPart(changed, "word/document.xml"), "<w>changed</w>");
    // What stands behind the content of an entry, and in no directory, is copied with it.
    const auto name = bytes.find("word/charts/my chart.xml");
    const auto record = bytes.substr(name, bytes.find("PK\x03\x04", name) - name);
    EXPECT_NE(record.find("PK\x07\x08"), std::string::npos);
    EXPECT_NE(changed.find(record), std::string::npos);
    EXPECT_EQ(Package(changed).getPart("word/media/logo.png"), "\x89PNG");
    package.setPart("word/document.xml", "<w/>");
    EXPECT_EQ(package.toBytes(), bytes);
}

TEST(Package, CopiesGoTheirOwnWays)
{
    const Package original(makePackage());
    auto copy = original;
    copy.setPart("word/document.xml", "<w>copy</w>");
    auto copyOfCopy = copy;
    copyOfCopy.removePart("word/media/logo.png");
    EXPECT_EQ(original.getPart("word/document.xml"), "<w/>");
    EXPECT_EQ(original.toBytes(), makePackage());
    EXPECT_TRUE(copy.hasPart("word/media/logo.png"));
    EXPECT_EQ(copyOfCopy.getPart("word/document.xml"), "<w>copy</w>");
}

TEST(Package, CopiesAreWrittenOnSeveralThreads)
{
    const Package original(makePackage());
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([copy = original, i, &right]() mutable {
            const auto content = copy.getPart("word/charts/my chart.xml") + std::to_string(i);
            copy.setPart("word/document.xml", content);
            right += Package(copy.toBytes()).getPart("word/document.xml") == content;
        });
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(right, 8);
}

TEST(Package, APartIsUnpackedOnceForAllThreads)
{
    const std::string large(std::size_t{4} << 20, 'x');
    for (int round = 0; round < 10; ++round) {
        const Package original(makePackage({{.name = "part", .content = large}}));
        std::array<const char*, 4> seen{};
        std::barrier together(static_cast<std::ptrdiff_t>(seen.size()));
        std::vector<std::thread> threads;
        for (auto& bytes : seen)
            threads.emplace_back([&, copy = original] {
                together.arrive_and_wait();
                bytes = copy.getPart("part").data();
            });
        for (auto& thread : threads) thread.join();
        EXPECT_EQ(original.getPart("part"), large);
        for (const auto* bytes : seen)
            EXPECT_EQ(static_cast<const void*>(bytes), original.getPart("part").data());
    }
}

TEST(Package, PartsComeAndGo)
{
    Package package(makePackage());
    const auto name = package.findFreeName("word/charts/chart", ".xml");
    EXPECT_EQ(name, "word/charts/chart1.xml");
    package.addPart(name, "<c/>", "application/chart+xml");
    EXPECT_EQ(package.findFreeName("word/CHARTS/chart", ".xml"), "word/CHARTS/chart2.xml");
    EXPECT_EQ(package.addRelationship("word/document.xml", "chart", name), "rId3");
    EXPECT_EQ(package.addRelationship(name, "package", "word/embeddings/my data.xlsx"), "rId1");
    EXPECT_EQ(thrownText([&] { package.addPart("Word/Charts/CHART1.xml", "", "x"); }),
              "The file has a part \"Word/Charts/CHART1.xml\" already.");

    Package reopened(package.toBytes());
    EXPECT_EQ(reopened.getContentType(name), "application/chart+xml");
    EXPECT_EQ(reopened.getRelationships("word/document.xml").back().target, name);
    const auto rows = reopened.getRelationships(name);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].target, "word/embeddings/my data.xlsx");
    EXPECT_EQ(rows[0].type, "http://schemas.openxmlformats.org/officeDocument/2006/relationships/package");
    EXPECT_NE(reopened.getPart("word/charts/_rels/chart1.xml.rels").find("\"../embeddings/my%20data.xlsx\""),
              std::string::npos);

    reopened.removeRelationships("word/document.xml", [](const auto& row) { return row.id == "rId3"; });
    reopened.removePart(name);
    const Package removed(reopened.toBytes());
    for (const auto& part : removed.getPartNames()) EXPECT_EQ(part.find("chart1"), std::string::npos) << part;
    EXPECT_EQ(removed.getPart("[Content_Types].xml"), contentTypes);
    EXPECT_EQ(removed.getPart("word/_rels/document.xml.rels"), documentRelationships);
}

TEST(Package, TakesAPartThatWasPackedPieceByPiece)
{
    std::string content;
    Packer packer;
    for (int i = 0; i < 40; ++i) {
        const auto piece = std::string(static_cast<std::size_t>(i * i), 'x') + std::to_string(i * 7919);
        packer.append(piece);
        content += piece;
    }
    Package package(makePackage());
    const auto packed = packer.finish();
    EXPECT_EQ(thrownText([&] { package.setPart("word/gone.xml", packed); }),
              "The file has no part \"word/gone.xml\".");
    package.setPart("word/document.xml", packed);
    EXPECT_EQ(Package(package.toBytes()).getPart("word/document.xml"), content);
    EXPECT_EQ(package.getPart("word/document.xml"), content);
}

TEST(Package, RelationshipsLeadToPartsHoweverTheyAreSpelled)
{
    Package package(makePackage());
    EXPECT_EQ(package.getMainPart(), "word/document.xml");
    const auto rows = package.getRelationships("word/document.xml");
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(package.getPart(rows[0].target), "<c/>");
    EXPECT_EQ(package.getPart(rows[1].target), "<c/>");
    EXPECT_EQ(rows[1].getKind(), "chart");
    EXPECT_EQ(std::tuple(rows[2].isExternal, rows[2].target), std::tuple(true, "file:///D:/a%20b.xlsx"));
    EXPECT_EQ(rows[3].target, "etc/passwd");

    package.retarget("word/document.xml", "x", "package", "word/embeddings/new.xlsx");
    const auto row = package.getRelationships("word/document.xml")[2];
    EXPECT_EQ(std::tuple(row.isExternal, row.target, row.getKind()),
              std::tuple(false, "word/embeddings/new.xlsx", "package"));
    EXPECT_EQ(thrownText([&] { package.retarget("word/document.xml", "rId9", "package", "x"); }),
              "There is no relationship \"rId9\".");
}

TEST(Package, ContentTypesAreOfThePartOrOfItsExtension)
{
    Package package(makePackage());
    EXPECT_EQ(package.getContentType("word/_rels/document.xml.rels"),
              "application/vnd.openxmlformats-package.relationships+xml");
    EXPECT_EQ(package.getContentType("word/charts/my chart.xml"), "application/xml");
    EXPECT_EQ(package.getContentType("word/media/logo.png"), "");
    package.requireDocument();
    package.setContentType("word/document.xml",
                           "application/vnd.ms-word.template.macroEnabledTemplate.main+xml");
    package.requireDocument();
    package.setContentType("word/document.xml",
                           "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml");
    EXPECT_EQ(thrownText([&] { package.requireDocument(); }),
              "The file is a workbook; expected a word-processing document (.docx, .docm, .dotx or .dotm).");
}

TEST(Package, SeesTheDialectAndTheSignature)
{
    EXPECT_FALSE(Package(makePackage()).isStrict());
    EXPECT_FALSE(Package(makePackage()).isSigned());
    EXPECT_TRUE(Package(makePackage({{.name = "_xmlsignatures/sig1.xml", .content = "<s/>"}})).isSigned());
    auto entries = makeEntries();
    auto& root = entries[3].content;
    const std::string transitional = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    root.replace(root.find(transitional), transitional.size(),
                 "http://purl.oclc.org/ooxml/officeDocument/relationships");
    Package strict(RawZip(entries).getBytes());
    EXPECT_TRUE(strict.isStrict());
    strict.addRelationship("word/document.xml", "chart", "word/charts/my chart.xml");
    EXPECT_EQ(strict.getRelationships("word/document.xml").back().type,
              "http://purl.oclc.org/ooxml/officeDocument/relationships/chart");
}

std::string makeBinaryFile(const std::string& stream)
{
    std::string bytes = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
    for (const char c : stream) bytes += {c, '\0'};
    return bytes;
}

TEST(Package, SaysWhatAFileIsInstead)
{
    const auto whole = makePackage();
    const std::pair<std::string, std::string> files[] = {
        {"", "The file is empty."},
        {makeBinaryFile("EncryptedPackage"),
         "The file is protected with a password; save a copy without one."},
        {makeBinaryFile("WordDocument"),
         "The file is a document in the old binary format (.doc); save it as .docx first."},
        {makeBinaryFile("Workbook"),
         "The file is in an old binary format; save it in a format of today first."},
        {"{\\rtf1 text}", "The file is in Rich Text Format (.rtf); save it as .docx first."},
        {"\xEF\xBB\xBF<html/>", "The file is one of XML or HTML; save it as .docx first."},
        {"month,North\nJan,1\n",
         "The file is not a document: expected a zip file, as .docx, .docm, .dotx and .dotm are."},
        {whole.substr(0, whole.size() - 60),
         "The file is incomplete: the directory at the end of a zip file is missing."},
        {RawZip(std::vector<RawEntry>{{.name = "a.txt", .content = "x"}}).getBytes(),
         "The file is a zip file, but not a document: it has no [Content_Types].xml."},
        {RawZip(std::vector<RawEntry>{{.name = "[Content_Types].xml", .content = contentTypes}}).getBytes(),
         "The file is a zip file, but not a document: it has no main part."},
        {RawZip(std::vector<RawEntry>{
                    {.name = "mimetype", .content = "application/vnd.oasis.opendocument.text"}})
             .getBytes(),
         "The file is an OpenDocument file; save it as .docx first."},
    };
    for (const auto& [bytes, sentence] : files)
        EXPECT_EQ(thrownText([&b = bytes] { Package package(b); }), sentence);
    EXPECT_EQ(thrownText([] { Package::open("/nowhere/a.docx"); }),
              "/nowhere/a.docx: Cannot read it: No such file or directory.");
    EXPECT_EQ(thrownText([] { Package::open("/tmp"); }), "/tmp: It is a folder.");
}

TEST(Package, RefusesHostileFiles)
{
    const std::string zeros(1000, '\0');
    const std::string refused = "The file is refused: ";
    const std::string damaged = "The file is damaged: ";
    const std::pair<std::vector<RawEntry>, std::string> files[] = {
        {{{.name = "WORD/document.xml"}}, refused + "it has two entries named \"WORD/document.xml\"."},
        {{{.name = "../../evil.xml"}}, refused + "its entry \"../../evil.xml\" leads outside of the file."},
        {{{.name = "word\\..\\evil"}}, refused + "its entry \"word\\..\\evil\" leads outside of the file."},
        {{{.name = "/etc/passwd"}}, refused + "its entry \"/etc/passwd\" leads outside of the file."},
        {{{.name = "bomb", .content = zeros, .announcedSize = 40 << 20, .method = 8}},
         refused + "\"bomb\" unpacks to more than 250 times its size."},
        {{{.name = "big", .content = zeros, .isWide = true, .announcedSize = 1ULL << 40, .method = 8}},
         "The file is too large: \"big\" unpacks to more than 1024 MB."},
        {{{.name = "twice", .announcedOffset = 0}}, damaged + "\"twice\" is not where its directory says."},
        {{{.name = "word/", .announcedOffset = 0}}, refused + "\"word/\" overlaps another entry."},
        {{{.name = "far", .isWide = true, .announcedOffset = UINT64_MAX - 20}},
         damaged + "its directory leads past its end."},
    };
    for (const auto& [entries, sentence] : files)
        EXPECT_EQ(thrownText([&e = entries] { Package package(makePackage(e)); }), sentence);

    const std::pair<RawEntry, std::string> parts[] = {
        {{.name = "part", .content = zeros, .method = 8},
         damaged + "the content of \"part\" is not what was packed."},
        {{.name = "part", .content = zeros, .announcedSize = 999},
         damaged + "the content of \"part\" is not what was packed."},
        {{.name = "part", .content = zeros, .method = 12},
         "\"part\" is packed by method 12; expected stored or deflated."},
        {{.name = "part", .content = zeros, .flags = 1},
         "The file is protected with a password: \"part\" is encrypted; save a copy without one."},
    };
    for (const auto& [entry, sentence] : parts) {
        const Package package(makePackage({entry}));
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(thrownText([&] { package.getPart("part"); }), sentence) << "reading " << i + 1;
    }
    EXPECT_EQ(thrownText([] { Package(makePackage(), {.entryCount = 5}); }),
              refused + "it has 7 entries; expected at most 5.");
    EXPECT_EQ(thrownText([] { Package(makePackage(), {.totalSize = 100}); }),
              "The file is too large: it unpacks to more than 0 MB.");
}

TEST(Package, SurvivesEveryTruncationAndEveryFlippedByte)
{
    const auto whole = makePackage();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        auto flipped = whole;
        flipped[i] = static_cast<char>(~flipped[i]);
        for (const auto& bytes : {whole.substr(0, i), flipped}) try {
                Package package(bytes);
                for (const auto& name : package.getPartNames()) static_cast<void>(package.getPart(name));
                package.setPart("word/document.xml", "<w>x</w>");
                static_cast<void>(package.toBytes());
            } catch (const std::runtime_error&) {
                // A sentence is all that a damaged file may lead to.
            }
    }
}

std::string readWholeFile(const std::filesystem::path& path)
{
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

TEST(Package, KeepsTheSampleDocuments)
{
    const char* folder = std::getenv("QUILLON_SAMPLE_DOCUMENTS");
    if (folder == nullptr) GTEST_SKIP() << "QUILLON_SAMPLE_DOCUMENTS names no folder of documents.";
    std::size_t files = 0;
    std::size_t entries = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        if (!file.path().extension().string().starts_with(".do")) continue;
        const auto bytes = readWholeFile(file.path());
        auto package = Package::open(file.path());
        package.requireDocument();
        EXPECT_EQ(package.toBytes(), bytes) << file.path();
        package.setPart(package.getMainPart(), package.getPart(package.getMainPart()) + "\n");
        expectUntouched(bytes, package.toBytes(), package.getMainPart());
        ++files;
        entries += readFacts(bytes).size();
    }
    std::cout << files << " documents with " << entries << " entries\n";
    EXPECT_GT(files, 0U);
}

}  // namespace
}  // namespace quillon::report
