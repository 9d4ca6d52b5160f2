#pragma once

#include <tuple>

#include "core/json/Fields.h"
#include "core/storage/ActivityEntry.h"

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
