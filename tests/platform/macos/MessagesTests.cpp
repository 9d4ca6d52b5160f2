// Compares every message in the sources with the methods that the frameworks have.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/platform/macos/FakeRuntime.h"

namespace tolvane::machost {
namespace {

std::string sourcesOfTheHost() {
    std::ostringstream all;
    for (const auto& file : std::filesystem::recursive_directory_iterator(TOLVANE_MACOS_SOURCES)) {
        if (file.path().extension() == ".cpp") all << std::ifstream(file.path()).rdbuf();
    }
    return all.str();
}

/// The first group of every match.
std::set<std::string> found(const std::string& text, const std::string& pattern) {
    const std::regex expression(pattern);
    std::set<std::string> all;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
        all.insert((*match)[1].str());
    }
    return all;
}

std::set<std::string> selectorsInSources() {
    const auto sources = sourcesOfTheHost();
    // The first text of a message, or one behind a receiver that is itself a message; two helpers take a selector as
    // well.
    auto all = found(
        sources,
        R"re(send(?:<[\w:* ]*>)?\((?:[^";]|classNamed\("\w+"\))*?[ (]"((?!NS|UN[A-Z]|SM[A-Z])\w+:?(?:\w+:)*)")re");
    all.merge(found(sources, R"re("[\w:]+"\),\s*"((?!NS)[\w:]+)")re"));
    all.merge(found(sources, R"re((?:ask|change)\("([\w:]+)"\))re"));
    return all;
}

TEST(MacMessages, everySelectorOfTheSourcesIsAMethodOfTheFrameworks) {
    std::set<std::string> known;
    for (const auto& each : knownMethods()) known.emplace(each.selector);
    const auto inSources = selectorsInSources();
    std::vector<std::string> odd;
    std::ranges::set_symmetric_difference(inSources, known, std::back_inserter(odd));
    EXPECT_THAT(odd, ::testing::IsEmpty());
}

TEST(MacMessages, everyClassOfTheSourcesHasAMethodThatIsKnown) {
    std::set<std::string> known = {"NSObject"};
    for (const auto& each : knownMethods()) known.emplace(each.className);
    for (const auto& name : found(sourcesOfTheHost(), R"re(classNamed\("(\w+)"\))re")) {
        EXPECT_TRUE(known.contains(name)) << name;
    }
}

TEST(MacMessages, aSelectorHasOneColonForEachArgument) {
    for (const auto& each : knownMethods()) {
        const auto colons = std::ranges::count(each.selector, ':');
        EXPECT_EQ(static_cast<std::size_t>(colons), each.types.size() - 1) << each.selector;
    }
}

}  // namespace
}  // namespace tolvane::machost
