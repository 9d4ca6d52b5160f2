#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "core/projects/Docker.h"
#include "platform/macos/session/LaunchdServices.h"

/// What the container client and the service list print, of any bytes: every container has its name, and a line more
/// at the end changes nothing of what was read before.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tolvane;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto containers = Docker::parse(text);
    const auto more = Docker::parse(std::string(text) + "\n{\"ID\":\"last\"}\n");
    if (more.size() != containers.size() + 1 || more.back().id != "last") std::abort();
    const auto pids = machost::pidsOfJobs(text);
    auto together = machost::pidsOfJobs(std::string(text) + "\n77\t0\tlast\n");
    if (!together.contains(77) || together.size() < pids.size()) std::abort();
    return 0;
}
