#include "platform/macos/darwin/DarwinKernelCalls.h"

#include <libproc.h>
#include <mach/mach.h>
#include <mach/mach_time.h>
#include <sys/resource.h>
#include <sys/sysctl.h>
#include <unistd.h>

#include <csignal>

#include "platform/macos/kernel/ActiveCores.h"
#include "platform/macos/kernel/Spawn.h"

namespace tolvane::machost {

namespace {

Timebase readTimebase() {
    mach_timebase_info_data_t base{};
    mach_timebase_info(&base);
    return {.numerator = base.numer, .denominator = base.denom};
}

int coreStatistics(Port host, int flavour, std::uint32_t* cores, const std::uint32_t** block, std::uint32_t* count) {
    processor_info_array_t words = nullptr;
    const int result = host_processor_info(host, flavour, cores, &words, count);
    *block = reinterpret_cast<const std::uint32_t*>(words);
    return result;
}

void addProcesses(KernelCalls& calls) {
    calls.listAllPids = &proc_listallpids;
    calls.pidInfo = &proc_pidinfo;
    calls.descriptorInfo = &proc_pidfdinfo;
    calls.resourceUsage = [](Pid pid, int flavour, void* record) {
        return proc_pid_rusage(pid, flavour, static_cast<rusage_info_t*>(record));
    };
    calls.pidPath = &proc_pidpath;
    calls.systemValue = [](const int* name, unsigned parts, void* value, std::size_t* size) {
        // The call only reads the name, whatever its declaration says.
        return sysctl(const_cast<int*>(name), parts, value, size, nullptr, 0);
    };
    calls.taskName = [](Port own, Pid pid, Port* task) { return task_name_for_pid(own, pid, task); };
    calls.taskInfo = [](Port task, int flavour, void* record, std::uint32_t* count) {
        return task_info(task, static_cast<task_flavor_t>(flavour), static_cast<task_info_t>(record), count);
    };
}

void addMachine(KernelCalls& calls) {
    calls.systemValueByName = [](const char* name, void* value, std::size_t* size) {
        return sysctlbyname(name, value, size, nullptr, 0);
    };
    calls.timebase = &readTimebase;
    calls.hostStatistics64 = [](Port host, int flavour, void* record, std::uint32_t* count) {
        return host_statistics64(host, flavour, static_cast<host_info64_t>(record), count);
    };
    calls.coreStatistics = &coreStatistics;
    calls.ownTask = [] { return Port{mach_task_self()}; };
    calls.machine = [] { return Port{mach_host_self()}; };
    calls.giveBackPort = [](Port own, Port port) { mach_port_deallocate(own, port); };
    calls.giveBackBlock = [](Port own, const std::uint32_t* block, std::size_t size) {
        vm_deallocate(own, reinterpret_cast<vm_address_t>(block), size);
    };
    calls.pageSize = &getpagesize;
}

void addControl(KernelCalls& calls) {
    calls.sendSignal = &::kill;
    calls.setPriority = [](int which, std::uint32_t who, int value) { return ::setpriority(which, who, value); };
    calls.spawn = &spawn;
    calls.ownPid = &::getpid;
    calls.ownUser = &::getuid;
}

}  // namespace

Kernel processKernel(const ObjC& runtime) {
    auto calls = std::make_shared<KernelCalls>();
    addProcesses(*calls);
    addMachine(*calls);
    addControl(*calls);
    calls->activeCores = [runtime] { return activeCores(*runtime); };
    return calls;
}

}  // namespace tolvane::machost
