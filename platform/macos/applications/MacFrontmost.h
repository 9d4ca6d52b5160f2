#pragma once

#include "platform/Applications.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The workspace always knows which application is in front.
class MacFrontmost : public Frontmost {
public:
    explicit MacFrontmost(ObjC runtime);

    bool canTell() const override { return true; }
    std::optional<FrontmostApplication> current() const override;
    Subscription onActivation(std::function<void(std::string appPath)> activated) override;

private:
    ObjC runtime_;
};

}  // namespace tolvane::machost
