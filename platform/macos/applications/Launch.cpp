#include "platform/macos/applications/Launch.h"

#include <utility>

#include "platform/macos/objc/Observation.h"

namespace tolvane::machost {

namespace {

constexpr Seconds patience{3};

constexpr std::uint32_t fourCharacters(const char (&text)[5]) {
    std::uint32_t code = 0;
    for (int index = 0; index < 4; ++index) code = code << 8U | static_cast<unsigned char>(text[index]);
    return code;
}

/// While the program finishes launching, the current event is its first one.
bool startedByLogin(const Runtime& runtime) {
    const Pool pool(runtime);
    const Id events = runtime.send(runtime.classNamed("NSAppleEventManager"), "sharedAppleEventManager");
    const Id event = runtime.send(events, "currentAppleEvent");
    if (runtime.send<std::uint32_t>(event, "eventID") != fourCharacters("oapp")) return false;
    const Id how = runtime.send(event, "paramDescriptorForKeyword:", fourCharacters("prdt"));
    return runtime.send<std::uint32_t>(how, "enumCodeValue") == fourCharacters("lgit");
}

}  // namespace

Launch::Launch(const ObjC& runtime, Clock& clock, Told told) : told_(std::move(told)) {
    const Pool pool(*runtime);
    const Id center = runtime->send(runtime->classNamed("NSNotificationCenter"), "defaultCenter");
    news_ = observe(runtime, center, "NSApplicationDidFinishLaunchingNotification",
                    [this, runtime](Id) { tell(startedByLogin(*runtime)); });
    patience_ = clock.after(patience, Seconds{1}, [this] { tell(false); });
}

void Launch::tell(bool atLogin) {
    if (const auto told = std::exchange(told_, nullptr)) told(atLogin);
}

}  // namespace tolvane::machost
