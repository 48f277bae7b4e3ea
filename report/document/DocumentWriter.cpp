#include "report/document/DocumentWriter.h"

#include <algorithm>
#include <stdexcept>

#include "report/document/ChartWriting.h"
#include "report/document/CoreProperties.h"
#include "report/document/FixedParts.h"
#include "report/document/Image.h"
#include "report/document/TableMarkup.h"
#include "report/document/TemplateParts.h"
#include "report/finish/Finishing.h"
#include "report/options/Language.h"
#include "report/options/Length.h"
#include "report/package/Edits.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

DocumentPointer createMainDocument()
{
    auto doc = createDocument();
    auto* root = doc->createElement(u"w:document");
    declareNamespaces(root);
    doc->appendChild(root);
    appendElement(root, u"w:body");
    return doc;
}

std::u16string toNumber(std::size_t number)
{
    return num2str(static_cast<unsigned long>(number));
}

/// What a field of captions counts, which is one word: blanks, and what fields read as their own, become "_".
std::u16string nameSequence(std::u16string label)
{
    constexpr std::u16string_view apart = u" \t\r\n\"\\{}";
    std::ranges::replace_if(
        label, [apart](char16_t c) { return apart.find(c) != std::u16string_view::npos; }, u'_');
    return label;
}

std::string toLength(double emu)
{
    return toUtf8(num2str(emu / emuPerPoint)) + "pt";
}

std::unique_ptr<PartTarget> makeTarget(const std::optional<Package>& look)
{
    if (look) return std::make_unique<PackageExtender>(*look);
    return std::make_unique<PackageWriter>();
}

}  // namespace

Styles makeStyles(const DocumentContent& content)
{
    const auto part = readRelated(content.look, "styles");
    auto styles = part.empty() ? Styles() : Styles(part);
    if (!content.properties.language.empty()) styles.setLanguage(content.properties.language);
    return styles;
}

DocumentWriter::DocumentWriter(const DocumentContent& content, const Listener& listener)
    : content_(content),
      listener_(listener),
      target_(makeTarget(content.look)),
      mainPart_(content.look ? content.look->getMainPart() : "word/document.xml"),
      styles_(makeStyles(content)),
      captionWords_(findLanguage(styles_.getLanguage()).captions),
      numbering_(readRelated(content.look, "numbering")),
      main_(createMainDocument()),
      body_(main_->getDocumentElement()->getFirstElementChild()),
      theme_(content.look ? readTheme(*content.look) : ThemeColors()),
      place_{*target_, styles_, mainPart_, captions_},
      pages_(content, place_)
{
}

std::string DocumentWriter::write()
{
    numberCaptions();
    for (; position_ < content_.blocks.size(); ++position_)
        std::visit([this](const auto& block) { add(block); }, content_.blocks[position_]);
    pages_.endSection(body_);
    addStyles();
    if (numbering_.isUsed()) addNumbering();
    addProperties();
    if (!content_.look) addFixedParts();
    target_->addPart(mainPart_, makeMainPart(), content_type::mainDocument);
    return target_->toBytes();
}

void DocumentWriter::addStyles()
{
    const auto name = content_.look ? findRelated(*content_.look, "styles") : std::string();
    target_->addPart(name.empty() ? "word/styles.xml" : name, styles_.getPart(), content_type::styles);
    if (name.empty()) target_->relate(mainPart_, "styles", "word/styles.xml");
}

void DocumentWriter::addNumbering()
{
    const auto name = content_.look ? findRelated(*content_.look, "numbering") : std::string();
    target_->addPart(name.empty() ? "word/numbering.xml" : name, numbering_.getPart(),
                     content_type::numbering);
    if (name.empty()) target_->relate(mainPart_, "numbering", "word/numbering.xml");
}

