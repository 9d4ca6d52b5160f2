#pragma once

#include "platform/RunningApplications.h"
#include "platform/macos/dispatch/DispatchCalls.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Running applications as the workspace knows them.
class MacRunningApplications : public RunningApplications {
public:
    MacRunningApplications(ObjC runtime, OnMain onMain);

    std::vector<std::shared_ptr<RunningApplication>> withAppID(std::string_view identifier) override;
    void openInBackground(const std::string& appPath, Opened opened) override;

private:
    ObjC runtime_;
    OnMain onMain_;
};

}  // namespace tolvane::machost
