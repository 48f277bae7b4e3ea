#include "report/package/Zip.h"

#include "report/package/Archive.h"

namespace quillon::report {

std::string zipParts(const std::vector<Part>& parts)
{
    ArchiveWriter archive;
    for (const auto& part : parts)
        archive.add(part.name, part.compress ? pack(part.bytes) : store(part.bytes), firstDay);
    return archive.finish("");
}

}  // namespace quillon::report