void DocumentWriter::addProperties()
{
    const auto& properties = content_.properties;
    const bool saysNothing =
        properties.title.empty() && properties.author.empty() && properties.keywords.empty();
    if (content_.look && saysNothing) return;
    const auto* kind =
        "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
    constexpr auto name = "docProps/core.xml";
    if (!content_.look || !content_.look->hasPart(name)) target_->relate("", kind, name);
    target_->addPart(name, makeCoreProperties(properties), content_type::coreProperties);
}

/// What every new document has.
void DocumentWriter::addFixedParts()
{
    target_->addPart("word/settings.xml", parts::settings, content_type::settings);
    target_->addPart("word/theme/theme1.xml", parts::theme, content_type::theme);
    target_->addPart("docProps/app.xml", parts::extendedProperties, content_type::extendedProperties);
    target_->relate(mainPart_, "settings", "word/settings.xml");
    target_->relate(mainPart_, "theme", "word/theme/theme1.xml");
    target_->relate("", "officeDocument", mainPart_);
    target_->relate("", "extended-properties", "docProps/app.xml");
}

/// References may stand before the caption that they lead to.
void DocumentWriter::numberCaptions()
{
    std::map<std::string, unsigned> counts;
    for (std::size_t i = 0; i < content_.blocks.size(); ++i)
        if (const auto* caption = std::get_if<Caption>(&content_.blocks[i])) {
            const auto label = findLabel(i);
            const auto number = ++counts[label];
            if (!caption->name.empty()) captions_[caption->name] = label + " " + std::to_string(number);
        }
}

/// What the caption at a position counts.
std::string DocumentWriter::findLabel(std::size_t position) const
{
    const auto& label = std::get<Caption>(content_.blocks[position]).label;
    if (!label.empty()) return label;
    return std::string(pickName(captionWords_, isAboveTable(position) ? 1 : 0));
}

/// Whether the caption at a position belongs to the table after it.
bool DocumentWriter::isAboveTable(std::size_t position) const
{
    if (!precedes<TextTable>(position)) return false;
    if (position == 0) return true;
    const auto& before = content_.blocks[position - 1];
    return !isPictured(before) || floats(before);
}

template <typename Wanted>
bool DocumentWriter::precedes(std::size_t position) const
{
    const auto next = position + 1;
    return next < content_.blocks.size() && std::holds_alternative<Wanted>(content_.blocks[next]);
}

DOMElement* DocumentWriter::addParagraph(const char* style)
{
    return appendParagraph(body_, *style == '\0' ? std::u16string() : styles_.use("paragraph", style));
}

void DocumentWriter::keepWithCaption(DOMElement* paragraph)
{
    if (precedes<Caption>(position_)) appendElement(getProperties(paragraph), u"w:keepNext");
}

void DocumentWriter::add(const TextBlock& block)
{
    const auto style = block.headingLevel > 0 ? "heading " + std::to_string(block.headingLevel) : block.style;
    auto* paragraph = addParagraph(style.c_str());
    if (block.headingLevel == 0) return appendRuns(paragraph, block.runs, place_);
    // A table of contents leads here.
    const auto id = toNumber(++bookmarks_);
    const auto name = u"_Toc" + toNumber(++headingsDone_);
    if (hasContents()) startBookmark(paragraph, name, id);
    appendRuns(paragraph, block.runs, place_);
    if (hasContents()) endBookmark(paragraph, id);
}

bool DocumentWriter::hasContents() const
{
    return std::ranges::any_of(
        content_.blocks, [](const auto& block) { return std::holds_alternative<ContentsBlock>(block); });
}

void DocumentWriter::add(const ListBlock& block)
{
    const auto list = toUtf16(numbering_.add(block.kind));
    for (const auto& item : block.items) {
        auto* paragraph = addParagraph("List Paragraph");
        auto* mark = appendElement(getProperties(paragraph), u"w:numPr");
        appendValue(mark, u"w:ilvl", toNumber(item.level));
        appendValue(mark, u"w:numId", list);
        appendRuns(paragraph, item.runs, place_);
    }
}

