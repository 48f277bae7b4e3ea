#pragma once

#include "support/Export.h"

/// The entry of the library: the host calls it when it has loaded the library, to make the chart classes
/// known. It does so once; with the feature "QuillonCharts" off it does nothing, and a later call asks again.
/// Throws: what the host throws when it refuses the classes; a later call tries again.
extern "C" QUILLON_EXPORT void CVInitialize_shared_quillon_charts();
