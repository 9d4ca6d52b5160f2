#include "tests/fakes/FakeHost.h"

#include <algorithm>

namespace tolvane::fakes {

FakeProcess* FakeWorld::find(Pid pid) {
    const auto found = std::ranges::find(processes, pid, &FakeProcess::pid);
    return found == processes.end() ? nullptr : &*found;
}

std::size_t FakeWorld::timesAsked(std::string_view question) const {
    return static_cast<std::size_t>(std::ranges::count(asked, question));
}

FakeProcess& FakeWorld::add(Pid pid, std::string_view name) {
    FakeProcess process;
    process.pid = pid;
    process.bsd = BSDRecord{.ppid = 1, .uid = 501, .name = name, .startTime = Date{Seconds{790'000'000}}};
    process.path = Text("/opt/" + std::string(name));
    return processes.emplace_back(std::move(process));
}

namespace {

template <typename Observers, typename... Arguments>
void tell(const Observers& observers, const Arguments&... arguments) {
    const auto present = observers;
    for (const auto& [number, observer] : present) observer(arguments...);
}

template <typename Observers, typename Function>
Subscription observe(const std::shared_ptr<FakeWorld>& world, Observers FakeWorld::* observers, Function function) {
    const auto number = ++world->nextObserver;
    (world.get()->*observers).emplace_back(number, std::move(function));
    return Subscription([weak = std::weak_ptr(world), observers, number] {
        if (const auto alive = weak.lock()) {
            std::erase_if(alive.get()->*observers, [&](const auto& each) { return each.first == number; });
        }
    });
}

}  // namespace

void FakeWorld::activate(const std::string& appPath) { tell(activationObservers, appPath); }
void FakeWorld::press() { tell(pressureObservers); }
void FakeWorld::click(const std::optional<std::string>& section) { tell(clickObservers, section); }
void FakeWorld::end(Pid pid) {
    std::erase_if(processes, [pid](const FakeProcess& each) { return each.pid == pid; });
}
void FakeWorld::showWindow(bool visible) {
    windowVisible = visible;
    tell(windowObservers);
}

void FakeWorld::setTray(bool present) {
    hasTray = present;
    tell(trayObservers);
}

namespace {

using World = std::shared_ptr<FakeWorld>;

class Inspection : public ProcessInspection {
public:
    explicit Inspection(World world) : world_(std::move(world)) {}

    double nanosPerTick() const override { return world_->nanosPerTick; }
    std::vector<Pid> allPids() override {
        world_->asked.emplace_back("allPids");
        std::vector<Pid> pids;
        for (const auto& process : world_->processes) pids.push_back(process.pid);
        pids.insert(pids.end(), world_->ghosts.begin(), world_->ghosts.end());
        return pids;
    }
    std::optional<BSDRecord> bsdRecord(Pid pid) override { return ask("bsdRecord", pid, &FakeProcess::bsd); }
    std::optional<UsageRecord> usage(Pid pid) override { return ask("usage", pid, &FakeProcess::usage); }
    std::optional<Text> executablePath(Pid pid) override { return ask("executablePath", pid, &FakeProcess::path); }
    std::optional<TextList> arguments(Pid pid) override { return ask("arguments", pid, &FakeProcess::arguments); }
    std::optional<std::vector<std::string>> environment(Pid pid) override {
        return ask("environment", pid, &FakeProcess::environment);
    }
    std::optional<MemoryRecord> memoryRecord(Pid pid) override {
        return ask("memoryRecord", pid, &FakeProcess::memory);
    }
    std::optional<Text> workingDirectory(Pid pid) override { return ask("workingDirectory", pid, &FakeProcess::cwd); }
    std::optional<bool> belongsToSystem(Pid pid) override { return ask("belongsToSystem", pid, &FakeProcess::system); }
    std::vector<int> listeningPorts(Pid pid) override {
        world_->asked.push_back("listeningPorts " + std::to_string(pid));
        const auto* process = world_->find(pid);
        return process ? process->ports : std::vector<int>{};
    }

private:
    template <typename Value>
    std::optional<Value> ask(const char* question, Pid pid, std::optional<Value> FakeProcess::* field) {
        world_->asked.push_back(question + (" " + std::to_string(pid)));
        const auto* process = world_->find(pid);
        return process ? process->*field : std::nullopt;
    }

