// Makes a chart by names alone, and writes what the library makes of it: the registry that the library fills
// must be the one that this program asks.
#include <iostream>

#include "chart/host/ModuleEntry.h"
#include "chart/model/Chart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "orca/Script.h"
#include "support/FeatureService.h"

int main()
try {
    quillon::setFeature("QuillonCharts", true);
    CVInitialize_shared_quillon_charts();
    const auto chart = orca::construct("quillon.chart.PieChart");
    orca::set(chart, "DataSet", orca::construct("quillon.chart.DataSet"));
    auto* const implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core");
    auto* const document = implementation->createDocument();
    chart.getNative<quillon::chart::Chart>()->getDOCXWriter()->createChartDOMDocContent(document);
    std::cout << orca::classOf(chart).getName() << ' '
              << document->getElementsByTagName(u"c:pieChart")->getLength() << '\n';
    document->release();
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
