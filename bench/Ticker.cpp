// The whole program but its screens: every step of a tick, once a second, over the processes that are there.
//
//     ticker [INTERVAL_SECONDS]     0 for the pace of a closed window; until it is ended

#include <QCoreApplication>
#include <cstdlib>
#include <functional>

#include "app/model/AppModel.h"
#include "app/preferences/LayeredPreferences.h"
#include "platform/linux/makeLinuxHost.h"
#include "platform/linux/session/QuitSignals.h"

namespace {

using namespace tolvane;

/// Stands for a window that is always visible, or for none.
class OneWindow : public Windows {
public:
    explicit OneWindow(bool visible) : visible_(visible) {}

    bool anyVisible() const override { return visible_; }
    Subscription onChange(std::function<void()> changed) override {
        changed_ = std::move(changed);
        return {};
    }
    void open() { changed_(); }

private:
    bool visible_;
    std::function<void()> changed_;
};

}  // namespace

int main(int argc, char** argv) {
    const long interval = argc > 1 ? std::atol(argv[1]) : 1;
    auto host = linuxhost::makeLinuxHost(linuxhost::processEnvironment(),
                                         LayeredPreferences::layer({{"openInterval", std::int64_t{interval}}}));
    QCoreApplication application(argc, argv);
    OneWindow window(interval > 0);
    const AppModel model(host, window, false);
    window.open();
    const auto quit = linuxhost::onQuitSignal([] { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}
