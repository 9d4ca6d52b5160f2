#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string_view>

#include "platform/Text.h"

namespace tolvane::json {

/// Gives texts that were given lately once more instead of making them anew: names in a log repeat. Of fixed size; a
/// text that is pushed out is made again.
class TextCache {
public:
    Text text(std::string_view wanted) {
        Text& known = known_[std::hash<std::string_view>{}(wanted) % known_.size()];
        if (known != wanted) known = Text(wanted);
        return known;
    }

private:
    std::array<Text, 4096> known_;
};

}  // namespace tolvane::json
