#include "platform/linux/session/XDGAutostart.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <system_error>

#include "base/files/Files.h"
#include "base/files/Replacement.h"
#include "platform/linux/processes/ProcFiles.h"
#include "platform/linux/text/DesktopEntry.h"
#include "platform/linux/text/ExecLine.h"
#include "platform/linux/text/GLibOwned.h"
#include "platform/linux/text/Scan.h"

namespace tolvane::linuxhost {

namespace {

constexpr const char* fileName = "dev.tolvane.Tolvane.desktop";
constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;

enum class Entry { absent, off, on };

bool flag(GKeyFile* file, const char* key, bool otherwise) {
    Failure failure;
    const bool value = g_key_file_get_boolean(file, group, key, failure.place()) != FALSE;
    return failure.text().empty() ? value : otherwise;
}

bool isProgramThere(const std::string& exec) {
    const std::string program(programOfCommand(commandOfExec(exec, {})));
    return !program.empty() && !textOf(g_find_program_in_path(program.c_str())).empty();
}

Entry readEntry(const std::string& path) {
    if (::access(path.c_str(), F_OK) != 0) return Entry::absent;
    const GLibOwned<GKeyFile> file(g_key_file_new());
    if (g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE) return Entry::off;
    const bool isOn = !flag(file.get(), "Hidden", false) && flag(file.get(), "X-GNOME-Autostart-enabled", true);
    const bool works = isProgramThere(textOf(g_key_file_get_string(file.get(), group, "Exec", nullptr)));
    return isOn && works ? Entry::on : Entry::off;
}

/// Quotes twice: as a word of an Exec line, and as a value of a key file, which has backslashes of its own.
std::string quotedForExec(const std::string& path) {
    std::string word = "\"";
    for (const char letter : path) {
        if (std::string_view("\"`$\\").find(letter) != std::string_view::npos)
            word += letter == '\\' ? "\\\\\\" : "\\\\";
        word += letter;
        if (letter == '%') word += '%';
    }
    return word + "\"";
}

std::string entryFor(const std::string& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Tolvane\n"
           "Comment=Keeps an eye on memory and processes\n"
           "Exec=" +
           quotedForExec(program) + " " + atLoginSwitch +
           "\n"
           "Icon=dev.tolvane.Tolvane\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

constexpr const char* hiddenEntry =
    "[Desktop Entry]\n"
    "Type=Application\n"
    "Name=Tolvane\n"
    "Hidden=true\n";

/// After an upgrade the path of the running program ends in " (deleted)"; the new program has the same path.
std::string runningProgram(const Environment& environment) {
    if (const auto image = environment("APPIMAGE"); image && image->starts_with('/')) return *image;
    std::string program = executableOf("/proc", ::getpid());
    constexpr std::string_view mark = " (deleted)";
    if (program.ends_with(mark)) program.resize(program.size() - mark.size());
    return program;
}

std::string wordsFor(const std::string& path, const char* what, int error) {
    return path + " could not be " + what + ": " + std::error_code(error, std::generic_category()).message() + ".";
}

}  // namespace

XDGAutostart::Places XDGAutostart::placesFor(const LinuxFolders& folders, const Environment& environment) {
    Places places{
        .folder = folders.configHome() + "/autostart", .systemFolders = {}, .program = runningProgram(environment)};
    const std::string list = environment("XDG_CONFIG_DIRS").value_or("");
    std::string_view rest = list.empty() ? std::string_view("/etc/xdg") : std::string_view(list);
    while (!rest.empty()) {
        const auto folder = Scan::take(rest, ':');
        if (folder.starts_with('/')) places.systemFolders.push_back(std::string(folder) + "/autostart");
    }
    return places;
}

std::string XDGAutostart::userFile() const { return places_.folder + "/" + fileName; }

bool XDGAutostart::isInstalledForAll() const {
    for (const std::string& folder : places_.systemFolders) {
        const Entry entry = readEntry(folder + "/" + fileName);
        if (entry != Entry::absent) return entry == Entry::on;
    }
    return false;
}

LoginStatus XDGAutostart::status() const {
    const Entry own = readEntry(userFile());
    const bool isOn = own == Entry::absent ? isInstalledForAll() : own == Entry::on;
    return isOn ? LoginStatus::enabled : LoginStatus::notRegistered;
}

std::optional<std::string> XDGAutostart::write(const std::string& entry) const {
    const auto failure = [&](int error) { return wordsFor(userFile(), "written", error); };
    if (const auto error = Files::makePrivateFolder(places_.folder)) return failure(error->code);
    Files::Replacement file(userFile(), Files::Access::ownerOnly);
    if (file.write(entry) && file.commit()) return std::nullopt;
    return failure(file.failure());
}

std::optional<std::string> XDGAutostart::enroll() {
    if (places_.program.empty()) return "The program does not know where it is installed.";
    return write(entryFor(places_.program));
}

/// A package's entry cannot be removed, only hidden.
std::optional<std::string> XDGAutostart::withdraw() {
    if (isInstalledForAll()) return write(hiddenEntry);
    if (::unlink(userFile().c_str()) == 0 || errno == ENOENT) return std::nullopt;
    return wordsFor(userFile(), "removed", errno);
}

}  // namespace tolvane::linuxhost
