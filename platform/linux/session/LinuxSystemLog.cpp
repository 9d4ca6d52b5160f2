#include "platform/linux/session/LinuxSystemLog.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <cstdint>

namespace tolvane::linuxhost {

namespace {

constexpr std::string_view identifier = "dev.tolvane.Tolvane";

/// A length as the journal expects it: 8 bytes, little-endian.
std::string lengthBytes(std::uint64_t length) {
    std::string bytes;
    for (unsigned shift = 0; shift < 64; shift += 8) bytes += static_cast<char>((length >> shift) & 0xffU);
    return bytes;
}

/// The form with a length allows line ends and any other byte.
std::string field(std::string_view name, std::string_view value) {
    return std::string(name) + "\n" + lengthBytes(value.size()) + std::string(value) + "\n";
}

std::string journalMessage(std::string_view category, std::string_view line) {
    return "PRIORITY=6\n" + field("SYSLOG_IDENTIFIER", identifier) + field("TOLVANE_CATEGORY", category) +
           field("MESSAGE", line);
}

/// 14 means: facility user, priority info.
std::string systemLogMessage(std::string_view category, std::string_view line) {
    return "<14>" + std::string(identifier) + ": " + std::string(category) + ": " + std::string(line);
}

}  // namespace

LinuxSystemLog::LinuxSystemLog(Sockets sockets)
    : sockets_(std::move(sockets)), socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}

void LinuxSystemLog::info(std::string_view category, std::string_view line) {
    if (!send(sockets_.journal, journalMessage(category, line)))
        send(sockets_.systemLog, systemLogMessage(category, line));
}

bool LinuxSystemLog::send(const std::string& socket, const std::string& message) const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket.size() >= sizeof address.sun_path) return false;
    std::ranges::copy(socket, address.sun_path);
    const auto* target = reinterpret_cast<const sockaddr*>(&address);
    return ::sendto(socket_.get(), message.data(), message.size(), MSG_NOSIGNAL, target, sizeof address) >= 0;
}

}  // namespace tolvane::linuxhost
