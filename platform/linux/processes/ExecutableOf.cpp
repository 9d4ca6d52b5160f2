#include "platform/linux/processes/ExecutableOf.h"

#include <unistd.h>

#include <array>
#include <climits>

namespace tolvane::linuxhost {

std::string executableOf(const std::string& proc, Pid pid) {
    std::array<char, PATH_MAX> target{};
    const auto length = ::readlink((proc + "/" + std::to_string(pid) + "/exe").c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length)) : std::string();
}

}  // namespace tolvane::linuxhost