void DocumentWriter::add(const ChartBlock& block)
{
    auto* paragraph = appendParagraph(body_);
    keepWithCaption(paragraph);
    for (const auto& placed : block.charts) appendChart(paragraph, placed, block.charts.size());
}

/// The size of a chart among `sharing` in a line: the default width is at most its share of the line.
ChartOptions DocumentWriter::fit(const ChartOptions& options, std::size_t sharing) const
{
    static const auto standard = withSize({});
    constexpr double gap = 4 * emuPerPoint;
    const auto count = static_cast<double>(sharing);
    const double share = (static_cast<double>(pages_.getTextWidth()) - gap * (count - 1)) / count;
    const auto width = static_cast<double>(parseLength(standard.width));
    auto fitted = options;
    if (!options.width.empty() || share >= width) return withSize(options);
    fitted.width = toLength(share);
    if (options.height.empty())
        fitted.height = toLength(static_cast<double>(parseLength(standard.height)) * share / width);
    return fitted;
}

void DocumentWriter::appendChart(DOMElement* paragraph, const PlacedChart& placed, std::size_t sharing)
{
    const auto number = chartsDone_ + 1;
    const auto name = target_->findFreeName("word/charts/chart", ".xml");
    const auto id = target_->relate(mainPart_, "chart", name);
    const auto options = fit(placed.options, sharing);
    const ChartContext context{.chart = *placed.chart,
                               .data = placed.data,
                               .options = options,
                               .kind = getKind(*placed.chart, placed.options),
                               .number = number,
                               .relationshipId = id,
                               .listener = listener_,
                               .theme = theme_};
    if (parseLength(options.width) > pages_.getTextWidth())
        context.warn("the chart is wider than the text of its page.");
    auto written = writeChart(main_.get(), context);
    paragraph->appendChild(written.run);
    target_->addPart(name, std::move(written.chart), content_type::chart);
    if (options.workbook) addWorkbook(std::move(written.workbook), name);
    chartsDone_ = number;
    if (listener_.progress) listener_.progress(chartsDone_, content_.chartCount);
}

void DocumentWriter::addWorkbook(std::string bytes, const std::string& chartPart)
{
    const auto name = target_->findFreeName("word/embeddings/data", ".xlsx");
    if (target_->relate(chartPart, "package", name) != workbookRelationshipId)
        throw std::logic_error("A chart part has a relationship before that to its workbook.");
    target_->addPart(name, std::move(bytes), content_type::workbook);
}

void DocumentWriter::add(const Caption& block)
{
    auto* paragraph = addParagraph("caption");
    if (isAboveTable(position_))
        appendElement(getProperties(paragraph), u"w:keepNext");
    else if (position_ > 0 && floats(content_.blocks[position_ - 1]))
        throw std::runtime_error("A chart that floats has no caption; leave out \"float\".");
    const auto label = toUtf16(findLabel(position_));
    const auto id = toNumber(++bookmarks_);
    if (!block.name.empty()) startBookmark(paragraph, nameBookmark(block.name), id);
    appendRun(paragraph, label + u" ");
    appendField(paragraph, u" SEQ " + nameSequence(label) + u" \\* ARABIC ", toNumber(++counts_[label]));
    if (!block.name.empty()) endBookmark(paragraph, id);
    if (!block.text.empty()) appendRun(paragraph, u": " + toUtf16(block.text));
}

bool DocumentWriter::floats(const Block& block)
{
    const auto* charts = std::get_if<ChartBlock>(&block);
    return charts != nullptr && std::any_of(charts->charts.begin(), charts->charts.end(),
                                            [](const auto& placed) { return placed.options.floating; });
}

bool DocumentWriter::isPictured(const Block& block)
{
    return std::holds_alternative<ChartBlock>(block) || std::holds_alternative<ImageBlock>(block);
}

