#pragma once

#include "platform/PropertyLists.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// Property lists in every format that the system reads.
class MacPropertyLists : public PropertyLists {
public:
    explicit MacPropertyLists(ObjC runtime);

    std::optional<std::string> text(const std::string& path, std::string_view key) override;

private:
    ObjC runtime_;
};

}  // namespace tolvane::machost
