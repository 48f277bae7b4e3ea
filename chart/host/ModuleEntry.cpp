#include "chart/host/ModuleEntry.h"

#include <xercesc/util/PlatformUtils.hpp>

#include "chart/host/Namespace.h"
#include "orca/ClassRegistry.h"
#include "support/FeatureService.h"

namespace {

bool isInitialized = false;

const quillon::Feature& chartFeature()
{
    static const quillon::Feature feature("QuillonCharts");
    return feature;
}

}  // namespace

void CVInitialize_shared_quillon_charts()
{
    if (isInitialized || !chartFeature().isOn()) return;
    xercesc::XMLPlatformUtils::Initialize();
    orca::factory::registerOrcaNamespace("quillon.chart", quillon::chart::populateNamespace);
    isInitialized = true;
}
