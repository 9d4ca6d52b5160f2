#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/Pid.h"
#include "base/Subscription.h"
#include "base/Text.h"

namespace tolvane {

/// Which application a process belongs to, and what that application is called.
/// An application's path names one installed application: its folder, or the file of its desktop entry.
/// Callable from any thread; answers are remembered by the host where asking is dear.
class Applications {
public:
    virtual ~Applications() = default;

    /// The application that the process belongs to; none for what runs on its own, in a terminal included.
    virtual std::optional<Text> appPath(Pid pid, std::string_view executable) = 0;
    /// The identifier that rules know the application by; none when the path is no application.
    virtual std::optional<Text> appID(std::string_view appPath) = 0;
    /// In the user's language; the last path component for what is no application.
    virtual std::string displayName(std::string_view appPath) = 0;
    /// An icon theme's name or an image's absolute path; empty when it has none.
    virtual std::string iconName(std::string_view appPath) = 0;
};

/// The application that the user looks at.
struct FrontmostApplication {
    std::string appPath;
    std::optional<std::string> appID;

    bool operator==(const FrontmostApplication&) const = default;
};

/// Who is in front, and who comes there. Main thread.
class Frontmost {
public:
    virtual ~Frontmost() = default;

    /// False on desktops that keep this to themselves.
    virtual bool canTell() const = 0;
    /// None when nothing is in front, or when it is no installed application.
    virtual std::optional<FrontmostApplication> current() const = 0;
    /// Calls back with the path of each application that comes to the front.
    virtual Subscription onActivation(std::function<void(std::string appPath)> activated) = 0;
};

}  // namespace tolvane
