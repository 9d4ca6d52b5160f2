#include "platform/linux/machine/LinuxClock.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "base/files/FileDescriptor.h"
#include "platform/linux/machine/LinuxClockFacts.h"

namespace tolvane::linuxhost {

namespace {

constexpr double nanosPerSecond = 1e9;
/// Thirty years: longer than any wait, within the range of the kernel's timer.
constexpr Seconds longestWait{1e9};

Seconds clamped(Seconds span) { return span > Seconds{0} ? std::min(span, longestWait) : Seconds{0}; }

itimerspec timerAt(Seconds moment) {
    // Zero would switch the timer off, so past moments become one nanosecond. Rounded up, so never early.
    const auto nanos = static_cast<std::int64_t>(std::ceil(std::max(moment.count() * nanosPerSecond, 1.0)));
    itimerspec timer{};
    timer.it_value.tv_sec = nanos / 1'000'000'000;
    timer.it_value.tv_nsec = nanos % 1'000'000'000;
    return timer;
}

}  // namespace

Seconds roundestMoment(Seconds due, Seconds latest) {
    for (double grid = 64; grid >= 1.0 / 64; grid /= 2) {
        const Seconds moment{std::ceil(due.count() / grid) * grid};
        if (moment <= latest) return moment;
    }
    return due;
}

class LinuxClock::Waiters : public std::enable_shared_from_this<Waiters> {
public:
    std::uint64_t add(Seconds due, Seconds latest, std::function<void()> passed) {
        const std::uint64_t number = next_++;
        waiting_.emplace(number, Waiter{due, roundestMoment(due, latest), std::move(passed)});
        set();
        return number;
    }

    void remove(std::uint64_t number) {
        if (waiting_.erase(number) > 0) set();
    }

private:
    struct Waiter {
        Seconds due;
        /// When the timer wakes for it; any earlier wake-up after `due` serves as well.
        Seconds wake;
        std::function<void()> passed;
    };

    void set() {
        const auto wake = earliestWake();
        if (wake == setTo_ || (!timer_ && !makeTimer())) return;
        const itimerspec timer = wake ? timerAt(*wake) : itimerspec{};
        if (::timerfd_settime(timer_.get(), TFD_TIMER_ABSTIME, &timer, nullptr) == 0) setTo_ = wake;
    }

    std::optional<Seconds> earliestWake() const {
        std::optional<Seconds> earliest;
        for (const auto& [number, waiter] : waiting_) earliest = std::min(earliest.value_or(waiter.wake), waiter.wake);
        return earliest;
    }

    bool makeTimer() {
        timer_ = FileDescriptor(::timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK));
        if (!timer_) return false;
        notifier_ = std::make_unique<QSocketNotifier>(timer_.get(), QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { wakeUp(); });
        return true;
    }

    void wakeUp() {
        std::uint64_t expirations = 0;
        if (::read(timer_.get(), &expirations, sizeof expirations) != sizeof expirations) return;
        const auto self = shared_from_this();
        setTo_.reset();
        for (const std::uint64_t number : dueBy(uptime())) run(number);
        set();
        // The clock was destroyed while its waiter ran; the notifier must outlive its own signal.
        if (self.use_count() == 1) QTimer::singleShot(0, [self] {});
    }

    std::vector<std::uint64_t> dueBy(Seconds now) const {
        std::vector<std::pair<Seconds, std::uint64_t>> due;
        for (const auto& [number, waiter] : waiting_) {
            if (waiter.due <= now) due.emplace_back(waiter.due, number);
        }
        std::ranges::sort(due);
        std::vector<std::uint64_t> numbers;
        for (const auto& [moment, number] : due) numbers.push_back(number);
        return numbers;
    }

    /// A waiter that ran earlier may have ended this one.
    void run(std::uint64_t number) {
        auto node = waiting_.extract(number);
        if (!node.empty()) node.mapped().passed();
    }

    std::map<std::uint64_t, Waiter> waiting_;
    std::uint64_t next_ = 0;
    std::optional<Seconds> setTo_;
    FileDescriptor timer_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

LinuxClock::LinuxClock() : waiters_(std::make_shared<Waiters>()) {}

LinuxClock::~LinuxClock() = default;

Date LinuxClock::now() const {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return dateFromUnixSeconds(static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / nanosPerSecond);
}

Seconds LinuxClock::steadyTime() const { return uptime(); }

Subscription LinuxClock::after(Seconds delay, Seconds tolerance, std::function<void()> passed) {
    const Seconds due = uptime() + clamped(delay);
    const std::uint64_t number = waiters_->add(due, due + clamped(tolerance), std::move(passed));
    return Subscription([waiters = std::weak_ptr(waiters_), number] {
        if (const auto kept = waiters.lock()) kept->remove(number);
    });
}

}  // namespace tolvane::linuxhost
