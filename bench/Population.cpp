// Processes that look like a developer's desktop and mostly sleep, for measurements.
//
//     population N [--groups G] [--stir P] [--threads T]
//
// Each has a program of its own name, 5 to 20 arguments and a folder of its own; 20 % hold 2 to 8 MB, 10 % have 300
// mappings more, 15 % have T threads more (9 unless told), 3 are busy for a twentieth of the time. With groups they
// are spread over so many control groups of the unified hierarchy, where P % of the groups have all their members
// wake twice a second; without groups P % of the processes do. Says "ready" and closes its output when all are there,
// ends on SIGTERM, and its processes with it.

#include <fcntl.h>
#include <ftw.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/linux/processes/ProcCgroup.h"

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

enum class Work { sleeps, busy, stirs };

/// One process's instructions, passed through its environment.
struct Role {
    int number = 0;
    std::size_t megabytes = 0;
    int mappings = 0;
    int threads = 0;
    Work work = Work::sleeps;
    pid_t parent = 0;

    std::string text() const {
        return "POPULATION_ROLE=" + std::to_string(number) + " " + std::to_string(megabytes) + " " +
               std::to_string(mappings) + " " + std::to_string(threads) + " " + std::to_string(static_cast<int>(work)) +
               " " + std::to_string(parent);
    }
    static Role from(const char* text) {
        Role role;
        int work = 0;
        std::sscanf(text, "%d %zu %d %d %d %d", &role.number, &role.megabytes, &role.mappings, &role.threads, &work,
                    &role.parent);
        role.work = static_cast<Work>(work);
        return role;
    }
};

char* anonymousMemory(std::size_t size, int protection) {
    void* memory = ::mmap(nullptr, size, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : static_cast<char*>(memory);
}

void takeMemory(const Role& role) {
    const std::size_t size = role.megabytes << 20;
    if (char* memory = size ? anonymousMemory(size, PROT_READ | PROT_WRITE) : nullptr) std::memset(memory, 1, size);
    for (int count = 0; count < role.mappings; ++count) {
        // Neighbours with the same protection would become one mapping.
        char* memory = anonymousMemory(16384, count % 2 ? PROT_READ : PROT_READ | PROT_WRITE);
        if (memory && count % 2 == 0) *memory = 1;
    }
}

void burn(std::chrono::microseconds span) {
    const auto end = std::chrono::steady_clock::now() + span;
    while (std::chrono::steady_clock::now() < end) {
    }
}

/// Takes a little more memory and gives most of it back.
void moveMemory() {
    constexpr std::size_t size = 65536;
    char* memory = anonymousMemory(size, PROT_READ | PROT_WRITE);
    if (!memory) return;
    std::memset(memory, 1, size);
    ::munmap(memory, size);
}

[[noreturn]] void work(Work kind) {
    for (;;) {
        switch (kind) {
            case Work::sleeps:
                ::pause();
                break;
            case Work::busy:
                burn(1ms);
                std::this_thread::sleep_for(19ms);
                break;
            case Work::stirs:
                burn(200us);
                std::this_thread::sleep_for(500ms);
                moveMemory();
                break;
        }
    }
}

/// Fifty threads with the usual 8 MB of stack each would reach limits; they need almost none.
void* idle(void*) {
    for (;;) ::pause();
}

void startThreads(int count) {
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    ::pthread_attr_setstacksize(&attributes, 65536);
    pthread_t thread{};
    for (int made = 0; made < count; ++made) ::pthread_create(&thread, &attributes, idle, nullptr);
    ::pthread_attr_destroy(&attributes);
}

[[noreturn]] void live(const Role& role) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != role.parent) std::exit(0);
    const std::string name = role.number % 50 ? "app-" + std::to_string(role.number) : "a) b (c";
    ::prctl(PR_SET_NAME, name.c_str());
    takeMemory(role);
    startThreads(role.threads);
    work(role.work);
}

struct Plan {
    int processes = 300;
    int groups = 0;
    int stir = 0;
    int threads = 9;
};

Plan planFrom(int argc, char** argv) {
    Plan plan;
    if (argc > 1) plan.processes = std::atoi(argv[1]);
    for (int index = 2; index + 1 < argc; index += 2) {
        const std::string option = argv[index];
        const int value = std::atoi(argv[index + 1]);
        if (option == "--groups") plan.groups = value;
        if (option == "--stir") plan.stir = value;
        if (option == "--threads") plan.threads = value;
    }
    return plan;
}

