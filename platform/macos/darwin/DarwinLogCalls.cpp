#include "platform/macos/darwin/DarwinLogCalls.h"

#include <array>
#include <cstdint>

// What the macros of <os/log.h> expand to.
extern "C" {
// NOLINTBEGIN(readability-identifier-naming, bugprone-reserved-identifier): their own names
void* os_log_create(const char* subsystem, const char* category);
bool os_log_type_enabled(void* log, std::uint8_t type);
void _os_log_impl(void* image, void* log, std::uint8_t type, const char* format, std::uint8_t* arguments,
                  std::uint32_t size);
extern char __dso_handle;
// NOLINTEND(readability-identifier-naming, bugprone-reserved-identifier)
}

namespace tolvane::machost {

namespace {

constexpr std::uint8_t levelInfo = 1;

/// The log stores the format's address, not its text, so the format must stand in this section.
__attribute__((section("__TEXT,__oslogstring,cstring_literals"))) const char lineFormat[] = "%{public}s";

void writeInfo(void* log, const char* line) {
    if (!os_log_type_enabled(log, levelInfo)) return;
    std::array<std::uint8_t, __builtin_os_log_format_buffer_size("%{public}s", "")> arguments{};
    __builtin_os_log_format(arguments.data(), "%{public}s", line);
    _os_log_impl(&__dso_handle, log, levelInfo, &lineFormat[0], arguments.data(), arguments.size());
}

}  // namespace

LogCalls appleLog() { return {.create = &os_log_create, .info = &writeInfo}; }

}  // namespace tolvane::machost
