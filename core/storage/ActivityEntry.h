#pragma once

#include <cstdint>
#include <optional>
#include <tuple>

#include "base/Date.h"
#include "base/Text.h"
#include "base/UUID.h"
#include "core/json/Fields.h"

namespace tolvane {

/// One line of the log of what rules did or would have done. Sizes in bytes. Logs are long and names repeat, so entries
/// share their texts.
struct ActivityEntry {
    UUID id;
    Date date;
    /// Name of the rule at that moment.
    Text ruleName;
    /// What the rule acted on.
    Text subject;
    /// What happened, in the user's language; statistics depend on these texts.
    Text outcome;
    /// Footprint of the subject when the rule fired.
    std::uint64_t memory = 0;
    bool dryRun = false;
    std::optional<Text> subjectKey;
    std::optional<std::uint64_t> compressed;
    /// Bytes that were measured as released.
    std::optional<std::uint64_t> freed;
    std::optional<std::uint64_t> freedCompressed;

    bool operator==(const ActivityEntry&) const = default;
};

}  // namespace tolvane

namespace tolvane::json {

template <>
struct Fields<ActivityEntry> {
    static constexpr auto fields =
        std::tuple(Field{"id", &ActivityEntry::id}, Field{"date", &ActivityEntry::date},
                   Field{"ruleName", &ActivityEntry::ruleName}, Field{"subject", &ActivityEntry::subject},
                   Field{"outcome", &ActivityEntry::outcome}, Field{"memory", &ActivityEntry::memory},
                   Field{"dryRun", &ActivityEntry::dryRun}, Field{"subjectKey", &ActivityEntry::subjectKey},
                   Field{"compressed", &ActivityEntry::compressed}, Field{"freed", &ActivityEntry::freed},
                   Field{"freedCompressed", &ActivityEntry::freedCompressed});
};

}  // namespace tolvane::json
