#include "platform/linux/windows/KWinUpload.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <utility>

#include "base/files/FileDescriptor.h"

namespace tolvane::linuxhost {

namespace {

/// Empty when the file cannot be written.
std::string fileOf(const std::string& folder, const std::string& text) {
    std::string file = folder + "/tolvane-XXXXXX.js";
    constexpr int suffixLength = 3;
    const FileDescriptor descriptor(::mkostemps(file.data(), suffixLength, O_CLOEXEC));
    if (!descriptor) return {};
    if (descriptor.writeAll(text)) return file;
    ::unlink(file.c_str());
    return {};
}

}  // namespace

void KWinUpload::begin(const std::string& folder, const std::string& text, std::function<void(bool)> settled) {
    settled_ = std::move(settled);
    file_ = fileOf(folder, text);
    if (file_.empty()) return settled_(false);
    ask(unloading(), &KWinUpload::load);
}

void KWinUpload::removeFile() {
    if (!file_.empty()) ::unlink(std::exchange(file_, {}).c_str());
}

SessionBus::Call KWinUpload::callOf(const char* method, GVariant* arguments) const {
    return {.destination = kwin_,
            .path = "/Scripting",
            .interface = "org.kde.kwin.Scripting",
            .method = method,
            .arguments = taken(arguments),
            .limit = std::chrono::seconds(5),
            .mayStart = false};
}

SessionBus::Call KWinUpload::unloading() const { return callOf("unloadScript", g_variant_new("(s)", name_.c_str())); }

void KWinUpload::ask(SessionBus::Call call, Step step) {
    bus_->call(std::move(call), [weak = weak_from_this(), step](const BusAnswer& answer) {
        if (const auto self = weak.lock()) (self.get()->*step)(answer);
    });
}

/// It does not matter whether there was a script to unload.
void KWinUpload::load(const BusAnswer& /*unloaded*/) {
    ask(callOf("loadScript", g_variant_new("(ss)", file_.c_str(), name_.c_str())), &KWinUpload::start);
}

void KWinUpload::start(const BusAnswer& loaded) {
    std::int32_t number = -1;
    if (loaded.value != nullptr && g_variant_is_of_type(loaded.value, G_VARIANT_TYPE("(i)")) != FALSE)
        g_variant_get(loaded.value, "(i)", &number);
    if (number < 0) return settled_(false);
    ask(callOf("start", nullptr), &KWinUpload::end);
}

void KWinUpload::end(const BusAnswer& started) { settled_(started.value != nullptr); }

}  // namespace tolvane::linuxhost
