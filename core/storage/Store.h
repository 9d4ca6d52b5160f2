#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/Date.h"
#include "core/history/Moment.h"
#include "core/projects/ParkedProject.h"
#include "core/rules/Rule.h"
#include "core/storage/ActivityEntry.h"

namespace tolvane {

/// The program's data on disk: four plain files in one private folder. Caches nothing: each call goes to the disk.
/// Failures are silent: a file that cannot be read gives the default, a line that cannot be read is skipped, a failed
/// write leaves the old file alone. Main thread.
struct Store {
    /// Absolute path.
    std::string directory;

    /// Creates the folder and its parents, readable by the owner only.
    explicit Store(std::string directory);

    /// The presets when the file is missing or cannot be parsed.
    std::vector<Rule> loadRules() const;
    /// Keeps a damaged file as "rules.json.damaged".
    void saveRules(const std::vector<Rule>& rules) const;

    /// The latest `limit` lines of the log, newest first. `limit` is not negative.
    std::vector<ActivityEntry> loadActivity(std::int64_t limit) const;
    void append(const ActivityEntry& entry) const;
    void clearActivity() const;

    /// The moments of the last 24 hours, oldest first. Only this call removes older and damaged lines from the file.
    std::vector<Moment> loadHistory(Date now) const;
    void append(const Moment& moment) const;

    std::vector<ParkedProject> loadParked() const;
    /// Readable by the owner only, because it holds environments. Keeps a damaged file as "parked.json.damaged".
    void saveParked(const std::vector<ParkedProject>& parked) const;

    bool operator==(const Store&) const = default;
};

}  // namespace tolvane
