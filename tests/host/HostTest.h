#pragma once

#include <gtest/gtest.h>

#include <string>

#include "orca/BindingRegistry.h"
#include "orca/Script.h"

namespace quillon::chart {

/// The module entry of the library, found as a host finds it: by dlopen and dlsym. A static library is part
/// of the program already. Throws: std::runtime_error when there is none.
void (*findModuleEntry())();

/// The full host name of a chart class.
inline std::string fullName(const std::string& shortName)
{
    return "quillon.chart." + shortName;
}

inline orca::HostArray make(const std::string& shortName,
                            std::initializer_list<orca::HostArray> arguments = {})
{
    return orca::construct(fullName(shortName), arguments);
}

/// Tests that use the registered classes, and leave no binding behind.
class HostTest : public testing::Test {
 protected:
    static void SetUpTestSuite();
    void TearDown() override { EXPECT_EQ(orca::BindingRegistry::size(), 0); }
};

}  // namespace quillon::chart
