#include "report/finish/RingChart.h"

#include "chart/writer/DOCXPieChartWriter.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

class RingChartWriter final : public chart::DOCXPieChartWriter {
 public:
    using DOCXPieChartWriter::DOCXPieChartWriter;

 private:
    void c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const override
    {
        auto* group = appendElement(plotArea, u"c:pieChart");
        appendElement(group, u"c:varyColors", SC_0_);
        appendAllSeries(doc, group);
        c_dLbls(doc, group);
    }
};

}  // namespace

std::shared_ptr<chart::DOCXChartWriter> RingChart::getDOCXWriter() const
{
    return std::make_shared<RingChartWriter>(this);
}

}  // namespace quillon::report
