#pragma once

#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <utility>

#include "tests/platform/linux/PrivateBus.h"

namespace tolvane::linuxhost::testing {

/// As much of KWin as a script's life needs: it takes a file under a name once, and runs it on "start". The test does
/// what its scripts would do then.
class FakeKWin {
public:
    static constexpr const char* watching = "dev.tolvane.Tolvane.windows";
    static constexpr const char* closing = "dev.tolvane.Tolvane.close";

    explicit FakeKWin(const std::string& address, int refusals = 0)
        : service_(std::make_unique<FakeService>(address, "org.kde.KWin", "/Scripting", words,
                                                 [this](const auto& method) { return answer(method); })),
          refusals_(refusals) {}

    bool has(const std::string& name) const { return scripts.contains(name); }
    std::vector<std::string> argumentsOf(const std::string& method) const { return service_->argumentsOf(method); }
    bool wasAsked() const { return !service_->calls.empty(); }

    void activate(const std::string& pid, const std::string& entry, const std::string& windowClass) const {
        report("Activated", g_variant_new("(sss)", pid.c_str(), entry.c_str(), windowClass.c_str()));
    }
    void list(const std::string& lines) const { report("Listed", g_variant_new("(s)", lines.c_str())); }
    void close() const { report("Closed", nullptr); }

    /// By name: the scripts it has loaded.
    std::map<std::string, std::string> scripts;
    /// The unique name that the running watching script reports to.
    std::string listener;
    std::string file;

private:
    static constexpr const char* words =
        "<node><interface name='org.kde.kwin.Scripting'>"
        "<method name='loadScript'><arg type='s' direction='in'/><arg type='s' direction='in'/>"
        "<arg type='i' direction='out'/></method>"
        "<method name='unloadScript'><arg type='s' direction='in'/><arg type='b' direction='out'/></method>"
        "<method name='start'/></interface></node>";

    void report(const char* method, GVariant* arguments) const {
        service_->call({.destination = listener,
                        .path = "/dev/tolvane/Tolvane/Windows",
                        .interface = "dev.tolvane.Windows",
                        .method = method,
                        .arguments = taken(arguments)});
    }

    GVariant* answer(const std::string& method) {
        const std::string arguments = service_->calls.back().arguments;
        const auto quote = arguments.find('\'');
        const auto first = method == "start" ? std::string()
                                             : arguments.substr(quote + 1, arguments.find('\'', quote + 1) - quote - 1);
        if (method == "unloadScript") return g_variant_new("(b)", scripts.erase(first) > 0 ? TRUE : FALSE);
        if (method == "loadScript") return load(first, arguments);
        std::smatch found;
        if (has(watching) && std::regex_search(scripts[watching], found, std::regex("bind\\(null, '([^']+)'")))
            listener = found[1];
        return g_variant_new("()");
    }

    GVariant* load(const std::string& path, const std::string& arguments) {
        const auto end = arguments.rfind('\'');
        const auto begin = arguments.rfind('\'', end - 1) + 1;
        const std::string name = arguments.substr(begin, end - begin);
        if (has(name) || refusals_-- > 0) return g_variant_new("(i)", -1);
        file = path;
        std::ifstream content(path);
        scripts[name] = {std::istreambuf_iterator<char>(content), {}};
        return g_variant_new("(i)", 0);
    }

    std::unique_ptr<FakeService> service_;
    int refusals_;
};

}  // namespace tolvane::linuxhost::testing
