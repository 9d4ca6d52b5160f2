#pragma once

#include <fstream>
#include <iterator>
#include <regex>
#include <string>
#include <utility>

#include "tests/platform_linux/PrivateBus.h"

namespace tolvane::linuxhost::testing {

inline constexpr const char* scriptingWords =
    "<node><interface name='org.kde.kwin.Scripting'>"
    "<method name='loadScript'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='i' direction='out'/></method>"
    "<method name='unloadScript'><arg type='s' direction='in'/><arg type='b' direction='out'/></method>"
    "<method name='start'/></interface></node>";

/// As much of KWin as a script's life needs: it takes a file under a name once, and runs it at the word "start".
class FakeKWin {
public:
    explicit FakeKWin(const std::string& address, int refusals = 0)
        : refusals_(refusals),
          service(address, "org.kde.KWin", "/Scripting", scriptingWords,
                  [this](const auto& method) { return answer(method); }) {}

    /// What the script does when a window becomes active.
    void activate(const std::string& pid, const std::string& entry, const std::string& windowClass) const {
        service.call({.destination = listener,
                      .path = "/dev/tolvane/Tolvane/Frontmost",
                      .interface = "dev.tolvane.Frontmost",
                      .method = "Activated",
                      .arguments = taken(g_variant_new("(sss)", pid.c_str(), entry.c_str(), windowClass.c_str()))});
    }

    std::string script;
    std::string listener;
    std::string file;
    bool isLoaded = false;

private:
    int refusals_;

public:
    FakeService service;

private:
    GVariant* answer(const std::string& method) {
        if (method == "unloadScript") return g_variant_new("(b)", std::exchange(isLoaded, false) ? TRUE : FALSE);
        if (method == "loadScript") return load();
        // It answers before the script says its first word.
        std::smatch found;
        if (std::regex_search(script, found, std::regex("callDBus\\('([^']+)'"))) listener = found[1];
        return g_variant_new("()");
    }

    GVariant* load() {
        if (isLoaded || refusals_-- > 0) return g_variant_new("(i)", -1);
        const std::string words = service.calls.back().arguments;
        file = words.substr(2, words.find('\'', 2) - 2);
        std::ifstream content(file);
        script = {std::istreambuf_iterator<char>(content), {}};
        isLoaded = true;
        return g_variant_new("(i)", 0);
    }
};

}  // namespace tolvane::linuxhost::testing
