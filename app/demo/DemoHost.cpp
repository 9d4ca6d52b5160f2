#include "app/demo/DemoHost.h"

#include <map>
#include <utility>

#include "app/demo/Demo.h"
#include "app/preferences/RunPreferences.h"
#include "base/Paths.h"

namespace tolvane::Demo {

namespace {

class NoInspection : public ProcessInspection {
public:
    double nanosPerTick() const override { return 1; }
    std::vector<Pid> allPids() override { return {}; }
    std::optional<BSDRecord> bsdRecord(Pid) override { return std::nullopt; }
    std::optional<UsageRecord> usage(Pid) override { return std::nullopt; }
    std::optional<Text> executablePath(Pid) override { return std::nullopt; }
    std::optional<TextList> arguments(Pid) override { return std::nullopt; }
    std::optional<std::vector<std::string>> environment(Pid) override { return std::nullopt; }
    std::optional<MemoryRecord> memoryRecord(Pid) override { return std::nullopt; }
    std::optional<Text> workingDirectory(Pid) override { return std::nullopt; }
    std::optional<bool> belongsToSystem(Pid) override { return std::nullopt; }
    std::vector<int> listeningPorts(Pid pid) override {
        const auto all = ports();
        const auto found = all.find(pid);
        return found == all.end() ? std::vector<int>{} : found->second;
    }
};

/// Reports success and does nothing.
class NoControl : public ProcessControl {
public:
    bool send(Signal, const Incarnation&) override { return false; }
    std::optional<Pid> start(const DetachedStart&) override { return 2; }
    bool lowerPriority(const Incarnation&) override { return true; }
    bool restorePriority(const Incarnation&) override { return true; }
};

class CastApplications : public Applications {
public:
    explicit CastApplications(const Place& place) {
        for (const auto& proc : processes(place)) {
            if (proc.appPath && proc.appID) identifiers_.insert_or_assign(*proc.appPath, *proc.appID);
        }
    }

    std::optional<Text> appPath(Pid, std::string_view) override { return std::nullopt; }
    std::optional<Text> appID(std::string_view appPath) override {
        const auto found = identifiers_.find(appPath);
        return found == identifiers_.end() ? std::nullopt : std::optional(Text(found->second));
    }
    std::string displayName(std::string_view appPath) override { return std::string(Paths::lastComponent(appPath)); }
    std::string iconName(std::string_view) override { return {}; }

private:
    std::map<std::string, std::string, std::less<>> identifiers_;
};

class NoneRunning : public RunningApplications {
public:
    std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view) override { return {}; }
    void openInBackground(const std::string&, Opened opened) override { opened(std::nullopt); }
};

/// The cast's development environment is in front.
class CastFrontmost : public Frontmost {
public:
    bool canTell() const override { return true; }
    std::optional<FrontmostApplication> current() const override {
        return FrontmostApplication{.appPath = "/Applications/Xcode.app", .appID = "com.apple.dt.Xcode"};
    }
    Subscription onActivation(std::function<void(std::string)>) override { return {}; }
};

class NoServices : public ServiceManager {
public:
    std::set<Pid> managedPIDs() override { return {}; }
};

class NoChildren : public ChildProcesses {
public:
    std::optional<std::string> run(const std::string&, const std::vector<std::string>&) override { return ""; }
    std::optional<std::string> find(std::string_view) override { return std::nullopt; }
    void end() override {}
};

/// Lies beside the real folders.
class DemoFolders : public Folders {
public:
    explicit DemoFolders(std::unique_ptr<Folders> real) : real_(std::move(real)) {}

    std::string home() const override { return real_->home(); }
    std::string applicationSupport() const override { return real_->applicationSupport() + "/Tolvane-Demo"; }
    std::optional<std::string> syncFolder() const override { return std::nullopt; }

private:
    std::unique_ptr<Folders> real_;
};

}  // namespace

Host inertHost(Host host) {
    host.makeInspection = [] { return std::make_unique<NoInspection>(); };
    host.control = std::make_unique<NoControl>();
    host.applications = std::make_unique<CastApplications>(Place{.home = host.folders->home(), .uid = host.uid});
    host.folders = std::make_unique<DemoFolders>(std::move(host.folders));
    host.preferences = std::make_unique<RunPreferences>(std::move(host.preferences));
    host.running = std::make_unique<NoneRunning>();
    host.frontmost = std::make_unique<CastFrontmost>();
    host.services = std::make_unique<NoServices>();
    host.children = std::make_unique<NoChildren>();
    return host;
}

}  // namespace tolvane::Demo
