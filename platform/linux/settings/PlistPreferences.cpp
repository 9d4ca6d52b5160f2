#include "platform/linux/settings/PlistPreferences.h"

#include <sys/stat.h>

#include <filesystem>

#include "base/Paths.h"
#include "base/files/Files.h"
#include "base/files/Replacement.h"
#include "platform/linux/settings/PropertyList.h"

namespace tolvane::linuxhost {

namespace {

/// Thousands of hidden suggestions stay far below this.
constexpr std::size_t maximumFileSize = 4U << 20U;

struct StoredList {
    PropertyList list;
    /// Something exists that cannot be read as preferences.
    bool isDamaged = false;
};

StoredList load(const std::string& path) {
    struct stat facts{};
    if (::stat(path.c_str(), &facts) != 0) return {};
    const auto text = Files::readUpTo(path, maximumFileSize);
    auto list = text ? PropertyList::parse(*text) : std::nullopt;
    if (!list) return {.list = {}, .isDamaged = true};
    return {.list = std::move(*list)};
}

/// Resolves links, so that a file kept elsewhere is written there and the link stays.
std::string targetOf(const std::string& path) {
    std::error_code error;
    const auto target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

}  // namespace

PlistPreferences::PlistPreferences(std::string path) : path_(std::move(path)), values_(load(path_).list.values()) {}

std::optional<PreferenceValue> PlistPreferences::value(std::string_view key) const {
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

void PlistPreferences::set(std::string_view key, PreferenceValue value) {
    const auto found = values_.find(key);
    if (found != values_.end() && found->second == value) return;
    values_.insert_or_assign(std::string(key), std::move(value));
    unsaved_.emplace(key);
    save();
}

void PlistPreferences::save() {
    StoredList stored = load(path_);
    for (const std::string& key : unsaved_) stored.list.set(key, values_.at(key));
    const std::string target = targetOf(path_);
    if (Files::makePrivateFolder(std::string(Paths::parent(target)))) return;
    const auto damaged = stored.isDamaged ? std::optional(target + ".damaged") : std::nullopt;
    if (Files::replace(target, stored.list.xml(), Files::Access::ownerOnly, damaged)) unsaved_.clear();
}

}  // namespace tolvane::linuxhost
