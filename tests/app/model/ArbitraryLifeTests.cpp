#include <gmock/gmock.h>

#include <array>
#include <random>
#include <string_view>

#include "core/storage/Store.h"
#include "tests/app/ProjectScene.h"

namespace tolvane {
namespace {

using testing::Contains;
using testing::Not;

enum class Machine { answersAtOnce, takesItsTime, hasAJumpingClock };

/// Hours on a machine where anything happens in any order, and a program that ends in the middle of it.
struct ArbitraryLife : ProjectScene, testing::WithParamInterface<Machine> {
    static constexpr Pid firstOfRoot = 50;
    static constexpr Pid firstOfUser = 100;
    static constexpr std::array<std::string_view, 3> apps = {"Mail", "Notes", "Chat"};

    fakes::HeldJobs jobs;
    std::mt19937 random;
    Pid nextPid = firstOfUser;

    std::size_t below(std::size_t limit) { return random() % limit; }
    bool once(std::size_t in) { return below(in) == 0; }
    template <typename Value, std::size_t count>
    Value of(const std::array<Value, count>& values) {
        return values[below(count)];
    }
    static std::string bundle(std::string_view app) { return "/Applications/" + std::string(app) + ".app"; }
    static std::string identifier(std::string_view app) { return "com.example." + std::string(app); }

    // The machine

    void addProcess(Pid pid) {
        auto& process = once(2) ? addApp(pid, bundle(of(apps))) : world.add(pid, once(2) ? "node" : "claude");
        process.bsd->ppid = once(3) ? 1 : firstOfUser + static_cast<Pid>(below(20));
        process.bsd->startTime = clock.now();
        process.arguments = {"x", once(2) ? "/x/worker" : "/x/vite"};
        process.usage->footprint = below(6) * 300 * MiB;
        process.memory = MemoryRecord{.compressed = below(3) * 200 * MiB};
        if (once(3)) process.cwd = Text(once(2) ? shop : blog);
        if (once(3)) process.ports = {3000 + static_cast<int>(below(3))};
        if (once(2)) process.endsAfter = std::nullopt;
        world.asked.push_back("born " + std::to_string(pid));
    }
    void addOthers() {
        addProcess(1);
        world.find(1)->bsd->uid = 0;
        for (Pid pid = firstOfRoot; pid < firstOfRoot + 3; ++pid) {
            addProcess(pid);
            world.find(pid)->bsd->uid = 0;
        }
        addProcess(fake.host.selfPID);
    }
    void addInstance(std::string_view app) {
        auto& instance =
            world.instances.emplace_back(fakes::FakeInstance{.identifier = identifier(app), .appPath = bundle(app)});
        if (once(2)) instance.quitsAfter = std::nullopt;
    }
    Pid anyPid() { return firstOfUser + static_cast<Pid>(below(static_cast<std::size_t>(nextPid - firstOfUser) + 2)); }

    void changeMachine() {
        const Pid pid = anyPid();
        switch (below(8)) {
            case 0:
                return addProcess(nextPid++);
            case 1:
                return world.end(pid);
            case 2:
                if (!world.find(pid)) return;
                world.end(pid);
                return addProcess(pid);
            case 3:
                if (world.find(pid)) burn(pid, 100, Seconds{60});
                return;
            case 4:
                return addInstance(of(apps));
            case 5:
                if (!world.instances.empty()) world.instances[below(world.instances.size())].terminated = true;
                return;
            case 6:
                world.pressureLevel = once(2) ? 1 : 2;
                return;
            default:
                world.swapUsage = SwapUsage{.total = 16 * GiB, .used = below(5) * GiB};
        }
    }
    void changeDesktop() {
        const auto app = of(apps);
        switch (below(5)) {
            case 0:
                return world.press();
            case 1:
                return world.showWindow(once(2));
            case 2:
                world.frontmost = FrontmostApplication{bundle(app), identifier(app)};
                return world.activate(bundle(app));
            case 3:
                world.frontmost = std::nullopt;
                return;
            default:
                world.canTellFrontmost = !once(3);
        }
    }

    // The user

