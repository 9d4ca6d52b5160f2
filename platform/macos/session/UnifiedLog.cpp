#include "platform/macos/session/UnifiedLog.h"

#include <utility>

namespace tolvane::machost {

UnifiedLog::UnifiedLog(LogCalls calls) : calls_(std::move(calls)) {}

void* UnifiedLog::logOf(std::string_view category) {
    const std::scoped_lock lock(mutex_);
    const auto known = logs_.find(category);
    if (known != logs_.end()) return known->second;
    std::string name(category);
    void* log = calls_.create("dev.tolvane.Tolvane", name.c_str());
    logs_.emplace(std::move(name), log);
    return log;
}

void UnifiedLog::info(std::string_view category, std::string_view line) {
    calls_.info(logOf(category), std::string(line).c_str());
}

}  // namespace tolvane::machost
