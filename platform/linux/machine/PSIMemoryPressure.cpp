#include "platform/linux/machine/PSIMemoryPressure.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QTimer>
#include <map>
#include <string_view>
#include <vector>

#include "base/files/Files.h"
#include "platform/linux/machine/PressureReading.h"

namespace tolvane::linuxhost {

namespace {

/// Windows that are not whole multiples of 2 seconds are reserved for administrators.
constexpr std::string_view trigger = "some 150000 2000000";
/// The stall within one window that fires the trigger.
constexpr double pollPercent = 7.5;
constexpr std::size_t fileLimit = 65536;

/// The kernel's own files report size 0; never write into any other file.
bool isKernelFile(int descriptor) {
    struct stat facts{};
    return ::fstat(descriptor, &facts) == 0 && facts.st_size == 0;
}

/// The file with the trigger set; empty where the kernel refuses, as it does to ordinary users before about 6.4.
FileDescriptor placeTrigger(const std::string& file) {
    auto order = FileDescriptor::open(file, O_RDWR | O_NONBLOCK);
    if (!order || !isKernelFile(order.get())) return {};
    // The kernel expects the NUL too.
    if (::write(order.get(), trigger.data(), trigger.size() + 1) < 0) return {};
    return order;
}

}  // namespace

class PSIMemoryPressure::Watch : public std::enable_shared_from_this<Watch> {
public:
    explicit Watch(Settings settings) : settings_(std::move(settings)) {}

    std::uint64_t add(std::function<void()> pressed) {
        observers_.emplace(next_, std::move(pressed));
        if (observers_.size() == 1) start();
        return next_++;
    }

    void remove(std::uint64_t number) {
        observers_.erase(number);
        if (observers_.empty()) stop();
    }

private:
    void start() {
        trigger_ = placeTrigger(settings_.file);
        if (!trigger_ || !isPollable()) return startPolling();
        notifier_ = std::make_unique<QSocketNotifier>(trigger_.get(), QSocketNotifier::Exception);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { triggered(); });
    }

    void stop() {
        // This may run inside their own signals.
        if (notifier_) notifier_->setEnabled(false);
        if (notifier_) notifier_.release()->deleteLater();
        if (timer_) timer_->stop();
        if (timer_) timer_.release()->deleteLater();
        trigger_ = FileDescriptor();
    }

    /// The events that poll reports now; 0 on error. A plain file is always readable.
    short events() const {
        pollfd state{.fd = trigger_.get(), .events = POLLPRI, .revents = 0};
        return ::poll(&state, 1, 0) < 0 ? short{POLLERR} : state.revents;
    }

    bool isPollable() const { return (events() & (POLLERR | POLLNVAL)) == 0; }

    void triggered() {
        // An error means that the kernel dropped the trigger; it would be reported for ever.
        if ((events() & (POLLERR | POLLNVAL)) != 0) {
            stop();
            return startPolling();
        }
        tellAll();
    }

    void startPolling() {
        if (!averages()) return;
        timer_ = std::make_unique<QTimer>();
        timer_->setTimerType(Qt::CoarseTimer);
        QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { poll(); });
        timer_->start(settings_.pollInterval);
    }

    void poll() {
        const auto now = averages();
        if (now && now->some10 >= pollPercent) tellAll();
    }

    std::optional<PressureAverages> averages() const {
        const auto text = Files::readKernelFile(settings_.file, fileLimit);
        return text ? parsePressure(*text) : std::nullopt;
    }

    /// A subscriber may end another's subscription or begin a new one.
    void tellAll() {
        const auto self = shared_from_this();
        std::vector<std::uint64_t> numbers;
        for (const auto& [number, pressed] : observers_) numbers.push_back(number);
        for (const std::uint64_t number : numbers) {
            const auto found = observers_.find(number);
            if (found == observers_.end()) continue;
            const auto pressed = found->second;
            pressed();
        }
        // The last owner is gone meanwhile; the sender must outlive its signal.
        if (self.use_count() == 1) stop();
    }

    Settings settings_;
    std::map<std::uint64_t, std::function<void()>> observers_;
    std::uint64_t next_ = 0;
    FileDescriptor trigger_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::unique_ptr<QTimer> timer_;
};

PSIMemoryPressure::PSIMemoryPressure(Settings settings) : watch_(std::make_shared<Watch>(std::move(settings))) {}

PSIMemoryPressure::~PSIMemoryPressure() = default;

Subscription PSIMemoryPressure::onPressure(std::function<void()> pressed) {
    const std::uint64_t number = watch_->add(std::move(pressed));
    return Subscription([watch = std::weak_ptr(watch_), number] {
        if (const auto kept = watch.lock()) kept->remove(number);
    });
}

}  // namespace tolvane::linuxhost