    Rule arbitraryRule() {
        static int number = 0;
        Rule rule{.id = UUID::random(), .name = "rule " + std::to_string(++number), .enabled = true};
        rule.dryRun = once(3);
        rule.action = of(RuleActions::allCases);
        if (once(2)) rule.unusedMinutes = static_cast<std::int64_t>(below(3) * 10);
        rule.memoryMB = static_cast<std::int64_t>(below(3) * 300);
        const auto app = of(apps);
        if (once(3)) {
            rule.target = AppTarget{identifier(app), std::string(app)};
        } else if (once(2)) {
            rule.target = AgentSessionTarget{{"claude"}, false};
        } else {
            rule.target = CommandTarget{{once(2) ? "worker" : "vite"}};
        }
        return rule;
    }
    void changeRules() {
        if (model->rules->size() < 6) return model->addRule(arbitraryRule());
        if (once(2)) return model->deleteRules({(*model->rules)[below(6)].id});
        model->pauseRules(once(3));
    }
    void useSuggestions() {
        if (model->suggestions->empty()) return;
        const auto one = (*model->suggestions)[below(model->suggestions->size())];
        if (once(3)) return model->hide(one, clock.now() + Seconds{600});
        model->act(one, once(2) ? std::nullopt : std::optional(of(RuleActions::allCases)));
    }
    void useProjects() {
        const auto project = group(once(2) ? shop : blog);
        switch (below(4)) {
            case 0:
                model->acts().stop(project);
                return;
            case 1:
                model->acts().park(project);
                return;
            case 2:
                if (!model->parked->empty()) model->startAgain(model->parked->front());
                return;
            default:
                model->refreshProjects();
        }
    }
    void useProcesses() {
        const Pid pid = anyPid();
        switch (below(5)) {
            case 0:
                lowerPriority({pid, anyPid()});
                return;
            case 1:
                return model->acts().restorePriority({pid});
            case 2:
                model->acts().relaunch({.title = "x", .pids = {pid}});
                return;
            case 3:
                model->acts().forceQuit({{.title = "x", .pids = {pid}}});
                return;
            default:
                model->acts().terminate({.title = "x", .pids = {pid}});
        }
    }
    void passTime() {
        static constexpr std::array<double, 4> jumps = {-3600, -0.5, 3600, 8 * 3600};
        static constexpr std::array<double, 8> spans = {0.1, 0.5, 2, 10, 31, 60, 301, 1200};
        const Seconds span{of(spans)};
        // A held sample stays pending while time passes, as on a busy machine.
        clock.advance(span);
        if (GetParam() == Machine::hasAJumpingClock && once(4)) clock.jumpTo(clock.now() + Seconds{of(jumps)});
        for (std::size_t count = below(9); count > 0 && jobs.waiting() > 0; --count) jobs.runNext();
    }
    void step() {
        switch (below(8)) {
            case 0:
            case 1:
                return changeMachine();
            case 2:
                return changeDesktop();
            case 3:
                return once(3) ? changeRules() : useSuggestions();
            case 4:
                return once(2) ? useProjects() : useProcesses();
            default:
                passTime();
        }
    }

    /// Keeps only the acts among the recorded requests.
    void forgetReadings() {
        std::erase_if(world.asked, [](const std::string& each) {
            return !each.starts_with("signal ") && !each.starts_with("lower ") && !each.starts_with("restore ") &&
                   !each.starts_with("born ");
        });
    }

    // What holds at any time

