#include "platform/macos/kernel/ListeningPorts.h"

#include <algorithm>
#include <optional>
#include <set>

#include "platform/macos/kernel/KernelNumbers.h"

namespace tolvane::machost {

namespace {

std::vector<Descriptor> descriptorsOf(const KernelCalls& kernel, Pid pid) {
    const int room = kernel.pidInfo(pid, listDescriptors, 0, nullptr, 0);
    if (room < 1) return {};
    std::vector<Descriptor> descriptors(static_cast<std::size_t>(room) / sizeof(Descriptor));
    const int size = static_cast<int>(descriptors.size() * sizeof(Descriptor));
    const int filled = kernel.pidInfo(pid, listDescriptors, 0, descriptors.data(), size);
    if (filled < 1) return {};
    descriptors.resize(std::min(descriptors.size(), static_cast<std::size_t>(filled) / sizeof(Descriptor)));
    return descriptors;
}

/// The low half, converted from network order on any machine.
int portOf(std::int32_t inNetworkOrder) {
    const auto bits = static_cast<std::uint32_t>(inNetworkOrder);
    return static_cast<int>(((bits & 0xFFU) << 8U) | ((bits >> 8U) & 0xFFU));
}

std::optional<int> listeningPort(const KernelCalls& kernel, Pid pid, int descriptor) {
    SocketInfo info;
    constexpr int size = sizeof info;
    if (kernel.descriptorInfo(pid, descriptor, socketInfo, &info, size) != size) return std::nullopt;
    if (info.kind != tcpSocket || info.state != listeningState) return std::nullopt;
    return portOf(info.localPort);
}

}  // namespace

std::vector<int> readListeningPorts(const KernelCalls& kernel, Pid pid) {
    std::set<int> ports;
    for (const Descriptor& each : descriptorsOf(kernel, pid)) {
        if (each.type != socketDescriptor) continue;
        if (const auto port = listeningPort(kernel, pid, each.number)) ports.insert(*port);
    }
    return {ports.begin(), ports.end()};
}

}  // namespace tolvane::machost