/// Programs and folders at the depth they have on a desktop, and the control groups. All removed with this object.
class Place {
public:
    explicit Place(int groups) {
        std::string pattern = (fs::temp_directory_path() / "population.XXXXXX").string();
        root_ = ::mkdtemp(pattern.data());
        fs::permissions(root_, fs::perms(0755));
        for (int number = 0; number < programCount; ++number) makeProgram(number);
        for (int number = 0; number < folderCount; ++number) makeFolder(number);
        std::ifstream mounts("/proc/self/mounts");
        const std::string text{std::istreambuf_iterator<char>(mounts), {}};
        groupRoot_ = std::string(tolvane::linuxhost::cgroupMount(text));
        for (int number = 0; number < groups; ++number) makeGroup(number);
    }
    ~Place() {
        for (const auto& group : groups_) removeGroup(group);
        std::error_code ignored;
        fs::remove_all(root_, ignored);
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    const std::string& program(std::size_t number) const { return programs_[number % programs_.size()]; }
    const std::string& folder(std::size_t number) const { return folders_[number % folders_.size()]; }
    void join(std::size_t group, pid_t pid) const { std::ofstream(groups_[group] + "/cgroup.procs") << pid; }
    std::size_t groups() const { return groups_.size(); }

private:
    static constexpr int programCount = 40;
    static constexpr int folderCount = 64;

    void makeProgram(int number) {
        const fs::path folder = root_ / ("usr/lib/vendor-" + std::to_string(number));
        const fs::path program = folder / ("application-" + std::to_string(number));
        fs::create_directories(folder);
        if (number == 0) {
            fs::copy_file("/proc/self/exe", program);
        } else {
            fs::create_hard_link(programs_.front(), program);
        }
        programs_.push_back(program.string());
    }
    void makeFolder(int number) {
        const fs::path folder = root_ / "home/user/src" / ("project-" + std::to_string(number)) / "packages";
        fs::create_directories(folder);
        folders_.push_back(folder.string());
    }
    void makeGroup(int number) {
        const std::string group =
            groupRoot_ + "/population-" + std::to_string(::getpid()) + "-" + std::to_string(number) + ".scope";
        if (::mkdir(group.c_str(), 0755) == 0) groups_.push_back(group);
    }
    static void removeGroup(const std::string& group) {
        for (int tries = 0; tries < 100 && ::rmdir(group.c_str()) != 0; ++tries) std::this_thread::sleep_for(20ms);
    }

    fs::path root_;
    std::string groupRoot_;
    std::vector<std::string> programs_;
    std::vector<std::string> folders_;
    std::vector<std::string> groups_;
};

class Population {
public:
    Population(const Plan& plan, const Place& place) : plan_(plan), place_(place) {
        for (int number = 0; number < plan.processes; ++number) start(number);
    }
    ~Population() {
        for (const pid_t pid : pids_) ::kill(pid, SIGKILL);
        for (const pid_t pid : pids_) ::waitpid(pid, nullptr, 0);
    }
    Population(const Population&) = delete;
    Population& operator=(const Population&) = delete;

private:
    unsigned draw() { return static_cast<unsigned>(random_() >> 8); }

    Work workOf(int number) {
        const unsigned chance = draw() % 100;
        if (number < 3) return Work::busy;
        const auto groups = place_.groups();
        const auto stir = static_cast<unsigned>(plan_.stir);
        const bool stirs = groups ? static_cast<std::size_t>(number) % groups < groups * stir / 100 : chance < stir;
        return stirs ? Work::stirs : Work::sleeps;
    }

    Role roleOf(int number) {
        Role role{.number = number, .parent = ::getpid()};
        if (draw() % 5 == 0) role.megabytes = 2 + draw() % 7;
        if (draw() % 10 == 0) role.mappings = 300;
        if (draw() % 100 < 15) role.threads = plan_.threads;
        role.work = workOf(number);
        return role;
    }

    std::vector<std::string> argumentsOf(const std::string& program) {
        std::vector<std::string> words{program};
        const unsigned count = 5 + draw() % 16;
        for (unsigned index = 1; index < count; ++index) {
            const std::string number = std::to_string(index);
            words.push_back(index % 3 ? "--option-" + number + "=value-" + std::to_string(draw() % 100000)
                                      : "/home/user/src/file-" + number + ".txt");
        }
        return words;
    }

    void start(int number) {
        const auto index = static_cast<std::size_t>(number);
        auto words = argumentsOf(place_.program(index));
        std::string role = roleOf(number).text();
        std::string path = "PATH=/usr/bin:/bin";
        std::vector<char*> argv;
        for (auto& word : words) argv.push_back(word.data());
        argv.push_back(nullptr);
        char* environment[] = {role.data(), path.data(), nullptr};
        const pid_t pid = ::fork();
        if (pid == 0) run(index, argv.data(), environment);
        if (pid < 0) return;
        if (place_.groups() > 0) place_.join(index % place_.groups(), pid);
        pids_.push_back(pid);
    }

    [[noreturn]] void run(std::size_t index, char** argv, char** environment) const {
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        if (::chdir(place_.folder(index).c_str()) != 0) ::_exit(1);
        // Seven in ten belong to an ordinary user, where that is possible.
        if (::getuid() == 0 && index % 10 >= 3 && (::setgid(1000) != 0 || ::setuid(1000) != 0)) ::_exit(1);
        ::execve(argv[0], argv, environment);
        ::_exit(127);
    }

    Plan plan_;
    const Place& place_;
    std::minstd_rand random_{42};
    std::vector<pid_t> pids_;
};

sigset_t blockedEnding() {
    sigset_t ending;
    ::sigemptyset(&ending);
    ::sigaddset(&ending, SIGTERM);
    ::sigaddset(&ending, SIGINT);
    ::sigprocmask(SIG_BLOCK, &ending, nullptr);
    // The reader of "ready" may have gone; there are still groups and folders to remove.
    ::signal(SIGPIPE, SIG_IGN);
    return ending;
}

}  // namespace

int main(int argc, char** argv) {
    if (const char* role = std::getenv("POPULATION_ROLE")) live(Role::from(role));
    const Plan plan = planFrom(argc, argv);
    const sigset_t ending = blockedEnding();
    ::fcntl(STDOUT_FILENO, F_SETFD, FD_CLOEXEC);
    const Place place(plan.groups);
    const Population population(plan, place);
    std::this_thread::sleep_for(1s);
    std::puts("ready");
    std::fflush(stdout);
    ::close(STDOUT_FILENO);
    int signal = 0;
    ::sigwait(&ending, &signal);
    return 0;
}
