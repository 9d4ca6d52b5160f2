#include "tests/session/host/Desk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/linux/makeLinuxHost.h"
#include "platform/linux/processes/ProcFiles.h"
#include "tests/platform/linux/EventLoop.h"

namespace tolvane::linuxhost::testing {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

}  // namespace

Desk::Desk()
    : host(makeLinuxHost(processEnvironment(), {})),
      folder_(variable("XDG_DATA_HOME")),
      display_(XDisplay::connect(variable("DISPLAY"))) {
    EXPECT_FALSE(folder_.empty()) << "run through tests/session/with-desktop";
    std::filesystem::create_directories(folder_ + "/applications");
    std::filesystem::create_directories(folder_ + "/programs");
}

Desk::~Desk() {
    for (const Pid pid : children_) {
        ::kill(pid, SIGKILL);
        ::waitpid(pid, nullptr, 0);
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder_ + "/applications")) {
        const std::string identifier = entry.path().stem().string();
        for (const Pid pid : pidsOf(identifier)) ::kill(pid, SIGKILL);
        std::filesystem::remove(entry.path());
    }
}

std::string Desk::programOf(const std::string& identifier) const { return folder_ + "/programs/" + identifier; }

std::string Desk::install(const std::string& identifier, const std::string& habit, const std::string& more) const {
    const std::string program = programOf(identifier);
    // A running program keeps its own file.
    std::filesystem::remove(program);
    std::filesystem::copy_file(TOLVANE_TEST_WINDOW, program);
    const std::string path = folder_ + "/applications/" + identifier + ".desktop";
    std::ofstream(path) << "[Desktop Entry]\nType=Application\nName=The " << identifier << "\nExec=" << program << " "
                        << habit << "\n"
                        << more;
    return path;
}

Pid Desk::execute(const std::string& identifier, const std::string& habit) {
    const std::string program = programOf(identifier);
    const Pid pid = ::fork();
    if (pid == 0) {
        ::setsid();
        ::execl(program.c_str(), program.c_str(), habit.c_str(), identifier.c_str(), nullptr);
        ::_exit(127);
    }
    children_.push_back(pid);
    return pid;
}

/// A window manager that has just started occasionally overlooks the first window.
Pid Desk::start(const std::string& identifier, const std::string& habit) {
    if (habit == "windowless" || !display_) return execute(identifier, habit);
    for (int attempt = 0; attempt < 3; ++attempt) {
        const Pid pid = execute(identifier, habit);
        if (runUntil([&] { return windowOf(pid).has_value(); }, std::chrono::seconds(4))) return pid;
        ::kill(pid, SIGKILL);
    }
    ADD_FAILURE() << "no window of " << identifier;
    return 0;
}

bool Desk::isRunning(Pid pid) const {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(file, line);
    const auto end = line.rfind(") ");
    return end != std::string::npos && line[end + 2] != 'Z';
}

bool Desk::hasEnded(Pid pid) {
    return runUntil([&] { return !isRunning(pid); });
}

std::optional<XDisplay::Window> Desk::windowOf(Pid pid) const {
    for (const XDisplay::Window window : display_->windows()) {
        if (display_->owner(window) == pid) return window;
    }
    return std::nullopt;
}

void Desk::activate(Pid pid) const {
    const auto window = windowOf(pid);
    ASSERT_TRUE(window);
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    auto* atom = xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, 18, "_NET_ACTIVE_WINDOW"), nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = *window;
    message.type = atom->atom;
    message.data.data32[0] = 2;
    xcb_send_event(connection, 0, root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    std::free(atom);
    // Once the server answers this, it has passed the message on.
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    xcb_disconnect(connection);
}

std::vector<Pid> Desk::pidsOf(const std::string& identifier) const {
    std::vector<Pid> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        Pid pid = 0;
        if (std::from_chars(name.data(), name.data() + name.size(), pid).ptr != name.data() + name.size()) continue;
        if (executableOf("/proc", pid) == programOf(identifier) && isRunning(pid)) found.push_back(pid);
    }
    return found;
}

}  // namespace tolvane::linuxhost::testing
