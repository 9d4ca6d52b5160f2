#include "desktop/program/Invocation.h"

#include "app/preferences/AppPreferences.h"
#include "desktop/look/QtText.h"
#include "desktop/program/Snapshots.h"

namespace tolvane::desktop {

const std::set<std::string, std::less<>>& Invocation::knownKeys() {
    namespace Keys = AppPreferences;
    static const std::set<std::string, std::less<>> keys = [] {
        std::set<std::string, std::less<>> all = {"grouping", "syncFolder"};
        for (const auto key :
             {Keys::demo.key, Keys::rulesPaused.key, Keys::backupToSyncFolder.key, Keys::openInterval.key,
              Keys::notifyOnAction.key, Keys::notifyAboutSuggestions.key, Keys::warnSwapGrowth.key,
              Keys::showTrayIcon.key, Keys::atLogin.key, Snapshots::folderKey, Snapshots::darkKey}) {
            all.emplace(key);
        }
        return all;
    }();
    return keys;
}

Invocation Invocation::of(const std::vector<std::string>& arguments, bool displayPresent, const std::string& folder) {
    Invocation start{.switches = parseSwitches(arguments, knownKeys()), .headless = !displayPresent};
    start.files = RuleFileArguments::among(start.switches.words, folder);
    start.picturesByDefault = start.headless && arguments.empty();
    return start;
}

QString Invocation::picturesFolder(const Preferences& preferences) const {
    const auto folder = preferences.get<std::string>(Snapshots::folderKey);
    if (folder && !folder->empty()) return qtText(*folder);
    return picturesByDefault ? QString::fromLatin1(defaultPictures) : QString();
}

std::vector<std::string> Invocation::complaints() const {
    std::vector<std::string> lines;
    for (const auto& each : switches.unknown) lines.push_back("tolvane: unknown switch " + each);
    for (const auto& each : files.others) lines.push_back("tolvane: no file " + each);
    return lines;
}

}  // namespace tolvane::desktop
