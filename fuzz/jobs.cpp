#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/TemporaryFile.h"
#include "report/command/JobFile.h"

// Job files, of any bytes.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    static const TemporaryFile file(".json");
    const auto& path = file.write(std::string(reinterpret_cast<const char*>(data), size));
    isAccepted([&] {
        require(quillon::report::readJob(path).tree.is(quillon::report::JsonNode::Kind::Object),
                "a job that is not an object");
    });
    return 0;
}
