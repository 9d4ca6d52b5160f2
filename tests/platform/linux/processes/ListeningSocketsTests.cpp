#include "platform/linux/processes/ListeningSockets.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <set>

#include "tests/platform/linux/Child.h"
#include "tests/platform/linux/Fixtures.h"
#include "tests/platform/linux/MockProc.h"

namespace tolvane::linuxhost {

using testing::Child;
using ::testing::ElementsAre;
using testing::fixture;
using ::testing::IsEmpty;
using testing::MockProc;

namespace {

std::vector<ListeningSocket> parsed(std::string_view table) {
    std::vector<ListeningSocket> sockets;
    appendListening(table, sockets);
    return sockets;
}

std::set<int> portsOf(Pid pid) {
    ProcFiles files("/proc");
    const auto ports = ListeningTables(files).portsOf(pid);
    return {ports.begin(), ports.end()};
}

int bound(int family, std::uint16_t port) {
    const int listener = ::socket(family, SOCK_STREAM, 0);
    const int yes = 1;
    ::setsockopt(listener, SOL_SOCKET, SO_REUSEPORT, &yes, sizeof yes);
    if (family == AF_INET6) ::setsockopt(listener, IPPROTO_IPV6, IPV6_V6ONLY, &yes, sizeof yes);
    sockaddr_in6 six{};
    six.sin6_family = AF_INET6;
    six.sin6_port = htons(port);
    six.sin6_addr = in6addr_loopback;
    sockaddr_in four{};
    four.sin_family = AF_INET;
    four.sin_port = htons(port);
    four.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto* address =
        family == AF_INET ? reinterpret_cast<const sockaddr*>(&four) : reinterpret_cast<const sockaddr*>(&six);
    const socklen_t size = family == AF_INET ? sizeof four : sizeof six;
    if (::bind(listener, address, size) != 0) {
        ::close(listener);
        return -1;
    }
    return listener;
}

/// A port that was free a moment ago.
std::uint16_t freePort() {
    const int listener = bound(AF_INET, 0);
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    ::close(listener);
    return ntohs(address.sin_port);
}

auto listenOn(std::vector<int> families, std::uint16_t port) {
    return [families, port] {
        for (const int family : families) {
            if (const int listener = bound(family, port); listener >= 0) ::listen(listener, 1);
        }
    };
}

}  // namespace

TEST(ListeningSockets, onlyListenersOfATableCount) {
    EXPECT_THAT(parsed(fixture("net-tcp")), ::testing::Contains(ListeningSocket{92301, 38080}));
    for (const auto& socket : parsed(fixture("net-tcp"))) EXPECT_NE(socket.inode, 91851u);
    EXPECT_THAT(parsed(fixture("net-tcp6")), ElementsAre(ListeningSocket{92302, 38081}));
}

TEST(ListeningSockets, linesThatAreSomethingElseAreSkipped) {
    for (const std::string_view table : {"", "\n", "0:", "0: x y 0A", "0: 0100007F:ZZ 0:0 0A 0 0 0 0 0 5",
                                         "0: 0:1F90 0:0 0A a b c 0 0 0", "0: 0:FFFFF 0:0 0A a b c 0 0 7"}) {
        EXPECT_THAT(parsed(table), IsEmpty()) << table;
    }
    EXPECT_THAT(parsed("0: 0:1F90 0:0 0A a b c 0 0 7"), ElementsAre(ListeningSocket{7, 8080}));
}

TEST(ListeningSockets, readTheInodeOfASocketsLink) {
    EXPECT_EQ(socketInode("socket:[23456]"), 23456u);
    for (const std::string_view link : {"pipe:[23456]", "socket:[", "socket:[]", "socket:[12", "/socket:[5]", ""}) {
        EXPECT_FALSE(socketInode(link)) << link;
    }
}

TEST(ListeningSockets, aProcessWithoutReadableDescriptorsHasNoPorts) {
    MockProc proc;
    proc.put({.pid = 20});
    EXPECT_THAT(proc.inspection()->listeningPorts(20), IsEmpty());
    EXPECT_THAT(proc.inspection()->listeningPorts(21), IsEmpty());
}

TEST(ListeningSockets, findAListenerOnEachFamily) {
    const auto port = freePort();
    for (const std::vector<int>& families : {std::vector{AF_INET}, {AF_INET6}, {AF_INET, AF_INET6}}) {
        Child child(listenOn(families, port));
        if (bound(AF_INET6, 0) < 0 && families.front() == AF_INET6) continue;
        EXPECT_EQ(portsOf(child.pid()).count(port), 1u);
    }
}

TEST(ListeningSockets, twoProcessesMayShareAPort) {
    const auto port = freePort();
    Child first(listenOn({AF_INET}, port));
    Child second(listenOn({AF_INET}, port));
    EXPECT_EQ(portsOf(first.pid()).count(port), 1u);
    EXPECT_EQ(portsOf(second.pid()).count(port), 1u);
}

TEST(ListeningSockets, aBoundOrConnectedSocketIsNoListener) {
    const auto port = freePort();
    Child child([port] { bound(AF_INET, port); });
    EXPECT_EQ(portsOf(child.pid()).count(port), 0u);
}

TEST(ListeningSockets, aChildThatInheritedTheListenerHasItsPort) {
    const auto port = freePort();
    const int listener = bound(AF_INET, port);
    ASSERT_GE(listener, 0);
    ::listen(listener, 1);
    const Child child([] {});
    ::close(listener);
    EXPECT_EQ(portsOf(child.pid()).count(port), 1u);
}

TEST(ListeningSockets, ofManyProcessesAreFoundWithOneLookAtTheTables) {
    const auto port = freePort();
    Child first(listenOn({AF_INET}, port));
    Child second(listenOn({AF_INET}, port));
    Child quiet([] {});
    std::map<std::string, int> reads;
    LinuxProcessInspection inspection({.clock = LinuxClockFacts::read(), .observer = [&reads](std::string_view path) {
                                           const auto slash = path.find('/');
                                           if (slash != std::string_view::npos)
                                               ++reads[std::string(path.substr(slash))];
                                       }});
    const auto ports = inspection.listeningPortsOf({first.pid(), second.pid(), quiet.pid(), 1 << 30});
    EXPECT_EQ(ports.size(), 4u);
    EXPECT_THAT(ports.at(first.pid()), ::testing::Contains(port));
    EXPECT_THAT(ports.at(second.pid()), ::testing::Contains(port));
    EXPECT_THAT(ports.at(quiet.pid()), ::testing::Not(::testing::Contains(port)));
    EXPECT_THAT(ports.at(1 << 30), IsEmpty());
    EXPECT_EQ(reads["/net/tcp"], 1);
    EXPECT_EQ(reads["/net/tcp6"], 1);
}

TEST(ListeningSockets, eachNetworkHasItsOwnTables) {
    // In a network namespace of its own, the second process's port belongs to nobody here.
    const auto port = freePort();
    Child here(listenOn({AF_INET}, port));
    Child there([port] {
        if (::unshare(CLONE_NEWNET) == 0) listenOn({AF_INET}, port)();
    });
    ProcFiles files("/proc");
    if (files.readLink(PidPath(there.pid(), "ns/net")) == files.readLink(PidPath(here.pid(), "ns/net"))) {
        GTEST_SKIP() << "this user may not make a network";
    }
    ListeningTables tables(files);
    EXPECT_THAT(tables.portsOf(here.pid()), ElementsAre(port));
}

}  // namespace tolvane::linuxhost
