#include "core/storage/HistoryLog.h"

#include <algorithm>
#include <cstdint>

#include "core/history/MomentFields.h"
#include "core/json/Decode.h"
#include "core/json/TextCache.h"
#include "core/storage/LineFile.h"
#include "core/storage/Replacement.h"

namespace tolvane {

namespace {

/// Part of a file, in bytes.
struct Span {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// What a history file holds that is worth keeping. Neighbouring lines share a span: mostly there is one.
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

Kept keepYoungerThan(Files::LineFile& file, Date now, Seconds age) {
    Kept kept;
    json::TextCache texts;
    json::Decoder decoder(&texts);
    while (const auto line = file.next()) {
        Moment moment;
        if (decoder.decodePadded(line->text, moment) && now - moment.date <= age) {
            moment.holders.shrink_to_fit();
            kept.add(std::move(moment), *line);
        } else {
            kept.all = false;
        }
    }
    return kept;
}

/// Copies in pieces, so that a long history is not held in memory twice.
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
