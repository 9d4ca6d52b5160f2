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

/// The program's memory on disk: four plain files in one private folder. It keeps nothing in between: each call goes to
/// the disk. Nothing here fails aloud: what cannot be read is the default, a line that cannot be read is passed over, a
/// write that fails is dropped and leaves the old file alone. Main thread.
struct Store {
    /// Absolute.
    std::string directory;

    /// Makes the folder, with those above it, and lets only its owner in.
    explicit Store(std::string directory);

    /// The presets when there are none, or none that can be understood.
    std::vector<Rule> loadRules() const;
    /// A damaged file is kept beside as "rules.json.damaged".
    void saveRules(const std::vector<Rule>& rules) const;

    /// The latest `limit` lines of the log, newest first. `limit` is not negative.
    std::vector<ActivityEntry> loadActivity(std::int64_t limit) const;
    void append(const ActivityEntry& entry) const;
    void clearActivity() const;

    /// The moments of the last 24 hours, oldest first. Older and damaged lines leave the file here, and only here.
    std::vector<Moment> loadHistory(Date now) const;
    void append(const Moment& moment) const;

    std::vector<ParkedProject> loadParked() const;
    /// For the owner's eyes only, since it holds environments. A damaged file is kept beside as "parked.json.damaged".
    void saveParked(const std::vector<ParkedProject>& parked) const;

    bool operator==(const Store&) const = default;
};

}  // namespace tolvane