    void begin() {
        const bool takesTime = GetParam() == Machine::takesItsTime;
        start(takesTime ? jobs.factory() : ExecutorFactory(fakes::InlineExecutor::make));
    }
    void end() {
        const auto activity = *model->activity;
        const auto rules = *model->rules;
        const auto parked = *model->parked;
        const auto moments = *model->moments;
        model.reset();
        EXPECT_EQ(clock.waiting(), 0U);
        EXPECT_EQ(jobs.waiting(), 0U);
        const Store store(folder / "Tolvane");
        EXPECT_EQ(store.loadActivity(1'000'000), activity);
        EXPECT_EQ(store.loadRules(), rules);
        EXPECT_EQ(store.loadParked(), parked);
        if (GetParam() != Machine::hasAJumpingClock) {
            EXPECT_EQ(store.loadHistory(moments.empty() ? clock.now() : moments.back().date), moments);
        }
        expectNoLoanIsLeft();
    }
    /// The latest priority change of every living process must have restored it.
    void expectNoLoanIsLeft() const {
        std::set<std::string> low;
        for (const auto& each : world.asked) {
            const auto pid = each.substr(each.find(' ') + 1);
            if (each.starts_with("lower ")) low.insert(pid);
            if (each.starts_with("restore ") || each.starts_with("born ")) low.erase(pid);
        }
        for (const auto& process : world.processes) EXPECT_FALSE(low.contains(std::to_string(process.pid)));
    }
    void expectLoansAreOfTheSnapshot() const {
        for (const auto& [pid, loan] : *model->lowered) {
            ASSERT_TRUE(row(pid)) << pid;
            EXPECT_EQ(row(pid)->sample.startTime, loan.start);
        }
    }
    void expectOthersWereLeftAlone() const {
        std::vector<Pid> others = {0, 1, fake.host.selfPID};
        for (Pid pid = firstOfRoot; pid < firstOfRoot + 3; ++pid) others.push_back(pid);
        for (const Pid pid : others) {
            for (const std::string what : {"signal 15 ", "signal 9 ", "lower "}) {
                EXPECT_EQ(world.timesAsked(what + std::to_string(pid)), 0U) << what << pid;
            }
        }
    }
    /// Each rule has a name of its own here, and every act is dated within half a minute.
    void expectCooldowns() const {
        std::map<std::string, Date> latest;
        for (auto entry = model->activity->rbegin(); entry != model->activity->rend(); ++entry) {
            if (entry->outcome == "Relaunched") continue;
            const auto key = entry->ruleName.str() + "|" + entry->subjectKey->str();
            const auto before = latest.find(key);
            const Seconds least{entry->dryRun ? 3600.0 : 600.0 - 31};
            if (before != latest.end()) EXPECT_GE(entry->date - before->second, least) << key;
            latest[key] = entry->date;
        }
    }

    void live(unsigned seed) {
        random.seed(seed);
        begin();
        for (int count = 0; count < 100; ++count) {
            step();
            forgetReadings();
            expectLoansAreOfTheSnapshot();
            if (HasFatalFailure()) return;
        }
        // Cool-downs count from the date of the sample, which may lie far back when the sample was slow.
        if (GetParam() == Machine::answersAtOnce) expectCooldowns();
        expectOthersWereLeftAlone();
        end();
        // Starts a new run on what the first one left.
        begin();
        for (int count = 0; count < 20; ++count) step();
        end();
    }
};

TEST_P(ArbitraryLife, leavesNothingUndoneAndTouchesNothingThatIsNotItsOwn) {
    for (const auto app : apps) world.appIDs[bundle(app)] = identifier(app);
    world.memorySize = 16 * GiB;
    world.preferences["openInterval"] = std::int64_t{30};
    runEngine();
    addOthers();
    std::size_t entries = 0;
    for (unsigned seed = 0; seed < 24; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        world.asked.clear();
        std::filesystem::remove_all(folder / "Tolvane");
        live(seed);
        ASSERT_FALSE(HasFailure());
        entries += Store(folder / "Tolvane").loadActivity(1'000'000).size();
    }
    EXPECT_GT(entries, 30U);
    EXPECT_GT(world.notifications.size(), 30U);
}

std::string nameOf(const testing::TestParamInfo<Machine>& machine) {
    switch (machine.param) {
        case Machine::answersAtOnce:
            return "thatAnswersAtOnce";
        case Machine::takesItsTime:
            return "thatTakesItsTime";
        case Machine::hasAJumpingClock:
            break;
    }
    return "whoseClockJumps";
}

INSTANTIATE_TEST_SUITE_P(OnAMachine, ArbitraryLife,
                         testing::Values(Machine::answersAtOnce, Machine::takesItsTime, Machine::hasAJumpingClock),
                         nameOf);

}  // namespace
}  // namespace tolvane
