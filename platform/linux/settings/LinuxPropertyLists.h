#pragma once

#include "platform/PropertyLists.h"

namespace tolvane::linuxhost {

/// Reads property lists, both in XML and in the binary form.
class LinuxPropertyLists : public PropertyLists {
public:
    std::optional<std::string> text(const std::string& path, std::string_view key) override;
};

}  // namespace tolvane::linuxhost
