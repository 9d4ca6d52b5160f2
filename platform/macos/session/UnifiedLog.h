#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "platform/SystemLog.h"

namespace tolvane::machost {

/// The unified log's two calls. Callable from any thread.
struct LogCalls {
    /// The result lives as long as the program.
    std::function<void*(const char* subsystem, const char* category)> create;
    /// One line at level info, readable by every user.
    std::function<void(void* log, const char* line)> info;
};

/// The unified log, under the program's own name.
class UnifiedLog : public SystemLog {
public:
    explicit UnifiedLog(LogCalls calls);

    void info(std::string_view category, std::string_view line) override;

private:
    void* logOf(std::string_view category);

    LogCalls calls_;
    std::mutex mutex_;
    std::map<std::string, void*, std::less<>> logs_;
};

}  // namespace tolvane::machost
