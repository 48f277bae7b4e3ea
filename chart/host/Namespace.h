#pragma once

namespace orca {
class COSNamespace;
}

namespace quillon::chart {

/// Adds every chart class to the host's namespace, in the order in which the host lists them.
void populateNamespace(orca::COSNamespace* chartNamespace);

}  // namespace quillon::chart
