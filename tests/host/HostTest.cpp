#include "tests/host/HostTest.h"

#include <dlfcn.h>

#include <stdexcept>

#include "chart/host/ModuleEntry.h"
#include "support/FeatureService.h"

namespace quillon::chart {

#if QUILLON_SHARED
void (*findModuleEntry())()
{
    void* const library = dlopen("libquillon_charts.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
    void* const entry = dlsym(library, "CVInitialize_shared_quillon_charts");
    if (entry == nullptr) throw std::runtime_error(dlerror());
    return reinterpret_cast<void (*)()>(entry);
}
#else
void (*findModuleEntry())()
{
    return CVInitialize_shared_quillon_charts;
}
#endif

void HostTest::SetUpTestSuite()
{
    setFeature("QuillonCharts", true);
    findModuleEntry()();
}

}  // namespace quillon::chart
