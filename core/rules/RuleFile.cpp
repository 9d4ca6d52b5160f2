#include "core/rules/RuleFile.h"

#include <algorithm>
#include <cstdint>
#include <tuple>

#include "core/json/Decode.h"
#include "core/json/Encode.h"
#include "core/rules/Rule.h"

namespace tolvane {

namespace {

constexpr std::string_view formatName = "tolvane-rules";
constexpr std::int64_t currentVersion = 1;

struct Document {
    std::string format;
    std::vector<Rule> rules;
    std::int64_t version = 0;
};

}  // namespace

template <>
struct json::Fields<Document> {
    static constexpr auto fields = std::tuple(Field{"format", &Document::format}, Field{"rules", &Document::rules},
                                              Field{"version", &Document::version});
};

namespace RuleFile {

namespace {

bool isDuplicate(const Rule& rule, const std::vector<Rule>& rules) {
    const auto essence = [](const Rule& one) {
        return std::tie(one.target, one.unusedMinutes, one.memoryMB, one.action);
    };
    return std::ranges::any_of(rules, [&](const Rule& other) { return essence(other) == essence(rule); });
}

bool isTaken(const UUID& id, const std::vector<Rule>& rules) {
    return std::ranges::any_of(rules, [&](const Rule& other) { return other.id == id; });
}

}  // namespace

std::string encode(const std::vector<Rule>& rules) {
    const Document document{.format = std::string(formatName), .rules = rules, .version = currentVersion};
    // Encoding fails only on numbers that are not finite, and rules have none.
    return json::encode(document, json::Style::pretty).value_or(std::string());
}

Result<std::vector<Rule>, json::Error> decode(std::string_view bytes) {
    auto document = json::decode<Document>(bytes);
    if (!document) return document.failure();
    if (document->format != formatName) return json::Error{.what = "not \"tolvane-rules\"", .where = "format"};
    return std::move(document->rules);
}

std::vector<Rule> merge(const std::vector<Rule>& imported, std::vector<Rule> existing) {
    for (Rule rule : imported) {
        if (isDuplicate(rule, existing)) continue;
        if (isTaken(rule.id, existing)) rule.id = UUID::random();
        rule.setMode(RuleMode::logOnly);
        existing.push_back(std::move(rule));
    }
    return existing;
}

std::string importMessage(std::string_view name, std::size_t added) {
    const std::string file(name);
    if (added == 0) return "Every rule in " + file + " is already in Tolvane.";
    if (added == 1) {
        return "Added 1 rule from " + file + ". It starts in Log Only, so it only writes what it would do to Activity.";
    }
    return "Added " + std::to_string(added) + " rules from " + file +
           ". They start in Log Only, so they only write what they would do to Activity.";
}

std::string notARuleFile(std::string_view name) { return std::string(name) + " is not a Tolvane rules file."; }

}  // namespace RuleFile

}  // namespace tolvane
