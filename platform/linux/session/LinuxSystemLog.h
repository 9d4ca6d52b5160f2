#pragma once

#include <string>

#include "base/files/FileDescriptor.h"
#include "platform/SystemLog.h"

namespace tolvane::linuxhost {

/// Sends each line to the journal, with the program as SYSLOG_IDENTIFIER and the category as TOLVANE_CATEGORY, or to
/// the older system log if there is no journal. Never blocks; drops a line that neither accepts. Any thread.
class LinuxSystemLog : public SystemLog {
public:
    struct Sockets {
        std::string journal = "/run/systemd/journal/socket";
        std::string systemLog = "/dev/log";
    };

    LinuxSystemLog() : LinuxSystemLog(Sockets{}) {}
    explicit LinuxSystemLog(Sockets sockets);

    void info(std::string_view category, std::string_view line) override;

private:
    bool send(const std::string& socket, const std::string& message) const;

    Sockets sockets_;
    FileDescriptor socket_;
};

}  // namespace tolvane::linuxhost
