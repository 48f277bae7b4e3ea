#include "tests/host/HostTest.h"

#include <dlfcn.h>

#include <stdexcept>

#include "support/FeatureService.h"

namespace quillon::chart {

void (*findModuleEntry())()
{
    void* const library = dlopen("libquillon_charts.so", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
    void* const entry = dlsym(library, "CVInitialize_shared_quillon_charts");
    if (entry == nullptr) throw std::runtime_error(dlerror());
    return reinterpret_cast<void (*)()>(entry);
}

void HostTest::SetUpTestSuite()
{
    setFeature("QuillonCharts", true);
    findModuleEntry()();
}

}  // namespace quillon::chart
