#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <filesystem>
#include <limits>
#include <random>
#include <string>

#include "core/json/Encode.h"
#include "core/json/Simdjson.h"
#include "core/storage/ActivityEntry.h"
#include "core/storage/ActivityStats.h"
#include "core/storage/Store.h"
#include "core/words/Calendar.h"
#include "tests/fakes/TemporaryFolder.h"

// What the log costs at start, with a million lines of 330 bytes, beside the bare reader that takes all fields and
// keeps none; what an append costs; what the statistics cost over all of it.

namespace tolvane {
namespace {

constexpr std::size_t lineCount = 1'000'000;
constexpr auto everything = std::numeric_limits<std::int64_t>::max();

ActivityEntry entryOf(std::size_t number, std::mt19937_64& random) {
    static const std::vector<std::string> rules = {"Forgotten Vite and Next dev servers that nobody looks at any more",
                                                   "Idle Rails servers of projects that were left a while ago",
                                                   "Restart Slack when it grows beyond what one gigabyte holds"};
    static const std::vector<std::string> subjects = {"node", "puma", "Microsoft Teams", "claude in shop"};
    static const std::vector<std::string> outcomes = {"Terminated", "Would terminate", "Quit"};
    ActivityEntry entry;
    entry.id = UUID::random();
    entry.date = Date{Seconds{750'000'000.0 + static_cast<double>(number) * 3.25}};
    entry.ruleName = rules[random() % rules.size()];
    entry.subject = subjects[random() % subjects.size()];
    entry.outcome = outcomes[random() % outcomes.size()];
    entry.memory = random() % 8'000'000'000;
    entry.dryRun = random() % 2 == 0;
    entry.subjectKey =
        Text("pid:" + std::to_string(number % 30000) + ":1778" + std::to_string(100000 + number / 20) + ".123456");
    entry.compressed = random() % 900'000'000;
    entry.freed = random() % 700'000'000;
    entry.freedCompressed = random() % 300'000'000;
    return entry;
}

/// A folder with a long log, made once.
class LongLog {
public:
    LongLog() {
        std::mt19937_64 random(7);
        std::FILE* file = std::fopen(path().c_str(), "wb");
        for (std::size_t number = 0; number < lineCount; ++number) {
            const auto line = *json::encode(entryOf(number, random)) + "\n";
            std::fwrite(line.data(), 1, line.size(), file);
        }
        std::fclose(file);
    }
    std::string path() const { return store.directory + "/activity.jsonl"; }
    static const LongLog& shared() {
        static const LongLog log;
        return log;
    }

    fakes::TemporaryFolder folder;
    Store store{folder / "Tolvane"};
};

void countBytes(benchmark::State& state) {
    const auto size = std::filesystem::file_size(LongLog::shared().path());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
    state.counters["bytesPerLine"] = static_cast<double>(size) / static_cast<double>(lineCount);
}

/// The fields as the reader gives them, taken in file order and overwritten by the next line's.
struct BareEntry {
    std::string id, ruleName, subject, outcome, subjectKey;
    double date = 0;
    std::uint64_t memory = 0, compressed = 0, freed = 0, freedCompressed = 0;
    bool dryRun = false;

    void read(simdjson::ondemand::object object) {
        id.assign(object["id"].get_string().value());
        date = object["date"].get_double().value();
        ruleName.assign(object["ruleName"].get_string().value());
        subject.assign(object["subject"].get_string().value());
        outcome.assign(object["outcome"].get_string().value());
        memory = object["memory"].get_uint64().value();
        dryRun = object["dryRun"].get_bool().value();
        subjectKey.assign(object["subjectKey"].get_string().value());
        compressed = object["compressed"].get_uint64().value();
        freed = object["freed"].get_uint64().value();
        freedCompressed = object["freedCompressed"].get_uint64().value();
    }
};

void bareReader(benchmark::State& state) {
    auto text = simdjson::padded_string::load(LongLog::shared().path()).take_value();
    for (auto _ : state) {
        simdjson::ondemand::parser parser;
        simdjson::ondemand::document_stream stream;
        if (parser.iterate_many(text, 1U << 20U).get(stream)) std::abort();
        BareEntry entry;
        for (auto document : stream) entry.read(document.get_object().value());
        benchmark::DoNotOptimize(entry);
    }
    countBytes(state);
}
// It indexes the next batch on a thread of its own, which counts as well.
BENCHMARK(bareReader)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

std::size_t memoryInUse() {
    const auto info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

void loadActivity(benchmark::State& state) {
    const auto& log = LongLog::shared();
    std::vector<ActivityEntry> entries;
    std::size_t used = 0;
    for (auto _ : state) {
        state.PauseTiming();
        entries = {};
        const auto before = memoryInUse();
        state.ResumeTiming();
        entries = log.store.loadActivity(everything);
        state.PauseTiming();
        used = memoryInUse() - before;
        state.ResumeTiming();
    }
    countBytes(state);
    if (entries.size() != lineCount) state.SkipWithError("lines were lost");
    state.counters["memoryPerEntry"] = static_cast<double>(used) / static_cast<double>(lineCount);
}
BENCHMARK(loadActivity)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void loadLatestThousand(benchmark::State& state) {
    const auto& log = LongLog::shared();
    for (auto _ : state) benchmark::DoNotOptimize(log.store.loadActivity(1000));
}
BENCHMARK(loadLatestThousand)->Unit(benchmark::kMillisecond);

void appendTenThousand(benchmark::State& state) {
    const fakes::TemporaryFolder folder;
    const Store store(folder / "Tolvane");
    std::mt19937_64 random(7);
    const auto entry = entryOf(1, random);
    for (auto _ : state) {
        for (int count = 0; count < 10'000; ++count) store.append(entry);
    }
    state.SetItemsProcessed(state.iterations() * 10'000);
}
BENCHMARK(appendTenThousand)->Unit(benchmark::kMillisecond);

void statistics(benchmark::State& state) {
    const auto entries = LongLog::shared().store.loadActivity(everything);
    const Calendar calendar("Europe/Berlin");
    for (auto _ : state) {
        benchmark::DoNotOptimize(ActivityStats::byRule(entries, distantPast));
        benchmark::DoNotOptimize(ActivityStats::daily(entries, 30, entries.front().date, calendar));
    }
}
BENCHMARK(statistics)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tolvane
