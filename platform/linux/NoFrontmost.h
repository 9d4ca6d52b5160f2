#pragma once

#include "platform/Applications.h"

namespace tolvane::linuxhost {

/// For desktops that do not tell who is in front.
class NoFrontmost : public Frontmost {
public:
    bool canTell() const override { return false; }
    std::optional<FrontmostApplication> current() const override { return std::nullopt; }
    Subscription onActivation(std::function<void(std::string)>) override { return {}; }
};

}  // namespace tolvane::linuxhost
