#include "platform/macos/kernel/ProcessFacts.h"

#include <algorithm>
#include <array>

#include "base/UTF8.h"
#include "platform/macos/kernel/KernelNumbers.h"

namespace tolvane::machost {

std::optional<BSDInfo> readBSDInfo(const KernelCalls& kernel, Pid pid) {
    BSDInfo info;
    constexpr int size = sizeof info;
    if (kernel.pidInfo(pid, shortBSDInfo, 0, &info, size) != size) return std::nullopt;
    return info;
}

std::optional<std::string> readArgumentsBlock(const KernelCalls& kernel, Pid pid) {
    const std::array<int, 3> name = {kernelName, argumentsName, pid};
    std::size_t size = 0;
    if (kernel.systemValue(name.data(), name.size(), nullptr, &size) != 0 || size < 1) return std::nullopt;
    std::string block(size, '\0');
    if (kernel.systemValue(name.data(), name.size(), block.data(), &size) != 0 || size < 1) return std::nullopt;
    block.resize(std::min(size, block.size()));
    return block;
}

Date startTimeOf(const BSDInfo& info) {
    constexpr double microsecondsPerSecond = 1e6;
    return dateFromUnixSeconds(static_cast<double>(info.startMicroseconds) / microsecondsPerSecond +
                               static_cast<double>(info.startSeconds));
}

Text textOf(std::string_view bytes) {
    bytes = bytes.substr(0, bytes.find('\0'));
    return UTF8::isValid(bytes) ? Text(bytes) : Text(UTF8::repaired(bytes));
}

}  // namespace tolvane::machost
