#include "platform/macos/applications/MacApplications.h"

#include <utility>

#include "base/files/Files.h"
#include "platform/macos/applications/AppBundlePath.h"
#include "platform/macos/objc/Foundation.h"
#include "platform/macos/session/PictureOfIcon.h"

namespace tolvane::machost {

namespace {

constexpr std::string_view appSuffix = ".app";

std::string withoutAppSuffix(std::string name) {
    for (auto found = name.find(appSuffix); found != std::string::npos; found = name.find(appSuffix, found)) {
        name.erase(found, appSuffix.size());
    }
    return name;
}

/// A path as one file name: every character that is not an ASCII letter or digit becomes its number.
std::string fileNameOf(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string name;
    for (const char each : path) {
        const auto byte = static_cast<unsigned char>(each);
        const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
        if (plain) {
            name += each;
        } else {
            name.append({'_', digits[byte >> 4U], digits[byte & 0xFU]});
        }
    }
    return name;
}

/// File names have a maximum length; longer paths keep their last part.
std::string pictureName(std::string_view path) {
    constexpr std::size_t longest = 200;
    const auto name = fileNameOf(path);
    return (name.size() > longest ? name.substr(name.size() - longest) : name) + ".png";
}

}  // namespace

MacApplications::MacApplications(ObjC runtime, std::string iconFolder)
    : runtime_(std::move(runtime)), iconFolder_(std::move(iconFolder)) {}

std::optional<Text> MacApplications::appPath(Pid /*pid*/, std::string_view executable) {
    const auto path = appBundlePath(executable);
    if (!path) return std::nullopt;
    return Text(*path);
}

std::optional<Text> MacApplications::appID(std::string_view appPath) {
    const Pool pool(*runtime_);
    const Id unmade = runtime_->send(runtime_->classNamed("NSBundle"), "alloc");
    const auto bundle =
        Owned::adopt(runtime_, runtime_->send(unmade, "initWithPath:", Foundation::string(*runtime_, appPath)));
    const auto identifier = Foundation::text(*runtime_, runtime_->send(bundle.get(), "bundleIdentifier"));
    if (!identifier) return std::nullopt;
    return Text(*identifier);
}

std::string MacApplications::displayName(std::string_view appPath) {
    const Pool pool(*runtime_);
    const Id files = runtime_->send(runtime_->classNamed("NSFileManager"), "defaultManager");
    const Id name = runtime_->send(files, "displayNameAtPath:", Foundation::string(*runtime_, appPath));
    return withoutAppSuffix(Foundation::text(*runtime_, name).value_or(std::string()));
}

std::string MacApplications::iconName(std::string_view appPath) {
    auto picture = iconFolder_ + "/" + pictureName(appPath);
    if (Files::makeFolder(iconFolder_) || !writePictureOfIcon(*runtime_, appPath, picture)) return {};
    return picture;
}

}  // namespace tolvane::machost
