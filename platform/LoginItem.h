#pragma once

#include <optional>
#include <string>

namespace tolvane {

enum class LoginStatus { notRegistered = 0, enabled = 1, requiresApproval = 2, notFound = 3 };

/// Whether this program starts when the user logs in. Main thread.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    virtual LoginStatus status() const = 0;
    /// Nullopt on success, otherwise the host's message for what went wrong.
    virtual std::optional<std::string> enroll() = 0;
    virtual std::optional<std::string> withdraw() = 0;
    /// Opens the host's own settings for login items, if it has any.
    virtual void openSettings() = 0;
};

}  // namespace tolvane
