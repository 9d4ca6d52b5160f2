#include "platform/linux/windows/SessionFrontmost.h"

#include <utility>

#include "platform/linux/processes/ProcFiles.h"

namespace tolvane::linuxhost {

namespace {

constexpr std::chrono::milliseconds longestMove{500};

}  // namespace

SessionFrontmost::SessionFrontmost(LinuxApplications& applications, std::shared_ptr<OtherWindows> windows,
                                   std::unique_ptr<FrontmostChoice> choice, std::string proc)
    : applications_(applications), windows_(std::move(windows)), choice_(std::move(choice)), proc_(std::move(proc)) {}

SessionFrontmost::~SessionFrontmost() = default;

bool SessionFrontmost::canTell() const { return windows_->canTell() && choice_->teller() != nullptr; }

/// The kernel's view of a process outranks what a window says about itself.
std::optional<Text> SessionFrontmost::appPathOf(const FrontWindow& window) const {
    if (window.pid) {
        if (auto path = applications_.appPath(*window.pid, executableOf(proc_, *window.pid))) return path;
    }
    for (const std::string& name : window.names) {
        if (auto path = applications_.pathOfWindow(name)) return path;
    }
    return std::nullopt;
}

std::optional<Text> SessionFrontmost::appPath() const {
    const FrontmostSource* source = choice_->teller();
    const auto window = source == nullptr ? std::nullopt : source->inFront();
    return window ? appPathOf(*window) : std::nullopt;
}

std::optional<FrontmostApplication> SessionFrontmost::current() const {
    const auto path = appPath();
    if (!path) return std::nullopt;
    const auto identifier = applications_.appID(path->view());
    return FrontmostApplication{
        .appPath = path->str(),
        .appID = identifier ? std::optional(identifier->str()) : std::nullopt,
    };
}

Subscription SessionFrontmost::onActivation(std::function<void(std::string)> activated) {
    if (!std::exchange(isWatching_, true)) {
        changes_ = choice_->onChange([this] { look(); });
        last_ = appPath();
    }
    return observers_.add(std::move(activated));
}

/// An application that stays in front while its windows change is not reported again. Window managers briefly have no
/// active window whenever the focus moves; an application that returns after a longer gap has come to the front again.
void SessionFrontmost::look() {
    const auto path = appPath();
    const auto now = std::chrono::steady_clock::now();
    if (!path) {
        if (!nobodySince_) nobodySince_ = now;
        return;
    }
    const bool wasAway = nobodySince_ && now - *nobodySince_ > longestMove;
    nobodySince_.reset();
    if (path == last_ && !wasAway) return;
    last_ = path;
    observers_.tell(path->str());
}

}  // namespace tolvane::linuxhost
