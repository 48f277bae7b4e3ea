#pragma once

#include <string>
#include <vector>

#include "report/fill/FillPlan.h"
#include "report/fill/Look.h"
#include "report/fill/PointFormats.h"
#include "report/package/Edits.h"

namespace quillon::report {

/// Writes a chart part that holds new data. What the data leaves as it is keeps its bytes.
class ChartFiller {
 public:
    /// The arguments outlive it.
    ChartFiller(const FillPlan& plan, const Palette& palette);

    /// WorkbookId: the relationship to the workbook; the part names it from now on.
    std::string write(const std::string& workbookId);

 private:
    void writeGroup(std::size_t group);
    void writeInPlace(const std::vector<const SeriesPlan*>& series);
    void rearrange(const std::vector<XmlElement>& places, const std::vector<const SeriesPlan*>& series);
    void writeSeries(Edits& edits, const SeriesPlan& plan);
    std::string makeSeries(const SeriesPlan& plan);
    FormatChange writeNumberFormat(Edits& edits, const XmlElement& holder) const;
    void writeAxisFormats();
    void writeContent(Edits& edits, const SeriesPlan& plan);
    void takeLook(Edits& edits, const SeriesPlan& plan);
    void writeWaterfall(const SeriesPlan& plan);
    Palette::Color findNextColor(std::uint32_t index);
    void removeEmptyGroups();
    void writeSecondPies(const XmlElement& group);
    void writeLegend();
    void hideAddedParts(const XmlElement& entry);
    std::vector<std::size_t> findLegendPlaces() const;
    void writeTitle();
    void replaceRuns(const XmlElement& rich, const XmlElement& run, const std::string& text);
    void insertTitle(const std::string& text);
    std::string makeTitleText(const XmlElement& sibling, const std::string& text) const;
    void writeWorkbook(const std::string& id);

    const FillPlan& plan_;
    const ChartMarkup& part_;
    const Palette& palette_;
    UniqueIds ids_;
    Edits edits_;
    /// Those that series have, and that the next one is to differ from.
    std::vector<Palette::Color> usedColors_;
};

}  // namespace quillon::report
