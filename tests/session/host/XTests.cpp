// Events of a real X server: a tray that comes and goes, windows that are covered.

#include <gmock/gmock.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

#include "platform/linux/session/LinuxTrays.h"
#include "platform/linux/windows/XCovers.h"
#include "tests/platform/linux/EventLoop.h"

namespace tolvane::linuxhost {

namespace {

/// Another client of the same server.
class Neighbour {
public:
    Neighbour() : connection_(xcb_connect(nullptr, nullptr)) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    }
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;
    ~Neighbour() { xcb_disconnect(connection_); }

    /// A square window that no window manager touches.
    std::uint32_t open(std::int16_t left, std::uint16_t side) {
        const std::uint32_t window = xcb_generate_id(connection_);
        const std::uint32_t overridden = 1;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, root_, left, 200, side, side, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overridden);
        xcb_map_window(connection_, window);
        finish();
        return window;
    }
    void close(std::uint32_t window) {
        xcb_destroy_window(connection_, window);
        finish();
    }
    void becomeTray(std::uint32_t window) {
        const auto selection = atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(connection_, window, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = root_;
        message.type = atom("MANAGER");
        message.data.data32[1] = selection;
        message.data.data32[2] = window;
        xcb_send_event(connection_, 0, root_, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&message));
        finish();
    }

private:
    std::uint32_t atom(std::string_view name) {
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply(
            xcb_intern_atom_reply(connection_,
                                  xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
                                  nullptr),
            &std::free);
        return reply->atom;
    }
    /// Returns once the server has processed every request.
    void finish() { std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr)); }

    xcb_connection_t* connection_;
    std::uint32_t root_ = 0;
};

std::shared_ptr<XEvents> events() {
    const char* display = std::getenv("DISPLAY");
    return std::make_shared<XEvents>(display == nullptr ? "" : display);
}

bool drawsThere() { return true; }
bool drawsElsewhere() { return false; }

struct XTest : ::testing::Test {
    Neighbour neighbour;
    int told = 0;
    std::function<void()> count = [this] { ++told; };
};

}  // namespace

TEST_F(XTest, aTrayThatStandsThereIsFound) {
    const auto tray = neighbour.open(0, 10);
    neighbour.becomeTray(tray);
    LinuxTrays trays(nullptr, events(), &drawsThere);
    const auto listening = trays.onChange(count);
    EXPECT_TRUE(trays.present());
    neighbour.close(tray);
    EXPECT_TRUE(runUntil([&] { return !trays.present(); }));
    EXPECT_EQ(told, 1);
}

TEST_F(XTest, aTrayMayComeLateGoAndComeBack) {
    LinuxTrays trays(nullptr, events(), &drawsThere);
    const auto listening = trays.onChange(count);
    EXPECT_FALSE(trays.present());
    for (int round = 0; round < 2; ++round) {
        const auto tray = neighbour.open(0, 10);
        neighbour.becomeTray(tray);
        EXPECT_TRUE(runUntil([&] { return trays.present(); })) << round;
        neighbour.close(tray);
        EXPECT_TRUE(runUntil([&] { return !trays.present(); })) << round;
    }
    EXPECT_EQ(told, 4);
}

TEST_F(XTest, aProgramThatDrawsElsewhereHasNoUseForThisTray) {
    const auto tray = neighbour.open(0, 10);
    neighbour.becomeTray(tray);
    LinuxTrays trays(nullptr, events(), &drawsElsewhere);
    const auto listening = trays.onChange(count);
    EXPECT_FALSE(trays.present());
}

TEST_F(XTest, aWindowThatIsCoveredAltogetherIsTold) {
    XCovers covers(events(), &drawsThere);
    const auto listening = covers.onChange(count);
    const auto window = neighbour.open(300, 100);
    ASSERT_TRUE(covers.watch(window));
    runFor(std::chrono::milliseconds(100));
    EXPECT_FALSE(covers.isCovered(window));
    const auto half = neighbour.open(350, 100);
    runFor(std::chrono::milliseconds(100));
    EXPECT_FALSE(covers.isCovered(window)) << "half of it can be seen";
    EXPECT_EQ(told, 0);
    const auto cover = neighbour.open(290, 200);
    EXPECT_TRUE(runUntil([&] { return covers.isCovered(window); }));
    EXPECT_EQ(told, 1);
    neighbour.close(cover);
    EXPECT_TRUE(runUntil([&] { return !covers.isCovered(window); }));
    EXPECT_EQ(told, 2);
    neighbour.close(half);
}

TEST_F(XTest, newsOfAWindowThatIsForgottenIsDropped) {
    XCovers covers(events(), &drawsThere);
    const auto listening = covers.onChange(count);
    const auto window = neighbour.open(300, 100);
    ASSERT_TRUE(covers.watch(window));
    covers.forget(window);
    neighbour.open(290, 200);
    runFor(std::chrono::milliseconds(150));
    EXPECT_EQ(told, 0);
    EXPECT_FALSE(covers.isCovered(window));
}

TEST_F(XTest, aWindowOfAnotherWindowSystemIsNotWatched) {
    XCovers covers(events(), &drawsElsewhere);
    EXPECT_FALSE(covers.watch(neighbour.open(300, 100)));
}

TEST_F(XTest, aWindowThatIsGoneAlreadyIsNoHarm) {
    XCovers covers(events(), &drawsThere);
    const auto window = neighbour.open(300, 100);
    neighbour.close(window);
    covers.watch(window);
    runFor(std::chrono::milliseconds(100));
    const auto next = neighbour.open(300, 100);
    EXPECT_TRUE(covers.watch(next));
}

}  // namespace tolvane::linuxhost
