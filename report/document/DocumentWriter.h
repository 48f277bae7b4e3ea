#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <xercesc/dom/DOM.hpp>

#include "report/document/DocumentContent.h"
#include "report/document/Numbering.h"
#include "report/document/Pages.h"
#include "report/document/Styles.h"
#include "report/document/TextMarkup.h"
#include "report/options/Listener.h"
#include "report/package/PackageWriter.h"
#include "report/package/ThemeColors.h"
#include "report/package/Xml.h"

namespace quillon::report {

/// Writes one document: its main part, and the parts of its charts and pictures.
class DocumentWriter {
 public:
    DocumentWriter(const DocumentContent& content, const Listener& listener);
    std::string write();

 private:
    void numberCaptions();
    void add(const TextBlock& block);
    void add(const ListBlock& block);
    void add(const ChartBlock& block);
    void add(const Caption& block);
    void add(const TextTable& block);
    void add(const ImageBlock& block);
    void add(const PageBreakBlock& block);
    void add(const PageSetup& block);
    void add(const ContentsBlock& block);

    xercesc::DOMElement* addParagraph(const char* style);
    /// Keeps what has a caption below on its page.
    void keepWithCaption(xercesc::DOMElement* paragraph);
    void appendChart(xercesc::DOMElement* paragraph, const PlacedChart& placed, std::size_t sharing);
    void addWorkbook(std::string bytes, const std::string& chartPart);
    std::string makeMainPart() const;
    void addStyles();
    void addNumbering();
    void addProperties();
    void addFixedParts();
    ChartOptions fit(const ChartOptions& options, std::size_t sharing) const;
    bool hasContents() const;
    std::string findLabel(std::size_t position) const;
    bool isAboveTable(std::size_t position) const;
    static bool floats(const Block& block);
    static bool isPictured(const Block& block);
    template <typename Wanted>
    bool precedes(std::size_t position) const;

    const DocumentContent& content_;
    const Listener& listener_;
    std::unique_ptr<PartTarget> target_;
    std::string mainPart_;
    Styles styles_;
    std::string_view captionWords_;
    Numbering numbering_;
    DocumentPointer main_;
    xercesc::DOMElement* body_;
    ThemeColors theme_;
    /// By name, "Figure 2".
    std::map<std::string, std::string> captions_;
    /// By label, of the captions so far.
    std::map<std::u16string, unsigned> counts_;
    TextPlace place_;
    Pages pages_;
    std::size_t position_ = 0;
    std::size_t chartsDone_ = 0;
    std::size_t imagesDone_ = 0;
    std::size_t headingsDone_ = 0;
    unsigned bookmarks_ = 0;
};

}  // namespace quillon::report
