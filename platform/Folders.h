#pragma once

#include <optional>
#include <string>

namespace tolvane {

/// Where things are on this host. Absolute paths without a trailing slash, fixed for the run.
class Folders {
public:
    virtual ~Folders() = default;

    virtual std::string home() const = 0;
    /// The folder in which each program keeps a folder of its own data.
    virtual std::string applicationSupport() const = 0;
    /// The folder that follows the user from machine to machine; nullopt when nothing syncs. Looked up on each call,
    /// since such services come and go.
    virtual std::optional<std::string> syncFolder() const = 0;
};

}  // namespace tolvane
