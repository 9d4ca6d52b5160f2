#include "platform/macos/kernel/ProcStrings.h"

#include <cstdint>

#include "base/UTF8.h"

namespace tolvane::machost {

namespace {

constexpr std::size_t countSize = 4;

std::int32_t argumentCount(std::string_view block) {
    std::uint32_t count = 0;
    for (std::size_t index = 0; index < countSize; ++index) {
        count |= std::uint32_t{static_cast<unsigned char>(block[index])} << (8 * index);
    }
    return static_cast<std::int32_t>(count);
}

/// The block from the first argument on; empty when it ends before.
std::string_view pastExecutable(std::string_view block) {
    block.remove_prefix(countSize);
    const auto end = block.find('\0');
    if (end == std::string_view::npos) return {};
    const auto first = block.find_first_not_of('\0', end);
    return first == std::string_view::npos ? std::string_view{} : block.substr(first);
}

/// Takes the bytes up to the next 0 off the front, along with the 0.
std::string_view takeText(std::string_view& bytes) {
    const auto text = bytes.substr(0, bytes.find('\0'));
    bytes.remove_prefix(text.size() < bytes.size() ? text.size() + 1 : text.size());
    return text;
}

/// Reads the texts of a block one by one: first the arguments, then the environment.
class BlockReader {
public:
    explicit BlockReader(std::string_view block) {
        if (block.size() <= countSize) return;
        missing_ = argumentCount(block);
        rest_ = pastExecutable(block);
        if (UTF8::isValid(rest_)) return;
        // A byte of 0 ends every broken character, so repairing all texts at once equals repairing each.
        repaired_ = UTF8::repaired(rest_);
        rest_ = repaired_;
    }
    BlockReader(const BlockReader&) = delete;
    BlockReader& operator=(const BlockReader&) = delete;
    ~BlockReader() = default;

    bool hasArgument() const { return missing_ > 0 && !rest_.empty(); }
    std::string_view argument() {
        --missing_;
        return takeText(rest_);
    }
    /// Call after taking all arguments; empty at the end of the environment.
    std::string_view entry() { return takeText(rest_); }

private:
    std::int32_t missing_ = 0;
    std::string repaired_;
    std::string_view rest_;
};

TextList takeArguments(BlockReader& reader) {
    std::vector<std::string_view> texts;
    while (reader.hasArgument()) texts.push_back(reader.argument());
    return TextList(texts);
}

std::vector<std::string> takeEnvironment(BlockReader& reader) {
    std::vector<std::string> entries;
    for (auto entry = reader.entry(); !entry.empty(); entry = reader.entry()) entries.emplace_back(entry);
    return entries;
}

}  // namespace

ProcStrings procStrings(std::string_view block) {
    BlockReader reader(block);
    auto args = takeArguments(reader);
    return {.args = std::move(args), .env = takeEnvironment(reader)};
}

TextList parseProcArgs(std::string_view block) {
    BlockReader reader(block);
    return takeArguments(reader);
}

std::vector<std::string> parseProcEnv(std::string_view block) {
    BlockReader reader(block);
    while (reader.hasArgument()) reader.argument();
    return takeEnvironment(reader);
}

}  // namespace tolvane::machost
