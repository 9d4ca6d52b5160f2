#include "desktop/StartUp.h"

#include "app/AppPreferences.h"
#include "desktop/Snapshots.h"
#include "desktop/Words.h"

namespace tolvane::desktop {

const std::set<std::string, std::less<>>& StartUp::knownKeys() {
    namespace Keys = AppPreferences;
    static const std::set<std::string, std::less<>> keys = [] {
        std::set<std::string, std::less<>> all = {"grouping", "syncFolder"};
        for (const auto key : {Keys::demo.key, Keys::rulesPaused.key, Keys::backupToICloud.key, Keys::openInterval.key,
                               Keys::notifyOnAction.key, Keys::notifyAboutSuggestions.key, Keys::warnSwapGrowth.key,
                               Keys::showInMenuBar.key, Keys::atLogin.key, Snapshots::folderKey, Snapshots::darkKey}) {
            all.emplace(key);
        }
        return all;
    }();
    return keys;
}

StartUp StartUp::of(const std::vector<std::string>& arguments, bool displayPresent, const std::string& folder) {
    StartUp start{.switches = parseSwitches(arguments, knownKeys()), .headless = !displayPresent};
    start.files = OpenFiles::among(start.switches.words, folder);
    start.picturesByDefault = start.headless && arguments.empty();
    return start;
}

QString StartUp::picturesFolder(const Preferences& preferences) const {
    const auto folder = preferences.get<std::string>(Snapshots::folderKey);
    if (folder && !folder->empty()) return words(*folder);
    return picturesByDefault ? QString::fromLatin1(defaultPictures) : QString();
}

std::vector<std::string> StartUp::complaints() const {
    std::vector<std::string> lines;
    for (const auto& each : switches.unknown) lines.push_back("tolvane: unknown switch " + each);
    for (const auto& each : files.others) lines.push_back("tolvane: no file " + each);
    return lines;
}

}  // namespace tolvane::desktop
