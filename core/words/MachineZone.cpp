#include "core/words/MachineZone.h"

#include <unicode/timezone.h>

#include <filesystem>
#include <system_error>
#include <utility>

namespace tolvane {

MachineZone::MachineZone(std::string link) : link_(std::move(link)), target_(target()) {}

std::string MachineZone::target() const {
    std::error_code ignored;
    return std::filesystem::read_symlink(link_, ignored).string();
}

/// While the link is being replaced it may be missing for a moment; that is not a change.
bool MachineZone::follow() {
    auto now = target();
    if (now.empty() || now == target_) return false;
    target_ = std::move(now);
    icu::TimeZone::adoptDefault(icu::TimeZone::detectHostTimeZone());
    return true;
}

}  // namespace tolvane
