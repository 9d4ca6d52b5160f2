#pragma once

#include "platform/Applications.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Applications are folders that end in ".app": the outermost one around an executable owns it.
class MacApplications : public Applications {
public:
    /// Pictures of icons are kept in `iconFolder`, which is made for the first one.
    MacApplications(ObjC runtime, std::string iconFolder);

    std::optional<Text> appPath(Pid pid, std::string_view executable) override;
    std::optional<Text> appID(std::string_view appPath) override;
    std::string displayName(std::string_view appPath) override;
    /// The absolute path of a PNG.
    std::string iconName(std::string_view appPath) override;

private:
    ObjC runtime_;
    std::string iconFolder_;
};

}  // namespace tolvane::machost
