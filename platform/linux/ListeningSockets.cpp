#include "platform/linux/ListeningSockets.h"

#include <algorithm>
#include <string>

#include "platform/linux/KernelText.h"
#include "platform/linux/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::string_view listening = "0A";

std::optional<ListeningSocket> listeningSocket(std::string_view line) {
    Scan::word(line);
    auto local = Scan::word(line);
    Scan::word(line);
    if (Scan::word(line) != listening) return std::nullopt;
    for (int skipped = 0; skipped < 5; ++skipped) Scan::word(line);
    const auto inode = Scan::figure(Scan::word(line));
    Scan::take(local, ':');
    const auto port = Scan::figure(local, 16);
    if (!inode || *inode == 0 || !port || *port > 0xffff) return std::nullopt;
    return ListeningSocket{*inode, static_cast<int>(*port)};
}

std::vector<std::uint64_t> socketsOf(ProcFiles& files, Pid pid) {
    std::vector<std::string> names;
    std::vector<std::uint64_t> inodes;
    if (!files.listNames(PidPath(pid, "fd"), names)) return inodes;
    for (const std::string& name : names) {
        const auto link = files.readLink(PidPath(pid, "fd/" + name));
        if (!link) continue;
        if (const auto inode = socketInode(*link)) inodes.push_back(*inode);
    }
    std::ranges::sort(inodes);
    return inodes;
}

}  // namespace

void appendListening(std::string_view table, std::vector<ListeningSocket>& sockets) {
    while (!table.empty()) {
        if (const auto socket = listeningSocket(Scan::take(table, '\n'))) sockets.push_back(*socket);
    }
}

std::optional<std::uint64_t> socketInode(std::string_view link) {
    constexpr std::string_view begin = "socket:[";
    if (!link.starts_with(begin) || !link.ends_with(']')) return std::nullopt;
    return Scan::figure(link.substr(begin.size()));
}

std::vector<int> listeningPorts(ProcFiles& files, Pid pid) {
    const auto inodes = socketsOf(files, pid);
    if (inodes.empty()) return {};
    std::vector<ListeningSocket> sockets;
    std::string table;
    for (const std::string_view family : {"net/tcp", "net/tcp6"}) {
        if (files.readWhole(PidPath(pid, family), table)) appendListening(table, sockets);
    }
    std::vector<int> ports;
    for (const ListeningSocket& socket : sockets) {
        if (std::ranges::binary_search(inodes, socket.inode)) ports.push_back(socket.port);
    }
    return ports;
}

}  // namespace tolvane::linuxhost
