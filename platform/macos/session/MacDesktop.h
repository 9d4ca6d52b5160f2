#pragma once

#include "platform/Desktop.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The Finder, the user's programs and the general pasteboard.
class MacDesktop : public Desktop {
public:
    explicit MacDesktop(ObjC runtime);

    void open(const std::string& path) override;
    void copyText(const std::string& text) override;

private:
    Id workspace() const;

    ObjC runtime_;
};

}  // namespace tolvane::machost
