#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "tests/platform/linux/MockProc.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define TOLVANE_ALLOCATOR_IS_TAKEN
#endif
#endif

#ifndef TOLVANE_ALLOCATOR_IS_TAKEN
namespace {

thread_local std::size_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace tolvane::linuxhost {

using testing::MockProc;

namespace {

std::size_t allocationsOfASweep(ProcessInspection& inspection) {
    const auto before = allocations;
    for (const Pid pid : inspection.allPids()) {
        if (!inspection.bsdRecord(pid)) continue;
        inspection.usage(pid);
        inspection.executablePath(pid);
        inspection.memoryRecord(pid);
        inspection.workingDirectory(pid);
        inspection.belongsToSystem(pid);
    }
    return allocations - before;
}

}  // namespace

TEST(SteadySweep, allocatesNothingButTheListThatItGives) {
    MockProc proc;
    proc.mountGroups();
    proc.setUsage("/a.scope", 1);
    proc.setUsage("/b.scope", 1);
    proc.write("vmstat", "pswpin 0\n");
    for (Pid pid = 10; pid < 60; ++pid) proc.put({.pid = pid, .group = pid % 2 ? "/a.scope" : "/b.scope"});
    auto options = proc.options();
    options.observer = {};
    LinuxProcessInspection inspection(options);
    for (int count = 0; count < 3; ++count) allocationsOfASweep(inspection);
    for (std::uint64_t count = 2; count < 20; ++count) {
        proc.setUsage("/a.scope", count);
        EXPECT_EQ(allocationsOfASweep(inspection), 1u);
    }
}

}  // namespace tolvane::linuxhost
#endif
