// A document with one chart, made from C++.
#include <iostream>

#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"

int main(int argc, char** argv)
try {
    auto data = quillon::chart::DataSet::create(std::vector<std::u16string>{u"Q1", u"Q2", u"Q3"});
    appendSeries(*data, u"North", {1.5, 2.0, 3.25});
    appendSeries(*data, u"South", {2.5, 1.75, 2.0});
    auto chart = quillon::chart::ColumnChart::create();
    chart->setDataSet(data);
    chart->setTitle(quillon::chart::Title::create(u"Revenue"));

    quillon::report::Document document;
    document.addHeading("Sales");
    document.addChart(chart);
    document.save(argc > 1 ? argv[1] : "sales.docx");
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
