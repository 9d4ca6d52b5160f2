#include "platform/linux/processes/CommandLine.h"

#include <sys/stat.h>

#include <algorithm>

#include "base/UTF8.h"
#include "base/files/Files.h"
#include "platform/linux/text/KernelText.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

std::vector<std::string_view> splitArguments(std::string_view bytes) {
    std::vector<std::string_view> arguments;
    while (!bytes.empty()) arguments.push_back(Scan::take(bytes, '\0'));
    return arguments;
}

std::optional<std::string_view> environmentValue(std::string_view environment, std::string_view name) {
    while (!environment.empty()) {
        auto entry = Scan::take(environment, '\0');
        if (!entry.starts_with(name)) continue;
        entry.remove_prefix(name.size());
        if (entry.starts_with('=')) return entry.substr(1);
    }
    return std::nullopt;
}

TextList argumentTexts(const std::vector<std::string_view>& arguments) {
    const auto first = std::ranges::find_if(arguments, [](std::string_view text) { return !text.empty(); });
    const std::vector kept(first, arguments.end());
    if (std::ranges::all_of(kept, UTF8::isValid)) return TextList(kept);
    std::vector<std::string> repaired;
    for (const auto text : kept) repaired.push_back(UTF8::repaired(text));
    return TextList(repaired);
}

std::vector<std::string> environmentTexts(std::string_view environment) {
    std::vector<std::string> texts;
    while (!environment.empty()) {
        if (const auto entry = Scan::take(environment, '\0'); !entry.empty()) texts.push_back(UTF8::repaired(entry));
    }
    return texts;
}

namespace {

std::string_view withoutBlanksBehind(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    for (auto word = Scan::word(text); !word.empty(); word = Scan::word(text)) words.push_back(word);
    return words;
}

/// Servers put their role after a colon or in brackets, or name it ("master", "worker").
bool tellsState(const std::vector<std::string_view>& words) {
    if (words.front().find(':') != std::string_view::npos) return true;
    if (words.size() > 1 && (words[1] == "master" || words[1] == "worker")) return true;
    return std::ranges::any_of(words, [](std::string_view word) {
        return word.ends_with(':') || word.find_first_of("[]()") != std::string_view::npos;
    });
}

bool names(std::string_view word, std::string_view executable) {
    return word == executable || Scan::lastComponent(word) == Scan::lastComponent(executable);
}

std::optional<std::string> scriptFor(std::string_view word, std::string_view interpreter, const TitleLookup& lookup) {
    const auto fits = [&](const std::string& path) {
        const auto head = lookup.head(path);
        return head && isScriptFor(*head, interpreter);
    };
    if (word.starts_with('/')) return fits(std::string(word)) ? std::optional(std::string(word)) : std::nullopt;
    if (word.find('/') != std::string_view::npos) return std::nullopt;
    for (const std::string& folder : lookup.folders) {
        if (std::string path = folder + '/' + std::string(word); fits(path)) return path;
    }
    return std::nullopt;
}

}  // namespace

bool isTitle(const std::vector<std::string_view>& arguments, std::string_view executable) {
    if (arguments.empty() || arguments.front().empty()) return false;
    const bool alone = std::ranges::all_of(arguments.begin() + 1, arguments.end(), &std::string_view::empty);
    if (!alone || arguments.front() == executable) return false;
    const auto title = withoutBlanksBehind(arguments.front());
    if (title.find(' ') != std::string_view::npos) return true;
    return arguments.size() > 1 && !names(title, executable);
}

bool isScriptFor(std::string_view head, std::string_view interpreter) {
    if (!head.starts_with("#!") || interpreter.empty()) return false;
    head.remove_prefix(2);
    auto line = Scan::take(head, '\n');
    auto program = Scan::lastComponent(Scan::word(line));
    if (program != "env") return program == interpreter;
    // "env -S node --flag" and "env node" alike.
    do {
        program = Scan::word(line);
    } while (program.starts_with('-'));
    return Scan::lastComponent(program) == interpreter;
}

std::vector<std::string> searchFolders(std::string_view path, std::string_view executable) {
    std::vector<std::string> folders;
    while (!path.empty()) {
        if (const auto folder = Scan::take(path, ':'); folder.starts_with('/')) folders.emplace_back(folder);
    }
    const auto slash = executable.rfind('/');
    if (slash != std::string_view::npos && slash > 0) folders.emplace_back(executable.substr(0, slash));
    return folders;
}

std::vector<std::string> argumentsOfTitle(std::string_view title, std::string_view executable,
                                          const TitleLookup& lookup) {
    title = withoutBlanksBehind(title);
    const auto words = wordsOf(title);
    std::vector<std::string> unchanged{std::string(title)};
    if (words.empty() || tellsState(words)) return unchanged;
    if (names(words.front(), executable)) {
        if (words.size() < 2 || !words[1].starts_with('-')) return unchanged;
        return {words.begin(), words.end()};
    }
    const auto interpreter = Scan::lastComponent(executable);
    auto script = scriptFor(words.front(), interpreter, lookup);
    if (!script) return unchanged;
    std::vector<std::string> arguments{std::string(interpreter), *std::move(script)};
    arguments.insert(arguments.end(), words.begin() + 1, words.end());
    return arguments;
}

std::optional<std::string> executableHead(const std::string& path) {
    // As much as the kernel reads of a script for its first line.
    constexpr std::size_t headSize = 256;
    struct stat facts{};
    if (::stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) || (facts.st_mode & 0111) == 0) return {};
    return Files::readStart(path, headSize);
}

}  // namespace tolvane::linuxhost
