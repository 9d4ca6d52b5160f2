#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace tolvane::linuxhost::testing {

/// A real editor under a name that the test chooses, with its own program file and entry.
class Editor {
public:
    explicit Editor(const std::string& identifier)
        : program_(variable("XDG_DATA_HOME") + "/programs/" + identifier),
          entry(variable("XDG_DATA_HOME") + "/applications/" + identifier + ".desktop") {
        for (const std::string& file : {program_, entry})
            std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::filesystem::copy_file("/usr/bin/mousepad", program_, std::filesystem::copy_options::overwrite_existing);
        std::ofstream(entry) << "[Desktop Entry]\nType=Application\nName=" << identifier << "\nExec=" << program_
                             << "\n";
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor() { end(); }

    /// Opens a window for each file, or one empty window without files.
    void start(const std::vector<std::string>& files = {}) {
        std::vector<const char*> words = {program_.c_str(), "--disable-server", "--opening-mode=window"};
        for (const auto& file : files) words.push_back(file.c_str());
        words.push_back(nullptr);
        EXPECT_EQ(::posix_spawn(&pid_, program_.c_str(), nullptr, nullptr, const_cast<char**>(words.data()), environ),
                  0);
    }
    pid_t pid() const { return pid_; }
    /// Whether it exited by itself with status 0.
    bool hasExited() {
        int status = -1;
        const bool isOver = pid_ > 0 && ::waitpid(pid_, &status, 0) == pid_;
        pid_ = 0;
        return isOver && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    void end() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGKILL);
        ::waitpid(std::exchange(pid_, 0), nullptr, 0);
    }

private:
    static std::string variable(const char* name) { return std::getenv(name); }

    std::string program_;
    pid_t pid_ = 0;

public:
    std::string entry;
};

}  // namespace tolvane::linuxhost::testing
