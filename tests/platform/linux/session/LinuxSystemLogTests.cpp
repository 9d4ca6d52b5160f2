#include "platform/linux/session/LinuxSystemLog.h"

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "tests/platform/linux/TemporaryFolder.h"

namespace tolvane::linuxhost {

using ::testing::HasSubstr;

namespace {

/// A socket in place of the journal's.
class Listener {
public:
    explicit Listener(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy(path, address.sun_path);
        ::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { ::close(socket_); }

    std::string heard() const {
        std::array<char, 4096> bytes{};
        const auto got = ::recv(socket_, bytes.data(), bytes.size(), 0);
        return got < 0 ? "nothing" : std::string(bytes.data(), static_cast<std::size_t>(got));
    }

private:
    int socket_;
};

}  // namespace

TEST(LinuxSystemLog, theJournalGetsFieldsWithTheirLengths) {
    const TemporaryFolder folder;
    const Listener journal(folder.at("journal"));
    LinuxSystemLog log({.journal = folder.at("journal"), .systemLog = folder.at("log")});
    log.info("rules", "one\ntwo");
    const std::string message = journal.heard();
    EXPECT_THAT(message, HasSubstr("PRIORITY=6\n"));
    EXPECT_THAT(message, HasSubstr(std::string("SYSLOG_IDENTIFIER\n\x13\0\0\0\0\0\0\0dev.tolvane.Tolvane\n", 46)));
    EXPECT_THAT(message, HasSubstr(std::string("TOLVANE_CATEGORY\n\x05\0\0\0\0\0\0\0rules\n", 31)));
    EXPECT_THAT(message, HasSubstr(std::string("MESSAGE\n\x07\0\0\0\0\0\0\0one\ntwo\n", 24)));
}

TEST(LinuxSystemLog, withoutAJournalTheSystemLogGetsALine) {
    const TemporaryFolder folder;
    const Listener older(folder.at("log"));
    LinuxSystemLog log({.journal = folder.at("journal"), .systemLog = folder.at("log")});
    log.info("rules", "Stop idle: node quit");
    EXPECT_EQ(older.heard(), "<14>dev.tolvane.Tolvane: rules: Stop idle: node quit");
}

TEST(LinuxSystemLog, withTheJournalTheSystemLogGetsNothing) {
    const TemporaryFolder folder;
    const Listener journal(folder.at("journal"));
    const Listener older(folder.at("log"));
    LinuxSystemLog({.journal = folder.at("journal"), .systemLog = folder.at("log")}).info("rules", "line");
    EXPECT_EQ(older.heard(), "nothing");
}

TEST(LinuxSystemLog, whatNobodyTakesIsDropped) {
    const TemporaryFolder folder;
    LinuxSystemLog log({.journal = folder.at("journal"), .systemLog = folder.at(std::string(200, 'x'))});
    log.info("rules", "line");
    const Listener journal(folder.at("journal"));
    log.info("rules", std::string(std::size_t{8} << 20U, 'x'));
    EXPECT_EQ(journal.heard(), "nothing");
}

TEST(LinuxSystemLog, aFullLogHoldsNobodyUp) {
    const TemporaryFolder folder;
    const Listener journal(folder.at("journal"));
    LinuxSystemLog log({.journal = folder.at("journal"), .systemLog = folder.at("log")});
    for (int line = 0; line < 10'000; ++line) log.info("rules", "line");
    EXPECT_THAT(journal.heard(), HasSubstr("line"));
}

}  // namespace tolvane::linuxhost
