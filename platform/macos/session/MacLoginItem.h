#pragma once

#include "platform/LoginItem.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The program's own entry among the login items.
class MacLoginItem : public LoginItem {
public:
    explicit MacLoginItem(ObjC runtime);

    LoginStatus status() const override;
    std::optional<std::string> enroll() override;
    std::optional<std::string> withdraw() override;
    void openSettings() override;

private:
    Id service() const;
    std::optional<std::string> change(const char* selector) const;

    ObjC runtime_;
};

}  // namespace tolvane::machost
