#include "platform/linux/processes/ArgumentsBlock.h"

#include <algorithm>
#include <cstdint>
#include <ranges>

#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

void appendCount(std::string& block, std::size_t count) {
    const auto figure = static_cast<std::uint32_t>(count);
    for (int shift = 0; shift < 32; shift += 8) block.push_back(static_cast<char>((figure >> shift) & 0xff));
}

void appendText(std::string& block, std::string_view text) {
    block.append(text);
    block.push_back('\0');
}

}  // namespace

std::string argumentsBlock(std::string_view executable, const std::vector<std::string_view>& arguments,
                           std::string_view environment) {
    const auto first = std::ranges::find_if(arguments, [](std::string_view text) { return !text.empty(); });
    const auto kept = std::ranges::subrange(first, arguments.end());
    std::string block;
    appendCount(block, static_cast<std::size_t>(kept.size()));
    appendText(block, executable);
    for (const auto argument : kept) appendText(block, argument);
    while (!environment.empty()) {
        if (const auto entry = Scan::take(environment, '\0'); !entry.empty()) appendText(block, entry);
    }
    return block;
}

}  // namespace tolvane::linuxhost
