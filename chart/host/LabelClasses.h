#pragma once

#include "chart/host/CosObjectClassInfo.h"
#include "chart/model/DataLabelFormat.h"
#include "orca/EnumClassInfo.h"

/// The small texts at data points.
namespace quillon::chart::mi {

struct CosDataLabelFormat : CosClass<DataLabelFormat> {
    CosDataLabelFormat() : CosClass("How a data label is drawn and what it says.")
    {
        constructor<>();
        property<&DataLabelFormat::getShapeFormat>("ShapeFormat", "Border, fill and effects of the label.");
        property<&DataLabelFormat::getEffects>("Effects", "The visual effects of the label.");
        property<&DataLabelFormat::getOptions>("Options", "What the label says.");
    }
};

struct CosDataLabelOptions : CosClass<DataLabelOptions> {
    CosDataLabelOptions() : CosClass("What a data label says.")
    {
        constructor<>();
        property<&DataLabelOptions::getContentOptions>("ContentOptions",
                                                       "The items that the label contains.");
    }
};

struct CosDataLabelContentOptions : CosClass<DataLabelContentOptions> {
    using Options = DataLabelContentOptions;

    CosDataLabelContentOptions() : CosClass("The items that a data label contains and what separates them.")
    {
        constructor<>();
        property<&Options::getContainsValue, &Options::setContainsValue>(
            "ContainsValue", "Whether the label shows the value.");
        property<&Options::getContainsSeriesName, &Options::setContainsSeriesName>(
            "ContainsSeriesName", "Whether the label shows the name of the series.");
        property<&Options::getContainsCategoryName, &Options::setContainsCategoryName>(
            "ContainsCategoryName", "Whether the label shows the name of the category.");
        property<&Options::getContainsLegendKey, &Options::setContainsLegendKey>(
            "ContainsLegendKey", "Whether the label shows the sign of the series in the legend.");
        property<&Options::getShowLeaderLines, &Options::setShowLeaderLines>(
            "ShowLeaderLines", "Whether a line leads from the label to its point.");
        property<&Options::getSeparator, &Options::setSeparator>("Separator",
                                                                 "What stands between two items.");
    }
};

struct CosDataLabelContentSeparator : orca::factory::EnumClassInfo<DataLabelContentSeparator> {
    using Separator = DataLabelContentSeparator;

    CosDataLabelContentSeparator()
        : EnumClassInfo({"Separator for data label content options",
                         {{"Comma", Separator::Comma},
                          {"Semicolon", Separator::Semicolon},
                          {"Period", Separator::Period},
                          {"NewLine", Separator::NewLine},
                          {"Space", Separator::Space}}})
    {
    }
};

}  // namespace quillon::chart::mi
