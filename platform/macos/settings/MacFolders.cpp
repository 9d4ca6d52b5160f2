#include "platform/macos/settings/MacFolders.h"

#include <filesystem>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

/// The file manager's numbers for the folder and for the user's own domain.
constexpr std::uint64_t applicationSupportFolder = 14;
constexpr std::uint64_t userDomain = 1;

std::optional<std::string> supportFolder(const Runtime& runtime) {
    const Id files = runtime.send(runtime.classNamed("NSFileManager"), "defaultManager");
    const Id found = runtime.send(files, "URLsForDirectory:inDomains:", applicationSupportFolder, userDomain);
    return Foundation::path(runtime, runtime.send(found, "firstObject"));
}

}  // namespace

MacFolders::MacFolders(const Runtime& runtime) {
    const Pool pool(runtime);
    home_ = Foundation::text(runtime, runtime.calls().homeFolder()).value_or(std::string());
    applicationSupport_ = supportFolder(runtime).value_or(home_ + "/Library/Application Support");
}

std::optional<std::string> MacFolders::syncFolder() const {
    auto folder = home_ + "/Library/Mobile Documents/com~apple~CloudDocs";
    std::error_code error;
    if (!std::filesystem::exists(folder, error)) return std::nullopt;
    return folder;
}

}  // namespace tolvane::machost
