#include "platform/linux/session/LinuxDesktop.h"

#include <gio/gdesktopappinfo.h>

#include <filesystem>

#include "base/files/Files.h"
#include "platform/linux/text/ExecLine.h"

namespace tolvane::linuxhost {

namespace {

/// Enough for the signatures that tell file types apart.
constexpr std::size_t sampleSize = 4096;

/// Guesses by the name and, if that is not enough, by the first bytes.
std::string contentType(const std::string& path) {
    if (Files::isFolder(path)) return "inode/directory";
    const std::string sample = Files::readStart(path, sampleSize).value_or("");
    const auto* bytes = reinterpret_cast<const unsigned char*>(sample.data());
    return textOf(g_content_type_guess(path.c_str(), bytes, sample.size(), nullptr));
}

/// The desktop entry of the user's program for a file; empty if there is none.
std::string handlerOf(const std::string& path) {
    const GObjectOwned<GAppInfo> info(g_app_info_get_default_for_type(contentType(path).c_str(), FALSE));
    if (!info || G_IS_DESKTOP_APP_INFO(info.get()) == FALSE) return {};
    const char* file = g_desktop_app_info_get_filename(reinterpret_cast<GDesktopAppInfo*>(info.get()));
    return file == nullptr ? std::string() : std::string(file);
}

void openWith(Launcher& launcher, const std::string& path) {
    const std::string handler = handlerOf(path);
    if (!handler.empty()) launcher.launch(handler, {path}, [](const auto&) {});
}

}  // namespace

LinuxDesktop::LinuxDesktop(std::shared_ptr<SessionBus> bus, std::shared_ptr<Launcher> launcher, CopyText copyText)
    : bus_(std::move(bus)), launcher_(std::move(launcher)), copyText_(std::move(copyText)) {}

void LinuxDesktop::reveal(const std::string& path) {
    const std::string address = fileAddress(path);
    if (address.empty()) return;
    const char* list[] = {address.c_str(), nullptr};
    SessionBus::Call call{.destination = "org.freedesktop.FileManager1",
                          .path = "/org/freedesktop/FileManager1",
                          .interface = "org.freedesktop.FileManager1",
                          .method = "ShowItems",
                          .arguments = taken(g_variant_new("(^ass)", list, ""))};
    bus_->call(std::move(call), [launcher = std::weak_ptr(launcher_), path](const BusAnswer& answer) {
        const auto kept = launcher.lock();
        if (answer.value != nullptr || answer.timedOut || !kept) return;
        openWith(*kept, std::filesystem::path(path).parent_path().string());
    });
}

void LinuxDesktop::open(const std::string& path) { openWith(*launcher_, path); }

void LinuxDesktop::copyText(const std::string& text) {
    if (copyText_) copyText_(text);
}

}  // namespace tolvane::linuxhost
