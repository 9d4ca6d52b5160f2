#include "app/demo/ReadOnlyHost.h"

#include <filesystem>
#include <utility>

#include "app/preferences/AppPreferences.h"
#include "app/preferences/RunPreferences.h"

namespace tolvane {

namespace {

class CopiedFolders : public Folders {
public:
    CopiedFolders(std::unique_ptr<Folders> real, std::string copies)
        : real_(std::move(real)), copies_(std::move(copies)) {}

    std::string home() const override { return real_->home(); }
    std::string applicationSupport() const override { return copies_; }
    std::optional<std::string> syncFolder() const override { return std::nullopt; }

private:
    std::unique_ptr<Folders> real_;
    std::string copies_;
};

}  // namespace

Host readOnlyHost(Host host, const std::string& folder) {
    std::error_code failed;
    // A file that cannot be copied counts as absent.
    std::filesystem::copy(host.folders->applicationSupport() + "/Tolvane", folder + "/Tolvane", failed);
    host.folders = std::make_unique<CopiedFolders>(std::move(host.folders), folder);
    host.preferences = std::make_unique<RunPreferences>(std::move(host.preferences));
    AppPreferences::rulesPaused.store(*host.preferences, true);
    return host;
}

}  // namespace tolvane
