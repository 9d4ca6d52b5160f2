#pragma once

#include "platform/Symbols.h"
#include "platform/macos/objc/Runtime.h"

namespace tolvane::machost {

/// The system's symbols, under the names the program's icons use, with the weight and proportion that the system's own
/// controls give them.
class MacSymbols : public Symbols {
public:
    explicit MacSymbols(ObjC runtime);

    std::optional<SymbolPicture> picture(std::string_view name, int pixels) override;

private:
    ObjC runtime_;
};

}  // namespace tolvane::machost
