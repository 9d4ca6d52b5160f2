#include "core/rules/SubjectKey.h"

#include "base/Decimal.h"

namespace tolvane::SubjectKey {

namespace {

std::string incarnation(std::string_view prefix, const ProcSample& sample) {
    return std::string(prefix) + std::to_string(sample.pid) + ":" +
           Decimal::shortestWithFraction(unixSeconds(sample.startTime));
}

}  // namespace

std::string app(std::string_view appID) { return "app:" + std::string(appID); }
std::string process(const ProcSample& sample) { return incarnation("pid:", sample); }
std::string agent(const ProcSample& sample) { return incarnation("agent:", sample); }
std::string worker(std::string_view shortID) { return "claude:" + std::string(shortID); }

}  // namespace tolvane::SubjectKey
