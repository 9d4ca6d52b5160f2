#include "tests/fakes/FakeHost.h"

#include <algorithm>
#include <cstring>

namespace tolvane::fakes {

std::string argumentsBlock(const std::string& executable, const std::vector<std::string>& args,
                           const std::vector<std::string>& env) {
    const auto count = static_cast<std::int32_t>(args.size());
    std::string block(sizeof count, '\0');
    std::memcpy(block.data(), &count, sizeof count);
    block += executable;
    block.append(3, '\0');
    for (const auto& text : args) block.append(text).push_back('\0');
    for (const auto& text : env) block.append(text).push_back('\0');
    return block;
}

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

void FakeWorld::activate(const std::string& bundlePath) { tell(activationObservers, bundlePath); }
void FakeWorld::press() { tell(pressureObservers); }
void FakeWorld::showWindow(bool visible) {
    windowVisible = visible;
    tell(windowObservers);
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
    std::optional<std::string> argumentsBlock(Pid pid) override {
        return ask("argumentsBlock", pid, &FakeProcess::argumentsBlock);
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
    std::optional<CPUTicks> totalTicks() const override { return world_->totalTicks; }
    std::optional<std::vector<CPUTicks>> ticksPerCore() const override { return world_->ticksPerCore; }
    int activeCores() const override { return world_->activeCores; }
    std::optional<int> efficiencyCores() const override { return world_->efficiencyCores; }

private:
    World world_;
};

class Control : public ProcessControl {
public:
    explicit Control(World world) : world_(std::move(world)) {}

    bool lowerPriority(const Incarnation& process) override { return change("lower ", process); }
    bool restorePriority(const Incarnation& process) override { return change("restore ", process); }

private:
    bool change(const char* what, const Incarnation& target) {
        world_->asked.push_back(what + std::to_string(target.pid));
        const auto* process = world_->find(target.pid);
        return process && process->bsd && process->bsd->startTime == target.startTime &&
               !world_->shielded.contains(target.pid);
    }

    World world_;
};

class Apps : public Applications {
public:
    explicit Apps(World world) : world_(std::move(world)) {}

    /// As on hosts whose applications are folders: the outermost ".app" that holds the executable.
    std::optional<Text> bundlePath(Pid pid, std::string_view executable) override {
        world_->asked.push_back("bundlePath " + std::to_string(pid));
        const auto scope = world_->appScopes.find(pid);
        if (scope != world_->appScopes.end()) return Text(scope->second);
        const auto found = executable.find(".app/");
        if (found == std::string_view::npos) return std::nullopt;
        return Text(executable.substr(0, found + 4));
    }
    std::optional<Text> bundleIdentifier(std::string_view bundlePath) override {
        world_->asked.push_back("bundleIdentifier " + std::string(bundlePath));
        const auto found = world_->bundleIdentifiers.find(bundlePath);
        if (found == world_->bundleIdentifiers.end()) return std::nullopt;
        return Text(found->second);
    }
    std::string displayName(std::string_view bundlePath) override {
        world_->asked.push_back("displayName " + std::string(bundlePath));
        const auto found = world_->displayNames.find(bundlePath);
        return found == world_->displayNames.end() ? std::string(bundlePath) : found->second;
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
    host.control = std::make_unique<Control>(world);
    host.applications = std::make_unique<Apps>(world);
    host.frontmost = std::make_unique<Front>(world);
    host.pressure = std::make_unique<PressureEvents>(world);
    host.preferences = std::make_unique<StoredPreferences>(world);
    host.folders = std::make_unique<Places>(world);
    host.clock = std::move(virtualClock);
    host.log = std::make_unique<Log>(world);
    host.selfPID = 4242;
    host.uid = 501;
    windows = std::make_unique<OwnWindows>(world);
}

}  // namespace tolvane::fakes