void DocumentWriter::add(const TextTable& block)
{
    appendTable(body_, block, pages_.getTextWidth(), place_);
    // Two tables would become one, and a cell or section cannot end with one.
    appendParagraph(body_);
}

void DocumentWriter::add(const ImageBlock& block)
{
    const auto info = readImageInfo(block.bytes);
    const auto name = target_->findFreeName("word/media/image", std::string(".") + info.type);
    const auto id = target_->relate(mainPart_, "image", name);
    auto* paragraph = appendParagraph(body_);
    keepWithCaption(paragraph);
    const auto number = content_.chartCount + ++imagesDone_;
    appendImage(appendElement(paragraph, u"w:r"), info, block.options,
                {number, toUtf16(id), pages_.getTextWidth()});
    target_->addPart(name, block.bytes, info.contentType);
}

void DocumentWriter::add(const PageBreakBlock& /*block*/)
{
    auto* run = appendElement(appendParagraph(body_), u"w:r");
    appendElement(run, u"w:br")->setAttribute(u"w:type", u"page");
}

void DocumentWriter::add(const PageSetup& block)
{
    if (position_ > 0) {
        auto* last = body_->getLastElementChild();
        const bool isParagraph = last != nullptr && std::u16string_view(last->getTagName()) == u"w:p";
        // Where a field ends LibreOffice does not see the fields of a header.
        const bool endsField = std::holds_alternative<ContentsBlock>(content_.blocks[position_ - 1]);
        pages_.endSection(getProperties(isParagraph && !endsField ? last : appendParagraph(body_)));
    }
    pages_.setUp(block);
}

void DocumentWriter::add(const ContentsBlock& block)
{
    std::size_t number = 0;
    DOMElement* last = nullptr;
    for (const auto& other : content_.blocks) {
        const auto* heading = std::get_if<TextBlock>(&other);
        if (heading == nullptr || heading->headingLevel == 0) continue;
        ++number;
        if (heading->headingLevel > block.levels) continue;
        const bool isFirst = last == nullptr;
        const auto style = "toc " + std::to_string(heading->headingLevel);
        const auto bookmark = u"_Toc" + toNumber(number);
        last = addParagraph(style.c_str());
        setTabStops(last, {{u"right", pages_.getTextWidth() / emuPerTwip, u"dot"}},
                    styles_.getTabStops(style));
        if (isFirst)
            startField(
                last,
                u" TOC \\o \"1-" + toNumber(static_cast<std::size_t>(block.levels)) + u"\" \\h \\z \\u ",
                true);
        auto* link = appendElement(last, u"w:hyperlink");
        link->setAttribute(u"w:anchor", bookmark.c_str());
        for (const auto& run : heading->runs) appendRun(link, toUtf16(run.text));
        appendRun(link, u"\t");
        appendField(link, u" PAGEREF " + bookmark + u" \\h ", {});
    }
    if (last != nullptr) return endField(last);
    if (listener_.warning)
        listener_.warning(
            "The table of contents is left out: the document has no heading of level 1" +
            (block.levels == 1 ? std::string(".") : " to " + std::to_string(block.levels) + "."));
}

std::string DocumentWriter::makeMainPart() const
{
    if (!content_.look) return serialise(main_.get());
    const XmlSpans xml(content_.look->getPart(mainPart_), mainPart_);
    const auto body = xml.getRoot().findChild("body");
    if (!body) throw std::runtime_error("The template has no body.");
    std::string markup;
    for (auto* child = body_->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        markup += serialise(child);
    Edits edits;
    edits.setInner(body, markup);
    for (const auto& [prefix, ns] :
         {std::pair<std::string, Ns>("w", Ns::Word), {"r", Ns::OfficeRelationships}, {"wp", Ns::WordDrawing}})
        if (xml.getRoot().findPrefix(ns) != prefix + ":")
            edits.setAttribute(body, "xmlns:" + prefix, getUri(ns));
    return edits.apply(xml);
}

}  // namespace quillon::report
