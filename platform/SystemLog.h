#pragma once

#include <string_view>

namespace tolvane {

/// The machine's log; lines appear under the program's name. Any thread; a host without a log drops the line.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    virtual void info(std::string_view category, std::string_view line) = 0;
};

}  // namespace tolvane
