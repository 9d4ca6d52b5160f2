#include "core/storage/HistoryLog.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/files/LineFile.h"
#include "base/files/Replacement.h"
#include "core/history/Moment.h"
#include "core/json/Decode.h"
#include "core/json/TextCache.h"

namespace tolvane {

namespace {

/// Part of a file, in bytes.
struct Span {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// The part of a history file that is worth keeping. Adjacent lines share a span, so there is mostly one.
struct Kept {
    std::vector<Moment> moments;
    std::vector<Span> spans;
    bool all = true;

    void add(Moment moment, const Files::LineFile::Line& line) {
        moments.push_back(std::move(moment));
        if (!spans.empty() && spans.back().end == line.begin) {
            spans.back().end = line.end;
        } else {
            spans.push_back({line.begin, line.end});
        }
    }
};

/// Whole seconds of the date at the start of the line, as written. Returns nullopt for any other line.
std::optional<std::int64_t> firstSeconds(std::string_view line) {
    constexpr std::string_view begin = R"({"date":)";
    constexpr std::size_t mostDigits = 15;
    if (!line.starts_with(begin)) return std::nullopt;
    line.remove_prefix(begin.size());
    const auto digits = std::min(line.find_first_not_of("0123456789"), line.size());
    if (digits == 0 || digits > mostDigits) return std::nullopt;
    std::int64_t seconds = 0;
    for (const char digit : line.substr(0, digits)) seconds = 10 * seconds + (digit - '0');
    line.remove_prefix(digits);
    if (line.starts_with('.')) line.remove_prefix(std::min(line.find_first_not_of("0123456789", 1), line.size()));
    return line.starts_with(',') ? std::optional(seconds) : std::nullopt;
}

/// Whether the line is too old whatever else it contains, so that a history left untrimmed for years is skipped
/// quickly. A line with two dates is not: the last one would count, however its key is written.
bool isSurelyOld(std::string_view line, Date now, Seconds age) {
    const auto seconds = firstSeconds(line);
    if (!seconds || now - Date{Seconds{static_cast<double>(*seconds + 1)}} <= age) return false;
    const auto rest = line.substr(1 + std::string_view(R"("date")").size());
    return rest.find("date\"") == std::string_view::npos && rest.find("\\u") == std::string_view::npos;
}

Kept keepYoungerThan(Files::LineFile& file, Date now, Seconds age) {
    Kept kept;
    json::TextCache texts;
    json::Decoder decoder(&texts);
    while (const auto line = file.next()) {
        Moment moment;
        const bool isRead = !isSurelyOld(line->text, now, age) && decoder.decodePadded(line->text, moment);
        if (isRead && now - moment.date <= age) {
            moment.holders.shrink_to_fit();
            kept.add(std::move(moment), *line);
        } else {
            kept.all = false;
        }
    }
    return kept;
}

/// Copies piece by piece, so that a long history is not held in memory twice.
bool copy(const Files::LineFile& file, const Span& span, Files::Replacement& target) {
    constexpr std::uint64_t piece = 1U << 20U;
    char last = '\n';
    for (std::uint64_t begin = span.begin; begin < span.end; begin += piece) {
        const auto bytes = file.bytes(begin, std::min(piece, span.end - begin));
        if (!bytes || bytes->empty() || !target.write(*bytes)) return false;
        last = bytes->back();
    }
    return last == '\n' || target.write("\n");
}

void rewrite(const std::string& path, const Files::LineFile& file, const std::vector<Span>& spans) {
    Files::Replacement target(path, Files::Access::usual);
    const bool copied = std::ranges::all_of(spans, [&](const Span& span) { return copy(file, span, target); });
    if (copied) target.commit();
}

}  // namespace

std::vector<Moment> readAndTrimHistory(const std::string& path, Date now, Seconds age) {
    auto file = Files::LineFile::open(path, simdjson::SIMDJSON_PADDING);
    if (!file) return {};
    auto kept = keepYoungerThan(*file, now, age);
    if (file->failed()) return {};
    if (!kept.all) rewrite(path, *file, kept.spans);
    return std::move(kept.moments);
}

}  // namespace tolvane