    World world_;
};

class Machine : public MachineStatistics {
public:
    explicit Machine(World world) : world_(std::move(world)) {}

    std::optional<std::uint64_t> memorySize() const override { return world_->memorySize; }
    std::optional<int> pressureLevel() const override { return world_->pressureLevel; }
    std::optional<SwapUsage> swapUsage() const override { return world_->swapUsage; }
    std::optional<VirtualMemoryCounters> virtualMemory() const override { return world_->virtualMemory; }
    std::uint64_t pageSize() const override { return world_->pageSize; }
    std::optional<std::vector<CPUTicks>> ticksPerCore() const override { return world_->ticksPerCore; }
    int activeCores() const override { return world_->activeCores; }
    std::optional<int> efficiencyCores() const override { return world_->efficiencyCores; }

private:
    World world_;
};

class Control : public ProcessControl {
public:
    Control(World world, Clock& clock) : world_(std::move(world)), clock_(clock) {}

    bool send(Signal signal, const Incarnation& target) override {
        world_->asked.push_back("signal " + std::to_string(static_cast<int>(signal)) + " " +
                                std::to_string(target.pid));
        if (!isThere(target)) return false;
        const auto delay = signal == Signal::kill ? Seconds{0} : world_->find(target.pid)->endsAfter;
        if (!delay) return true;
        if (*delay <= Seconds{0}) {
            world_->end(target.pid);
        } else {
            endings_.push_back(clock_.after(*delay, Seconds{0}, [world = world_, target] {
                if (isPresent(*world, target)) world->end(target.pid);
            }));
        }
        return true;
    }
    std::optional<Pid> start(const DetachedStart& program) override {
        world_->asked.push_back("start " + program.executable);
        if (world_->unstartable.contains(program.executable)) return std::nullopt;
        world_->started.push_back(program);
        return world_->nextStarted++;
    }
    bool lowerPriority(const Incarnation& process) override { return change("lower ", process); }
    bool restorePriority(const Incarnation& process) override { return change("restore ", process); }

private:
    bool change(const char* what, const Incarnation& target) {
        world_->asked.push_back(what + std::to_string(target.pid));
        return isThere(target);
    }
    bool isThere(const Incarnation& target) const {
        return isPresent(*world_, target) && !world_->shielded.contains(target.pid);
    }
    static bool isPresent(FakeWorld& world, const Incarnation& target) {
        const auto* process = world.find(target.pid);
        return process && process->bsd && process->bsd->startTime == target.startTime;
    }

    World world_;
    Clock& clock_;
    std::vector<Subscription> endings_;
};

/// Refers to the instance by index: the world keeps instances after they end.
class Instance : public RunningApplication {
public:
    Instance(World world, Clock& clock, std::size_t place) : world_(std::move(world)), clock_(clock), place_(place) {}

    void terminate() override {
        auto& self = world_->instances[place_];
        ++self.asked;
        if (!self.quitsAfter) return;
        if (*self.quitsAfter <= Seconds{0}) {
            self.terminated = true;
        } else {
            ending_ = clock_.after(*self.quitsAfter, Seconds{0},
                                   [world = world_, place = place_] { world->instances[place].terminated = true; });
        }
    }
    void forceTerminate() override {
        auto& self = world_->instances[place_];
        ++self.forced;
        self.terminated = true;
    }
    bool isTerminated() const override { return world_->instances[place_].terminated; }
    std::optional<std::string> appPath() const override { return world_->instances[place_].appPath; }

private:
    World world_;
    Clock& clock_;
    std::size_t place_;
    Subscription ending_;
};

class Running : public RunningApplications {
public:
    Running(World world, Clock& clock) : world_(std::move(world)), clock_(clock) {}

