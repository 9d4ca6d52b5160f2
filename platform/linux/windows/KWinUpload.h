#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/bus/SessionBus.h"

namespace tolvane::linuxhost {

/// One script on its way into KWin, which takes scripts as files and under a name. Only the user can read the file; it
/// is removed with this object. Main thread.
class KWinUpload : public std::enable_shared_from_this<KWinUpload> {
public:
    /// `kwin` is the unique name of the KWin to load into.
    KWinUpload(std::shared_ptr<SessionBus> bus, std::string kwin, std::string name)
        : bus_(std::move(bus)), kwin_(std::move(kwin)), name_(std::move(name)) {}
    KWinUpload(const KWinUpload&) = delete;
    KWinUpload& operator=(const KWinUpload&) = delete;
    ~KWinUpload() { removeFile(); }

    /// Replaces a script of the same name and starts it. Reports whether KWin took it, unless this object ends first.
    void begin(const std::string& folder, const std::string& text, std::function<void(bool taken)> settled);
    /// The script has run, so KWin no longer needs the file.
    void removeFile();
    SessionBus::Call unloading() const;

private:
    using Step = void (KWinUpload::*)(const BusAnswer& answer);

    SessionBus::Call callOf(const char* method, GVariant* arguments) const;
    void ask(SessionBus::Call call, Step step);
    void load(const BusAnswer& unloaded);
    void start(const BusAnswer& loaded);
    void end(const BusAnswer& started);

    std::shared_ptr<SessionBus> bus_;
    std::string kwin_;
    std::string name_;
    std::string file_;
    std::function<void(bool)> settled_;
};

}  // namespace tolvane::linuxhost
