#include "platform/macos/kernel/ListeningPorts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "tests/platform/macos/FakeKernel.h"

namespace tolvane::machost {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacListeningPortsTest : public ::testing::Test {
protected:
    std::vector<int> ports() { return readListeningPorts(kernel_.calls, 42); }

    FakeKernel kernel_;
    FakeMacProcess& process_ = kernel_.add(42, "node");
};

TEST_F(MacListeningPortsTest, portsComeAscendingFromNetworkOrder) {
    process_.sockets = {listener(5, 8080), listener(3, 443), listener(9, 65535)};
    EXPECT_THAT(ports(), ElementsAre(443, 8080, 65535));
}

TEST_F(MacListeningPortsTest, onePortOnBothFamiliesComesOnce) {
    process_.sockets = {listener(5, 3000), listener(6, 3000)};
    EXPECT_THAT(ports(), ElementsAre(3000));
}

TEST_F(MacListeningPortsTest, bitsAboveThePortAreNotRead) {
    process_.sockets = {listener(5, 3000)};
    process_.sockets[0].info.localPort |= 0x7F010000;
    EXPECT_THAT(ports(), ElementsAre(3000));
}

TEST_F(MacListeningPortsTest, whatIsNoListeningTcpSocketIsPassedOver) {
    process_.sockets = {listener(3, 1), listener(4, 2), listener(5, 3), listener(6, 4)};
    process_.sockets[0].descriptor.type = 1;
    process_.sockets[1].info.kind = 1;
    process_.sockets[2].info.state = 4;
    EXPECT_THAT(ports(), ElementsAre(4));
}

TEST_F(MacListeningPortsTest, descriptorsThatAreNoSocketsAreNotAskedFor) {
    process_.sockets = {listener(3, 1)};
    process_.sockets[0].descriptor.type = 1;
    kernel_.calls.descriptorInfo = [](Pid, int, int, void*, int) {
        ADD_FAILURE();
        return 0;
    };
    EXPECT_THAT(ports(), IsEmpty());
}

TEST_F(MacListeningPortsTest, aRecordOfAnotherLengthIsPassedOver) {
    process_.sockets = {listener(3, 80)};
    for (const int length : {-1, 0, 791, 793}) {
        kernel_.calls.descriptorInfo = [&](Pid pid, int number, int flavour, void* buffer, int size) {
            EXPECT_EQ(pid, 42);
            EXPECT_EQ(number, 3);
            EXPECT_EQ(flavour, 3);
            EXPECT_EQ(size, 792);
            std::memcpy(buffer, &process_.sockets[0].info, sizeof(SocketInfo));
            return length;
        };
        EXPECT_THAT(ports(), IsEmpty()) << length;
    }
}

TEST_F(MacListeningPortsTest, noSizeAndNoListGiveNoPorts) {
    for (const int result : {0, -1}) {
        kernel_.calls.pidInfo = [result](Pid, int, std::uint64_t, void*, int) { return result; };
        EXPECT_THAT(ports(), IsEmpty());
        kernel_.calls.pidInfo = [result](Pid, int, std::uint64_t, void* buffer, int) {
            return buffer == nullptr ? 80 : result;
        };
        EXPECT_THAT(ports(), IsEmpty());
    }
}

TEST_F(MacListeningPortsTest, aListThatGrewBetweenTheCallsStaysWithinItsRoom) {
    process_.sockets = {listener(3, 80), listener(4, 81)};
    kernel_.calls.pidInfo = [this](Pid, int, std::uint64_t, void* buffer, int size) {
        if (buffer == nullptr) return 8;
        EXPECT_EQ(size, 8);
        std::memcpy(buffer, &process_.sockets[0].descriptor, 8);
        return 16;
    };
    EXPECT_THAT(ports(), ElementsAre(80));
}

TEST_F(MacListeningPortsTest, aListThatShrankIsReadAsFarAsItGoes) {
    process_.sockets = {listener(3, 80), listener(4, 81)};
    kernel_.calls.pidInfo = [this](Pid, int, std::uint64_t, void* buffer, int) {
        if (buffer == nullptr) return 800;
        std::memcpy(buffer, &process_.sockets[1].descriptor, 8);
        return 12;
    };
    EXPECT_THAT(ports(), ElementsAre(81));
}

}  // namespace
}  // namespace tolvane::machost