    std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view identifier) override {
        world_->asked.push_back("running " + std::string(identifier));
        std::vector<std::shared_ptr<RunningApplication>> found;
        for (std::size_t place = 0; place < world_->instances.size(); ++place) {
            const auto& each = world_->instances[place];
            if (each.identifier != identifier || each.terminated) continue;
            found.push_back(std::make_shared<Instance>(world_, clock_, place));
        }
        return found;
    }
    void openInBackground(const std::string& appPath, Opened opened) override {
        world_->asked.push_back("open " + appPath);
        opened(world_->openError);
    }

private:
    World world_;
    Clock& clock_;
};

class Words : public Notifications {
public:
    explicit Words(World world) : world_(std::move(world)) {}

    void post(const Notification& notification) override { world_->notifications.push_back(notification); }
    void requestPermission() override { ++world_->permissionRequests; }
    Subscription onClick(Clicked clicked) override {
        return observe(world_, &FakeWorld::clickObservers, std::move(clicked));
    }

private:
    World world_;
};

class Services : public ServiceManager {
public:
    explicit Services(World world) : world_(std::move(world)) {}

    std::set<Pid> managedPIDs() override { return world_->managedPIDs; }

private:
    World world_;
};

class Children : public ChildProcesses {
public:
    explicit Children(World world) : world_(std::move(world)) {}

    std::optional<std::string> run(const std::string& path, const std::vector<std::string>& arguments) override {
        std::string command = path;
        for (const auto& argument : arguments) command += " " + argument;
        world_->asked.push_back("run " + command);
        const auto found = world_->childOutput.find(command);
        return found == world_->childOutput.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<std::string> find(std::string_view tool) override {
        const auto found = world_->tools.find(tool);
        return found == world_->tools.end() ? std::nullopt : std::optional(found->second);
    }
    void end() override { world_->childrenEnded = true; }

private:
    World world_;
};

class Login : public LoginItem {
public:
    explicit Login(World world) : world_(std::move(world)) {}

    LoginStatus status() const override { return world_->loginStatus; }
    std::optional<std::string> enroll() override { return change(LoginStatus::enabled); }
    std::optional<std::string> withdraw() override { return change(LoginStatus::notRegistered); }
    void openSettings() override { world_->asked.emplace_back("openSettings"); }

private:
    std::optional<std::string> change(LoginStatus wanted) {
        if (!world_->loginError) world_->loginStatus = wanted;
        return world_->loginError;
    }

    World world_;
};

class Favours : public Desktop {
public:
    explicit Favours(World world) : world_(std::move(world)) {}

    void open(const std::string& path) override { world_->asked.push_back("openFile " + path); }
    void copyText(const std::string& text) override { world_->pasteboard = text; }

private:
    World world_;
};

class Lists : public PropertyLists {
public:
    explicit Lists(World world) : world_(std::move(world)) {}

    std::optional<std::string> text(const std::string& path, std::string_view key) override {
        const auto found = world_->propertyLists.find(path + " " + std::string(key));
        return found == world_->propertyLists.end() ? std::nullopt : std::optional(found->second);
    }

private:
    World world_;
};

class Apps : public Applications {
public:
    explicit Apps(World world) : world_(std::move(world)) {}

    /// Like hosts whose applications are folders: the outermost ".app" that holds the executable.
    std::optional<Text> appPath(Pid pid, std::string_view executable) override {
        world_->asked.push_back("bundlePath " + std::to_string(pid));
        const auto scope = world_->appScopes.find(pid);
        if (scope != world_->appScopes.end()) return Text(scope->second);
        const auto found = executable.find(".app/");
        if (found == std::string_view::npos) return std::nullopt;
        return Text(executable.substr(0, found + 4));
    }
    std::optional<Text> appID(std::string_view appPath) override {
        world_->asked.push_back("bundleIdentifier " + std::string(appPath));
        const auto found = world_->appIDs.find(appPath);
        if (found == world_->appIDs.end()) return std::nullopt;
        return Text(found->second);
    }
    std::string displayName(std::string_view appPath) override {
        world_->asked.push_back("displayName " + std::string(appPath));
        const auto found = world_->displayNames.find(appPath);
        return found == world_->displayNames.end() ? std::string(appPath) : found->second;
    }
    std::string iconName(std::string_view) override { return {}; }

private:
    World world_;
};

class Front : public Frontmost {
public:
    explicit Front(World world) : world_(std::move(world)) {}

