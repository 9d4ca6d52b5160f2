#include "platform/linux/processes/ListeningSockets.h"

#include <algorithm>
#include <string>

#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

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

/// The sockets among a process's descriptors; false when there are none.
bool readSockets(ProcFiles& files, Pid pid, std::vector<std::uint64_t>& inodes) {
    std::vector<std::string> names;
    if (!files.listNames(PidPath(pid, "fd"), names)) return false;
    for (const std::string& name : names) {
        const auto link = files.readLink(PidPath(pid, "fd/" + name));
        const auto inode = link ? socketInode(*link) : std::nullopt;
        if (inode) inodes.push_back(*inode);
    }
    return !inodes.empty();
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

std::vector<int> ListeningTables::portsOf(Pid pid) {
    std::vector<int> ports;
    std::vector<std::uint64_t> inodes;
    if (!readSockets(files_, pid, inodes)) return ports;
    const Sockets& sockets = tableFor(pid);
    for (const std::uint64_t inode : inodes) {
        const auto found = std::ranges::lower_bound(sockets, inode, {}, &ListeningSocket::inode);
        if (found != sockets.end() && found->inode == inode) ports.push_back(found->port);
    }
    return ports;
}

const ListeningTables::Sockets& ListeningTables::tableFor(Pid pid) {
    const auto link = files_.readLink(PidPath(pid, "ns/net"));
    const std::string network(link.value_or(""));
    const auto known = tables_.find(network);
    return known != tables_.end() ? known->second : tables_.emplace(network, readTable(pid)).first->second;
}

ListeningTables::Sockets ListeningTables::readTable(Pid pid) {
    Sockets sockets;
    std::string text;
    for (const std::string_view family : {"net/tcp", "net/tcp6"}) {
        if (files_.readWhole(PidPath(pid, family), text)) appendListening(text, sockets);
    }
    std::ranges::sort(sockets, {}, &ListeningSocket::inode);
    return sockets;
}

}  // namespace tolvane::linuxhost
