#pragma once

#include "platform/Folders.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The user's folders as the system names them. Any thread.
class MacFolders : public Folders {
public:
    explicit MacFolders(const Runtime& runtime);

    std::string home() const override { return home_; }
    std::string applicationSupport() const override { return applicationSupport_; }
    /// iCloud Drive, if its folder exists.
    std::optional<std::string> syncFolder() const override;
    /// For what can be recreated at any time.
    std::string caches() const { return home_ + "/Library/Caches/dev.tolvane.Tolvane"; }

private:
    std::string home_;
    std::string applicationSupport_;
};

}  // namespace tolvane::machost
