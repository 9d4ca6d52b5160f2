#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/Host.h"
#include "platform/Windows.h"
#include "tests/fakes/VirtualClock.h"

namespace tolvane::fakes {

/// One process of the fake world; a record that is nullopt cannot be read.
struct FakeProcess {
    Pid pid = 0;
    std::optional<BSDRecord> bsd = BSDRecord{};
    std::optional<UsageRecord> usage = UsageRecord{};
    std::optional<Text> path;
    std::optional<TextList> arguments;
    std::optional<std::vector<std::string>> environment;
    std::optional<MemoryRecord> memory;
    std::optional<Text> cwd;
    std::optional<bool> system;
    std::vector<int> ports;
    /// It ends this long after a polite signal; nullopt means it ignores the signal.
    std::optional<Seconds> endsAfter = Seconds{0};
};

/// One running instance of an application of the fake world.
struct FakeInstance {
    std::string identifier;
    std::optional<std::string> appPath;
    /// It ends this long after a polite request; nullopt means it refuses.
    std::optional<Seconds> quitsAfter = Seconds{0};
    bool terminated = false;
    /// Polite requests, then forced ones.
    int asked = 0;
    int forced = 0;
};

/// The machine that a test describes: the test changes it between calls, the program asks it through the interfaces,
/// and it records what was asked. One world serves every interface of one host.
struct FakeWorld {
    /// In listing order. Adding one leaves references to the others valid.
    std::deque<FakeProcess> processes;
    /// Pids that are still listed although their processes have gone.
    std::vector<Pid> ghosts;
    double nanosPerTick = 1;

    std::optional<std::uint64_t> memorySize;
    std::optional<int> pressureLevel;
    std::optional<SwapUsage> swapUsage;
    std::optional<VirtualMemoryCounters> virtualMemory;
    std::uint64_t pageSize = 4096;
    std::optional<std::vector<CPUTicks>> ticksPerCore = std::vector<CPUTicks>(4);
    int activeCores = 4;
    std::optional<int> efficiencyCores;

    /// Bundle paths of processes that the desktop put into an application's scope, whatever their executable.
    std::map<Pid, std::string> appScopes;
    /// Keyed by bundle path.
    std::map<std::string, std::string, std::less<>> appIDs;
    std::map<std::string, std::string, std::less<>> displayNames;
    std::optional<FrontmostApplication> frontmost;
    bool canTellFrontmost = true;
    /// Pids that refuse a change of priority and every signal.
    std::set<Pid> shielded;
    /// Running applications, including those that have ended.
    std::deque<FakeInstance> instances;
    /// The error with which opening an application fails.
    std::optional<std::string> openError;
    std::vector<Notification> notifications;
    int permissionRequests = 0;
    std::set<Pid> managedPIDs;
    /// Keyed by "path argument argument …"; a command that is not here cannot be run.
    std::map<std::string, std::string, std::less<>> childOutput;
    /// Paths of tools, by name.
    std::map<std::string, std::string, std::less<>> tools = {{"git", "/usr/bin/git"}};
    /// The program announced that it is ending; requests made nevertheless still run.
    bool childrenEnded = false;
    std::vector<DetachedStart> started;
    /// Executables that cannot be started.
    std::set<std::string, std::less<>> unstartable;
    Pid nextStarted = 9000;
    LoginStatus loginStatus = LoginStatus::notRegistered;
    std::optional<std::string> loginError;
    std::string pasteboard;
    /// Keyed by "path key".
    std::map<std::string, std::string, std::less<>> propertyLists;

    std::map<std::string, PreferenceValue, std::less<>> preferences;
    std::string home = "/home/ada";
    /// Nothing can be stored here: a test that needs files sets a folder of its own.
    std::string applicationSupport = "/dev/null/share";
    std::optional<std::string> syncFolder;
    bool windowVisible = false;
    /// The desktop has a place for the program's icon.
    bool hasTray = false;

    /// Every request, in order: "bsdRecord 12", "bundleIdentifier /A.app", "lower 12", "signal 15 12", "run /bin/ls",
    /// "set rulesPaused", "openFile /a".
    std::vector<std::string> asked;
    std::vector<std::string> logLines;

    FakeProcess* find(Pid pid);
    std::size_t timesAsked(std::string_view question) const;
    /// Adds a process of this user that has this name, an executable of the same name and a start long ago.
    FakeProcess& add(Pid pid, std::string_view name);

    std::vector<std::pair<std::uint64_t, std::function<void(std::string)>>> activationObservers;
    std::vector<std::pair<std::uint64_t, std::function<void(std::optional<std::string>)>>> clickObservers;
    std::vector<std::pair<std::uint64_t, std::function<void()>>> pressureObservers;
    std::vector<std::pair<std::uint64_t, std::function<void()>>> windowObservers;
    std::vector<std::pair<std::uint64_t, std::function<void()>>> trayObservers;
    std::uint64_t nextObserver = 0;

    void activate(const std::string& appPath);
    void press();
    void click(const std::optional<std::string>& section);
    void end(Pid pid);
    void showWindow(bool visible);
    /// Makes a tray appear or disappear.
    void setTray(bool present);
};

/// A host whose parts all answer from the world.
struct FakeHost {
    std::shared_ptr<FakeWorld> world = std::make_shared<FakeWorld>();
    Host host;
    /// Owned by `host`.
    VirtualClock* clock = nullptr;
    std::unique_ptr<Windows> windows;

    FakeHost();
};

}  // namespace tolvane::fakes
