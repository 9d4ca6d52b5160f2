#include "platform/linux/processes/ProcStatus.h"

#include <cstring>

#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

/// Walks through a text whose lines have a known order, and restarts when a line is out of order.
class Lines {
public:
    explicit Lines(std::string_view text) : text_(text) {}

    /// The text after `key`, which is the start of a line with the line end before it; nullopt without such a line.
    std::optional<std::string_view> behind(std::string_view key) {
        auto found = find(key, at_);
        if (found == std::string_view::npos && at_ != 0) found = find(key, 0);
        if (found == std::string_view::npos) return std::nullopt;
        const auto begin = found + key.size();
        const auto end = text_.find('\n', begin);
        if (end == std::string_view::npos) return std::nullopt;
        at_ = end;
        return text_.substr(begin, end - begin);
    }

private:
    std::size_t find(std::string_view key, std::size_t from) const {
        const void* found = ::memmem(text_.data() + from, text_.size() - from, key.data(), key.size());
        if (!found) return std::string_view::npos;
        return static_cast<std::size_t>(static_cast<const char*>(found) - text_.data());
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

std::optional<std::uint64_t> bytesOf(std::optional<std::string_view> kilobytes) {
    if (!kilobytes) return std::nullopt;
    const auto figure = Scan::figure(*kilobytes);
    if (!figure) return std::nullopt;
    return *figure * 1024;
}

bool hasSecondWord(std::string_view text) {
    Scan::word(text);
    return !Scan::word(text).empty();
}

}  // namespace

std::optional<ProcStatus> parseProcStatus(std::string_view text) {
    Lines lines(text);
    auto users = lines.behind("\nUid:");
    if (!users) return std::nullopt;
    Scan::word(*users);
    const auto effective = Scan::figure(*users);
    if (!effective) return std::nullopt;
    ProcStatus status{.uid = static_cast<std::uint32_t>(*effective)};
    if (const auto numbers = lines.behind("\nNSpid:")) status.inOtherPidNamespace = hasSecondWord(*numbers);
    status.anonymous = bytesOf(lines.behind("\nRssAnon:"));
    if (status.anonymous) status.swapped = bytesOf(lines.behind("\nVmSwap:")).value_or(0);
    return status;
}

}  // namespace tolvane::linuxhost
