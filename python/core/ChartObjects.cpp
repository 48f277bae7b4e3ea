#include "python/core/ChartObjects.h"

#include <memory>

#include "chart/model/Chart.h"

namespace quillon::python {
namespace {

/// Visits the tree from the top down; one function for each class that holds others.
class Collector {
 public:
    explicit Collector(std::unordered_set<const void*>& objects) : objects_(objects) {}

    void visit(const chart::Chart& chart)
    {
        if (!add(chart)) return;
        follow(chart.getDataSet());
        follow(chart.getTitle());
        follow(chart.getPlotArea());
    }

    void visit(const chart::DataSet& set)
    {
        if (!add(set)) return;
        for (std::uint64_t i = 0; i < set.getSeriesCount(); ++i) follow(set.getSeries(i));
    }

 private:
    void visit(const chart::DataSeries& series)
    {
        if (!add(series)) return;
        for (const auto& point : series.getPoints()) follow(point);
        follow(series.getFormat());
        follow(series.getLabelFormat());
        follow(series.getFormatOptions());
    }

    void visit(const chart::DataPoint& point)
    {
        if (!add(point)) return;
        follow(point.getFormat());
        follow(point.getLabelFormat());
    }

    void visit(const chart::ShapeFormat& format)
    {
        if (!add(format)) return;
        follow(format.getBorder());
        follow(format.getFill());
        follow(format.getEffects());
    }

    void visit(const chart::Format& format)
    {
        if (add(format)) follow(format.getColor());
    }

    void visit(const chart::Effects& effects)
    {
        if (!add(effects)) return;
        follow(effects.getThreeD());
        follow(effects.getShadow());
        follow(effects.getGlow());
        follow(effects.getSoftEdges());
    }

    void visit(const chart::DataLabelFormat& format)
    {
        if (!add(format)) return;
        follow(format.getShapeFormat());
        follow(format.getEffects());
        follow(format.getOptions());
    }

    void visit(const chart::DataLabelOptions& options)
    {
        if (!add(options)) return;
        follow(options.getShapeFormat());
        follow(options.getEffects());
        follow(options.getContentOptions());
    }

    void visit(const chart::Title& title)
    {
        if (add(title)) follow(title.getText());
    }

    void visit(const chart::Paragraph& paragraph)
    {
        if (!add(paragraph)) return;
        follow(paragraph.getColor());
        for (const auto& run : paragraph.getContent()) follow(run);
    }

    void visit(const chart::Text& run)
    {
        if (add(run)) follow(run.getColor());
    }

    void visit(const chart::AreaBase& area)
    {
        if (add(area)) follow(area.getFormat());
    }

    /// An object that holds no others.
    void visit(const chart::Object& leaf) { add(leaf); }

    template <typename T>
    void follow(const std::shared_ptr<T>& child)
    {
        if (child) visit(*child);
    }

    /// False for an object that was visited before.
    bool add(const orca::factory::full::StdShareable& object) { return objects_.insert(&object).second; }

    std::unordered_set<const void*>& objects_;
};

}  // namespace

void collectObjects(const chart::Object& root, std::unordered_set<const void*>& objects)
{
    Collector collector(objects);
    if (const auto* const chart = dynamic_cast<const chart::Chart*>(&root)) collector.visit(*chart);
    if (const auto* const set = dynamic_cast<const chart::DataSet*>(&root)) collector.visit(*set);
}

}  // namespace quillon::python
