#include "platform/linux/session/LinuxDesktop.h"

#include <gio/gdesktopappinfo.h>

#include <utility>

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

}  // namespace

LinuxDesktop::LinuxDesktop(std::shared_ptr<Launcher> launcher, CopyText copyText)
    : launcher_(std::move(launcher)), copyText_(std::move(copyText)) {}

void LinuxDesktop::open(const std::string& path) {
    const std::string handler = handlerOf(path);
    if (!handler.empty()) launcher_->launch(handler, {path}, [](const auto&) {});
}

void LinuxDesktop::copyText(const std::string& text) {
    if (copyText_) copyText_(text);
}

}  // namespace tolvane::linuxhost
