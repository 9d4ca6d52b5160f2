#include "core/storage/Store.h"

#include <algorithm>
#include <cassert>
#include <optional>
#include <string_view>

#include "base/files/Files.h"
#include "base/files/Replacement.h"
#include "core/history/Moment.h"
#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/projects/ParkedProject.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"
#include "core/storage/ActivityLog.h"
#include "core/storage/HistoryLog.h"

namespace tolvane {

namespace {

constexpr Seconds historyAge{86400};

std::string pathOf(const Store& store, std::string_view name) { return store.directory + "/" + std::string(name); }
std::string rulesPath(const Store& store) { return pathOf(store, "rules.json"); }
std::string activityPath(const Store& store) { return pathOf(store, "activity.jsonl"); }
std::string historyPath(const Store& store) { return pathOf(store, "history.jsonl"); }
std::string parkedPath(const Store& store) { return pathOf(store, "parked.json"); }

template <typename Record>
std::optional<std::vector<Record>> loadList(const std::string& path) {
    const auto bytes = Files::read(path);
    if (!bytes) return std::nullopt;
    auto list = json::decode<std::vector<Record>>(*bytes);
    if (!list) return std::nullopt;
    return std::move(*list);
}

template <typename Record>
void saveList(const std::string& path, const std::vector<Record>& list, json::Style style, Files::Access access) {
    auto text = json::encode(list, style);
    if (!text) return;
    const bool isDamaged = Files::exists(path) && !loadList<Record>(path);
    Files::replace(path, *text, access, isDamaged ? std::optional(path + ".damaged") : std::nullopt);
}

template <typename Record>
void appendLine(const std::string& path, const Record& record) {
    auto line = json::encode(record);
    if (!line) return;
    *line += '\n';
    Files::append(path, *line);
}

}  // namespace

Store::Store(std::string folder) : directory(std::move(folder)) {
    Files::makePrivateFolder(directory);
    Files::keepToOwner(directory);
}

std::vector<Rule> Store::loadRules() const { return loadList<Rule>(rulesPath(*this)).value_or(Rule::presets()); }

void Store::saveRules(const std::vector<Rule>& rules) const {
    saveList(rulesPath(*this), rules, json::Style::pretty, Files::Access::usual);
}

std::vector<ActivityEntry> Store::loadActivity(std::int64_t limit) const {
    assert(limit >= 0);
    return readActivity(activityPath(*this), static_cast<std::uint64_t>(std::max<std::int64_t>(0, limit)));
}

void Store::append(const ActivityEntry& entry) const { appendLine(activityPath(*this), entry); }

void Store::clearActivity() const { Files::remove(activityPath(*this)); }

std::vector<Moment> Store::loadHistory(Date now) const {
    return readAndTrimHistory(historyPath(*this), now, historyAge);
}

void Store::append(const Moment& moment) const { appendLine(historyPath(*this), moment); }

std::vector<ParkedProject> Store::loadParked() const {
    return loadList<ParkedProject>(parkedPath(*this)).value_or(std::vector<ParkedProject>{});
}

void Store::saveParked(const std::vector<ParkedProject>& parked) const {
    saveList(parkedPath(*this), parked, json::Style::compact, Files::Access::ownerOnly);
}

}  // namespace tolvane
