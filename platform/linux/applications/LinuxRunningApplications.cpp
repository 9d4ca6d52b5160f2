#include "platform/linux/applications/LinuxRunningApplications.h"

#include <QTimer>
#include <algorithm>
#include <chrono>

#include "platform/linux/processes/ProcStat.h"

namespace tolvane::linuxhost {

namespace {

using std::chrono::milliseconds;

/// How often, and for how long, to check whether an instance that closed its windows ends.
constexpr milliseconds lookInterval{500};
constexpr milliseconds longestWatch = std::chrono::seconds(30);

using Members = std::vector<AppProcess>;

WindowOwner ownerOf(const Members& members, const std::string& identifier) {
    WindowOwner owner{.pids = {}, .identifier = identifier};
    for (const AppProcess& process : members) owner.pids.insert(process.pid);
    return owner;
}

/// Joins detached helpers, such as a crash reporter, which look like instances of their own, to those they help.
std::vector<Members> withHelpers(std::vector<Members> instances, OtherWindows& windows, const std::string& identifier) {
    std::vector<Members> joined;
    std::vector<Members> windowless;
    for (Members& members : instances) {
        const bool isShown = windows.any(ownerOf(members, identifier));
        (isShown ? joined : windowless).push_back(std::move(members));
    }
    for (Members& members : windowless) {
        // The youngest instance that is older than the helper.
        const auto isHelped = [&](const Members& shown) {
            return shown.front().startTicks <= members.front().startTicks &&
                   shown.front().executable != members.front().executable;
        };
        const auto found = std::find_if(joined.rbegin(), joined.rend(), isHelped);
        if (found == joined.rend()) {
            joined.push_back(std::move(members));
        } else {
            std::ranges::move(members, std::back_inserter(*found));
        }
    }
    return joined;
}

}  // namespace

class LinuxRunningApplications::Instance : public RunningApplication, public std::enable_shared_from_this<Instance> {
public:
    Instance(std::weak_ptr<const Parts> parts, Members members, std::string identifier, std::string appPath)
        : parts_(std::move(parts)),
          owner_(ownerOf(members, identifier)),
          mains_(mainProcesses(members)),
          members_(std::move(members)),
          appPath_(std::move(appPath)) {}

    void terminate() override {
        const auto parts = parts_.lock();
        if (!parts || !parts->windows->canTell()) return;
        if (parts->windows->askToClose(owner_) == 0) return signal(*parts, Signal::terminate, mains_);
        if (!std::exchange(isWatched_, true)) look(*parts, longestWatch, parts->grace);
    }

    void forceTerminate() override {
        const auto parts = parts_.lock();
        if (!parts) return;
        signal(*parts, Signal::kill, mains_);
        signal(*parts, Signal::kill, members_);
    }

    bool isTerminated() const override {
        const auto parts = parts_.lock();
        const std::string proc = parts ? parts->proc : "/proc";
        return std::ranges::none_of(mains_, [&](const AppProcess& process) {
            const auto stat = readProcStat(proc, process.pid);
            return stat && !stat->isGone() && stat->startTicks == process.startTicks;
        });
    }

    std::optional<std::string> appPath() const override { return appPath_; }

private:
    static void signal(const Parts& parts, Signal signal, const Members& processes) {
        for (const AppProcess& process : processes)
            parts.control.send(signal, {.pid = process.pid, .startTime = parts.dateOfTicks(process.startTicks)});
    }

    /// Keeps this object alive until the watch is over.
    void look(const Parts& parts, milliseconds left, milliseconds grace) {
        if (left <= milliseconds(0) || isTerminated()) return endWatch();
        if (!parts.windows->canTell() || parts.windows->any(owner_)) {
            grace = parts.grace;
        } else if (grace <= milliseconds(0)) {
            signal(parts, Signal::terminate, mains_);
            return endWatch();
        } else {
            grace -= lookInterval;
        }
        QTimer::singleShot(lookInterval, [self = shared_from_this(), left, grace] {
            if (const auto later = self->parts_.lock()) self->look(*later, left - lookInterval, grace);
        });
    }

    void endWatch() { isWatched_ = false; }

    std::weak_ptr<const Parts> parts_;
    WindowOwner owner_;
    Members mains_;
    Members members_;
    std::string appPath_;
    bool isWatched_ = false;
};

LinuxRunningApplications::LinuxRunningApplications(Parts parts)
    : parts_(std::make_shared<const Parts>(std::move(parts))) {}

LinuxRunningApplications::~LinuxRunningApplications() = default;

std::vector<std::shared_ptr<RunningApplication>> LinuxRunningApplications::withAppID(std::string_view identifier) {
    const auto path = parts_->applications.pathOfIdentifier(identifier);
    if (!path) return {};
    auto instances = withHelpers(instancesOf(processesOf(parts_->applications, path->str(), parts_->proc)),
                                 *parts_->windows, std::string(identifier));
    std::vector<std::shared_ptr<RunningApplication>> running;
    for (Members& members : instances) {
        running.push_back(std::make_shared<Instance>(parts_, std::move(members), std::string(identifier), path->str()));
    }
    return running;
}

void LinuxRunningApplications::openInBackground(const std::string& appPath, Opened opened) {
    parts_->launcher->launch(appPath, {}, std::move(opened));
}

}  // namespace tolvane::linuxhost
