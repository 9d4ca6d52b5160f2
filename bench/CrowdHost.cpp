#include "bench/CrowdHost.h"

#include <stdlib.h>

#include <utility>

#include "bench/Measured.h"
#include "platform/linux/makeLinuxHost.h"

namespace tolvane::bench {

struct CrowdHost::Machine {
    int processes = 0;
    Date now{Seconds{800'000'000}};
    std::uint64_t ticks = 0;
    std::function<void()> pressed;
    /// The tick's first job, which takes the sample, and all its jobs.
    Seconds sampling{0};
    Seconds inJobs{0};
};

namespace {

TextList argumentsOf(Pid pid) {
    return {"node", "/home/ada/src/shop" + std::to_string(pid % 40) + "/node_modules/.bin/vite",
            "--port=" + std::to_string(3000 + pid)};
}

template <typename Machine>
class CrowdInspection : public ProcessInspection {
public:
    explicit CrowdInspection(std::shared_ptr<Machine> machine) : machine_(std::move(machine)) {}

    double nanosPerTick() const override { return 1; }
    std::vector<Pid> allPids() override {
        ++machine_->ticks;
        std::vector<Pid> pids;
        for (Pid pid = first; pid < first + machine_->processes; ++pid) pids.push_back(pid);
        return pids;
    }
    std::optional<BSDRecord> bsdRecord(Pid pid) override {
        return BSDRecord{.ppid = pid < 200 ? 1 : pid / 4,
                         .uid = 501,
                         .name = Text("program" + std::to_string(pid % 200)),
                         .startTime = Date{Seconds{799'000'000.0 + pid}},
                         .programStamp = 1};
    }
    std::optional<UsageRecord> usage(Pid pid) override {
        const auto number = static_cast<std::uint64_t>(pid);
        const std::uint64_t worked = pid % 10 == 0 ? machine_->ticks * 600'000'000 : machine_->ticks * 1'000'000;
        return UsageRecord{.userTime = worked,
                           .performanceUserTime = worked,
                           .footprint = ((70 + number % 100) << 20U) + (machine_->ticks * number % 977) * 4096};
    }
    std::optional<Text> executablePath(Pid pid) override {
        if (pid % 5 != 0) return Text("/opt/tools/node");
        return Text("/Applications/App" + std::to_string(pid % 30) + ".app/Contents/MacOS/App");
    }
    std::optional<TextList> arguments(Pid pid) override { return argumentsOf(pid); }
    std::optional<std::vector<std::string>> environment(Pid) override { return std::nullopt; }
    std::optional<MemoryRecord> memoryRecord(Pid) override { return MemoryRecord{.compressed = 1U << 20U}; }
    std::optional<Text> workingDirectory(Pid) override { return std::nullopt; }
    std::optional<bool> belongsToSystem(Pid) override { return false; }
    std::vector<int> listeningPorts(Pid) override { return {}; }

private:
    static constexpr Pid first = 100;
    std::shared_ptr<Machine> machine_;
};

template <typename Machine>
class StillClock : public Clock {
public:
    explicit StillClock(std::shared_ptr<Machine> machine) : machine_(std::move(machine)) {}
    Date now() const override { return machine_->now; }
    Subscription after(Seconds, Seconds, std::function<void()>) override { return {}; }

private:
    std::shared_ptr<Machine> machine_;
};

template <typename Machine>
class PressureByHand : public MemoryPressure {
public:
    explicit PressureByHand(std::shared_ptr<Machine> machine) : machine_(std::move(machine)) {}
    Subscription onPressure(std::function<void()> pressed) override {
        machine_->pressed = std::move(pressed);
        return Subscription([weak = std::weak_ptr(machine_)] {
            if (const auto machine = weak.lock()) machine->pressed = nullptr;
        });
    }

private:
    std::shared_ptr<Machine> machine_;
};

/// Applications as folders, according to the crowd's paths.
class FolderApplications : public Applications {
public:
    std::optional<Text> appPath(Pid, std::string_view executable) override {
        const auto end = executable.find(".app/");
        if (end == std::string_view::npos) return std::nullopt;
        return Text(executable.substr(0, end + 4));
    }
    std::optional<Text> appID(std::string_view appPath) override { return Text(appPath); }
    std::string displayName(std::string_view appPath) override { return std::string(appPath); }
    std::string iconName(std::string_view) override { return {}; }
};

class NoWindows : public Windows {
public:
    bool anyVisible() const override { return false; }
    Subscription onChange(std::function<void()>) override { return {}; }
};

/// Runs jobs within the call, and measures the time they would take on another thread.
template <typename Machine>
class TimedExecutor : public Executor {
public:
    explicit TimedExecutor(std::shared_ptr<Machine> machine) : machine_(std::move(machine)) {}
    void submit(std::function<void()> job, std::function<void()> done) override {
        const auto begin = threadTime();
        job();
        const Seconds took = threadTime() - begin;
        if (machine_->inJobs == Seconds{0}) machine_->sampling = took;
        machine_->inJobs += took;
        done();
    }

private:
    std::shared_ptr<Machine> machine_;
};

std::filesystem::path newFolder() {
    auto pattern = (std::filesystem::temp_directory_path() / "tolvane-bench.XXXXXX").string();
    return ::mkdtemp(pattern.data());
}

}  // namespace

CrowdHost::CrowdHost(int processes) : CrowdHost() {
    machine_->processes = processes;
    machine_->now = Date{Seconds{800'000'000}};
    host.makeInspection = [machine = machine_] { return std::make_unique<CrowdInspection<Machine>>(machine); };
    host.applications = std::make_unique<FolderApplications>();
    host.uid = 501;
}

CrowdHost::CrowdHost() : machine_(std::make_shared<Machine>()), folder_(newFolder()) {
    host = linuxhost::makeLinuxHost(linuxhost::environmentOf({{"HOME", folder_.string()}}), {});
    machine_->now = host.clock->now();
    host.clock = std::make_unique<StillClock<Machine>>(machine_);
    host.pressure = std::make_unique<PressureByHand<Machine>>(machine_);
    windows = std::make_unique<NoWindows>();
}

CrowdHost::~CrowdHost() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

CrowdHost::Times CrowdHost::tick(Seconds passed) {
    machine_->now += passed;
    machine_->inJobs = Seconds{0};
    const auto begin = threadTime();
    machine_->pressed();
    return {.sample = machine_->sampling, .after = threadTime() - begin - machine_->inJobs};
}

std::string CrowdHost::storeFolder() const { return host.folders->applicationSupport() + "/Tolvane"; }

ExecutorFactory CrowdHost::executors() {
    return [machine = machine_] { return std::make_unique<TimedExecutor<Machine>>(machine); };
}

}  // namespace tolvane::bench
