#include "platform/macos/session/PictureOfIcon.h"

#include <array>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

constexpr Size pictureSize{.width = 64, .height = 64};
/// The PNG format's number for bitmaps.
constexpr std::uint64_t pngFormat = 4;

/// The image's drawing that is made for this size.
Id drawingOf(const Runtime& runtime, Id image, Size size) {
    // Left, bottom, width, height.
    std::array<double, 4> area = {0, 0, size.width, size.height};
    return runtime.send(image, "CGImageForProposedRect:context:hints:", static_cast<void*>(area.data()), Id{}, Id{});
}

}  // namespace

Id pngOf(const Runtime& runtime, Id image, Size size) {
    const Id drawing = drawingOf(runtime, image, size);
    if (drawing == nullptr) return nullptr;
    const Id unmade = runtime.send(runtime.classNamed("NSBitmapImageRep"), "alloc");
    const Id bitmap = runtime.send(runtime.send(unmade, "initWithCGImage:", drawing), "autorelease");
    const Id none = runtime.send(runtime.classNamed("NSDictionary"), "dictionary");
    return runtime.send(bitmap, "representationUsingType:properties:", pngFormat, none);
}

bool writePictureOfIcon(const Runtime& runtime, std::string_view path, std::string_view picture) {
    const Pool pool(runtime);
    const Id workspace = runtime.send(runtime.classNamed("NSWorkspace"), "sharedWorkspace");
    const Id image = runtime.send(workspace, "iconForFile:", Foundation::string(runtime, path));
    const Id png = pngOf(runtime, image, pictureSize);
    return runtime.send<bool>(png, "writeToFile:atomically:", Foundation::string(runtime, picture), true);
}

}  // namespace tolvane::machost
