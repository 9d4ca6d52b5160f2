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
/// Callable from any thread; the host caches answers that are expensive to find.
class Applications {
public:
    virtual ~Applications() = default;

    /// The application that the process belongs to; nullopt for a process that belongs to none, also one in a terminal.
    virtual std::optional<Text> appPath(Pid pid, std::string_view executable) = 0;
    /// The identifier that rules know the application by; nullopt when the path is no application.
    virtual std::optional<Text> appID(std::string_view appPath) = 0;
    /// In the user's language; the last path component when the path is no application.
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

/// Which application is in front, and which comes there. Main thread.
class Frontmost {
public:
    virtual ~Frontmost() = default;

    /// False on desktops that do not report it.
    virtual bool canTell() const = 0;
    /// Nullopt when nothing is in front, or when it is no installed application.
    virtual std::optional<FrontmostApplication> current() const = 0;
    /// Calls back with the path of each application that comes to the front.
    virtual Subscription onActivation(std::function<void(std::string appPath)> activated) = 0;
};

}  // namespace tolvane
