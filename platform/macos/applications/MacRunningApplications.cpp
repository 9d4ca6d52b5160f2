#include "platform/macos/applications/MacRunningApplications.h"

#include <utility>

#include "platform/macos/objc/Block.h"
#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

class MacRunningApplication : public RunningApplication {
public:
    MacRunningApplication(ObjC runtime, Id application)
        : runtime_(std::move(runtime)), application_(Owned::retain(runtime_, application)) {}

    // Both return whether the request was sent; whether the application follows it shows later.
    void terminate() override { ask("terminate"); }
    void forceTerminate() override { ask("forceTerminate"); }
    bool isTerminated() const override { return ask("isTerminated"); }
    std::optional<std::string> appPath() const override {
        const Pool pool(*runtime_);
        return Foundation::path(*runtime_, runtime_->send(application_.get(), "bundleURL"));
    }

private:
    bool ask(const char* selector) const {
        const Pool pool(*runtime_);
        return runtime_->send<bool>(application_.get(), selector);
    }

    ObjC runtime_;
    Owned application_;
};

/// Opens it without bringing it to the front, adding it to the recent ones or asking the user.
Id quietConfiguration(const Runtime& runtime) {
    const Id configuration = runtime.send(runtime.classNamed("NSWorkspaceOpenConfiguration"), "configuration");
    runtime.send<void>(configuration, "setPromptsUserIfNeeded:", false);
    runtime.send<void>(configuration, "setActivates:", false);
    runtime.send<void>(configuration, "setAddsToRecentItems:", false);
    return configuration;
}

/// The error's message; an error without a message is still an error.
std::optional<std::string> wordsFor(const Runtime& runtime, Id error) {
    if (error == nullptr) return std::nullopt;
    const Pool pool(runtime);
    return Foundation::localizedDescription(runtime, error).value_or(std::string());
}

}  // namespace

MacRunningApplications::MacRunningApplications(ObjC runtime, OnMain onMain)
    : runtime_(std::move(runtime)), onMain_(std::move(onMain)) {}

std::vector<std::shared_ptr<RunningApplication>> MacRunningApplications::withAppID(std::string_view identifier) {
    const Pool pool(*runtime_);
    const Id found =
        runtime_->send(runtime_->classNamed("NSRunningApplication"),
                       "runningApplicationsWithBundleIdentifier:", Foundation::string(*runtime_, identifier));
    std::vector<std::shared_ptr<RunningApplication>> running;
    for (const Id each : Foundation::elements(*runtime_, found)) {
        running.push_back(std::make_shared<MacRunningApplication>(runtime_, each));
    }
    return running;
}

void MacRunningApplications::openInBackground(const std::string& appPath, Opened opened) {
    const Pool pool(*runtime_);
    // The answer arrives on one of the workspace's queues.
    Block<Id, Id> answered(*runtime_, [runtime = runtime_, onMain = onMain_, opened = std::move(opened)](Id, Id error) {
        onMain([opened, words = wordsFor(*runtime, error)] { opened(words); });
    });
    const Id workspace = runtime_->send(runtime_->classNamed("NSWorkspace"), "sharedWorkspace");
    runtime_->send<void>(workspace, "openApplicationAtURL:configuration:completionHandler:",
                         Foundation::fileURL(*runtime_, appPath), quietConfiguration(*runtime_), answered.get());
}

}  // namespace tolvane::machost