    bool canTell() const override { return world_->canTellFrontmost; }
    std::optional<FrontmostApplication> current() const override { return world_->frontmost; }
    Subscription onActivation(std::function<void(std::string)> activated) override {
        return observe(world_, &FakeWorld::activationObservers, std::move(activated));
    }

private:
    World world_;
};

class PressureEvents : public MemoryPressure {
public:
    explicit PressureEvents(World world) : world_(std::move(world)) {}

    Subscription onPressure(std::function<void()> pressed) override {
        return observe(world_, &FakeWorld::pressureObservers, std::move(pressed));
    }

private:
    World world_;
};

class StoredPreferences : public Preferences {
public:
    explicit StoredPreferences(World world) : world_(std::move(world)) {}

    std::optional<PreferenceValue> value(std::string_view key) const override {
        const auto found = world_->preferences.find(key);
        if (found == world_->preferences.end()) return std::nullopt;
        return found->second;
    }
    void set(std::string_view key, PreferenceValue value) override {
        world_->asked.push_back("set " + std::string(key));
        world_->preferences.insert_or_assign(std::string(key), std::move(value));
    }

private:
    World world_;
};

class Places : public Folders {
public:
    explicit Places(World world) : world_(std::move(world)) {}

    std::string home() const override { return world_->home; }
    std::string applicationSupport() const override { return world_->applicationSupport; }
    std::optional<std::string> syncFolder() const override { return world_->syncFolder; }

private:
    World world_;
};

class Log : public SystemLog {
public:
    explicit Log(World world) : world_(std::move(world)) {}

    void info(std::string_view category, std::string_view line) override {
        world_->logLines.push_back(std::string(category) + ": " + std::string(line));
    }

private:
    World world_;
};

class IconPlaces : public Trays {
public:
    explicit IconPlaces(World world) : world_(std::move(world)) {}

    bool present() const override { return world_->hasTray; }
    Subscription onChange(std::function<void()> changed) override {
        return observe(world_, &FakeWorld::trayObservers, std::move(changed));
    }

private:
    World world_;
};

class OwnWindows : public Windows {
public:
    explicit OwnWindows(World world) : world_(std::move(world)) {}

    bool anyVisible() const override { return world_->windowVisible; }
    Subscription onChange(std::function<void()> changed) override {
        return observe(world_, &FakeWorld::windowObservers, std::move(changed));
    }

private:
    World world_;
};

}  // namespace

FakeHost::FakeHost() {
    auto virtualClock = std::make_unique<VirtualClock>();
    clock = virtualClock.get();
    host.makeInspection = [shared = world] { return std::make_unique<Inspection>(shared); };
    host.machine = std::make_unique<Machine>(world);
    host.control = std::make_unique<Control>(world, *clock);
    host.running = std::make_unique<Running>(world, *clock);
    host.notifications = std::make_unique<Words>(world);
    host.services = std::make_unique<Services>(world);
    host.children = std::make_unique<Children>(world);
    host.loginItem = std::make_unique<Login>(world);
    host.desktop = std::make_unique<Favours>(world);
    host.propertyLists = std::make_unique<Lists>(world);
    host.applications = std::make_unique<Apps>(world);
    host.frontmost = std::make_unique<Front>(world);
    host.pressure = std::make_unique<PressureEvents>(world);
    host.preferences = std::make_unique<StoredPreferences>(world);
    host.folders = std::make_unique<Places>(world);
    host.clock = std::move(virtualClock);
    host.log = std::make_unique<Log>(world);
    host.trays = std::make_unique<IconPlaces>(world);
    host.selfPID = 4242;
    host.uid = 501;
    windows = std::make_unique<OwnWindows>(world);
}

}  // namespace tolvane::fakes
