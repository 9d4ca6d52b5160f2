#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Pid.h"
#include "platform/linux/processes/ProcFiles.h"

namespace tolvane::linuxhost {

struct ListeningSocket {
    std::uint64_t inode = 0;
    int port = 0;

    bool operator==(const ListeningSocket&) const = default;
};

/// The sockets in state LISTEN of /proc/net/tcp or tcp6, whose lines are such as
///
///       0: 0100007F:1F90 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 23456 1 …
///
/// Lines that are something else are skipped.
void appendListening(std::string_view table, std::vector<ListeningSocket>& sockets);

/// The inode of a descriptor's link "socket:[23456]"; nullopt for other descriptors.
std::optional<std::uint64_t> socketInode(std::string_view link);

/// The listening sockets of each network namespace that the processes in question are in. A namespace's tables list all
/// of its connections, so they are read once, at the first process of that namespace.
class ListeningTables {
public:
    explicit ListeningTables(ProcFiles& files) : files_(files) {}

    /// TCP ports on which a descriptor of the process listens, in the process's own network. Any order, repeats
    /// allowed; empty for processes whose descriptors we may not see.
    std::vector<int> portsOf(Pid pid);

private:
    /// By ascending inode.
    using Sockets = std::vector<ListeningSocket>;

    const Sockets& tableFor(Pid pid);
    Sockets readTable(Pid pid);

    ProcFiles& files_;
    /// By the link that names the network namespace.
    std::map<std::string, Sockets, std::less<>> tables_;
};

}  // namespace tolvane::linuxhost
