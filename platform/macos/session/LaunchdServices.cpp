#include "platform/macos/session/LaunchdServices.h"

#include <charconv>
#include <optional>
#include <system_error>

namespace tolvane::machost {

namespace {

/// The first field of the line that is not empty.
std::string_view firstField(std::string_view line) {
    const auto begin = line.find_first_not_of('\t');
    if (begin == std::string_view::npos) return {};
    line.remove_prefix(begin);
    return line.substr(0, line.find('\t'));
}

/// The whole field as a number; a leading plus is allowed.
std::optional<Pid> number(std::string_view field) {
    if (field.starts_with('+') && !field.starts_with("+-")) field.remove_prefix(1);
    Pid pid = 0;
    const auto* end = field.data() + field.size();
    const auto [stop, error] = std::from_chars(field.data(), end, pid);
    return error == std::errc() && stop == end ? std::optional(pid) : std::nullopt;
}

}  // namespace

std::set<Pid> LaunchdServices::managedPIDs() {
    return pidsOfJobs(children_.run("/bin/launchctl", {"list"}).value_or(""));
}

std::set<Pid> pidsOfJobs(std::string_view text) {
    std::set<Pid> pids;
    while (!text.empty()) {
        const auto end = text.find('\n');
        if (const auto pid = number(firstField(text.substr(0, end)))) pids.insert(*pid);
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return pids;
}

}  // namespace tolvane::machost
