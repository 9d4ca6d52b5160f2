#include "platform/macos/PictureOfIcon.h"

#include <array>

#include "platform/macos/objc/Foundation.h"

namespace tolvane::machost {

namespace {

constexpr double pictureSize = 64;
/// What bitmaps call the PNG format.
constexpr std::uint64_t pngFormat = 4;

/// Of the sizes that an icon has, the one that is made for `pictureSize`.
Id drawingOf(const Runtime& runtime, Id image) {
    // Left, bottom, width, height.
    std::array<double, 4> area = {0, 0, pictureSize, pictureSize};
    return runtime.send(image, "CGImageForProposedRect:context:hints:", static_cast<void*>(area.data()), Id{}, Id{});
}

Id pngOf(const Runtime& runtime, Id bitmap) {
    const Id none = runtime.send(runtime.classNamed("NSDictionary"), "dictionary");
    return runtime.send(bitmap, "representationUsingType:properties:", pngFormat, none);
}

}  // namespace

bool writePictureOfIcon(const Runtime& runtime, std::string_view path, std::string_view picture) {
    const Pool pool(runtime);
    const Id workspace = runtime.send(runtime.classNamed("NSWorkspace"), "sharedWorkspace");
    const Id image = runtime.send(workspace, "iconForFile:", Foundation::string(runtime, path));
    const Id drawing = drawingOf(runtime, image);
    if (drawing == nullptr) return false;
    const Id unmade = runtime.send(runtime.classNamed("NSBitmapImageRep"), "alloc");
    const Id bitmap = runtime.send(runtime.send(unmade, "initWithCGImage:", drawing), "autorelease");
    return runtime.send<bool>(pngOf(runtime, bitmap), "writeToFile:atomically:", Foundation::string(runtime, picture),
                              true);
}

}  // namespace tolvane::machost
