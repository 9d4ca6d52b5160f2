#include "platform/linux/StatLine.h"

#include "platform/linux/KernelText.h"

namespace tolvane::linuxhost {

namespace {

/// Skips fields; their number counts from 1 as in the manual.
void skip(std::string_view& line, int fields) {
    for (int field = 0; field < fields; ++field) takeWord(line);
}

}  // namespace

bool StatLine::isOnPseudoTerminal() const {
    // Majors 136 to 143 are the pseudo terminals.
    const std::uint32_t major = (terminal >> 8U) & 0xfffU;
    return major >= 136 && major <= 143;
}

std::optional<StatLine> parseStatLine(std::string_view line) {
    // A name may hold brackets and blanks: the last bracket closes it, for numbers follow.
    const auto close = line.rfind(')');
    if (close == std::string_view::npos) return std::nullopt;
    line = withoutLineEnd(line.substr(close + 1));
    const auto state = takeWord(line);
    const auto parent = wholeNumber<Pid>(takeWord(line));
    skip(line, 1);
    const auto session = wholeNumber<Pid>(takeWord(line));
    const auto terminal = wholeNumber<std::int32_t>(takeWord(line));
    skip(line, 14);
    const auto startTicks = wholeNumber<std::uint64_t>(takeWord(line));
    if (state.size() != 1 || !parent || !session || !terminal || !startTicks) return std::nullopt;
    return StatLine{.state = state.front(),
                    .parent = *parent,
                    .session = *session,
                    .terminal = static_cast<std::uint32_t>(*terminal),
                    .startTicks = *startTicks};
}

}  // namespace tolvane::linuxhost
