// Nothing to run: compares the host's copies of the kernel's records and numbers with the system's own headers.

#include <dispatch/dispatch.h>
#include <fcntl.h>
#include <libproc.h>
#include <mach/mach.h>
#include <mach/mach_time.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/sysctl.h>

#include <csignal>
#include <cstddef>

#include "platform/ProcessControl.h"
#include "platform/macos/dispatch/DispatchCalls.h"
#include "platform/macos/kernel/KernelNumbers.h"
#include "platform/macos/kernel/KernelRecords.h"

namespace tolvane::machost {

static_assert(sizeof(BSDInfo) == sizeof(proc_bsdinfo) && sizeof(BSDInfo) == PROC_PIDTBSDINFO_SIZE);
static_assert(offsetof(BSDInfo, ppid) == offsetof(proc_bsdinfo, pbi_ppid));
static_assert(offsetof(BSDInfo, uid) == offsetof(proc_bsdinfo, pbi_uid));
static_assert(offsetof(BSDInfo, command) == offsetof(proc_bsdinfo, pbi_comm));
static_assert(offsetof(BSDInfo, name) == offsetof(proc_bsdinfo, pbi_name));
static_assert(sizeof(BSDInfo::name) == sizeof(proc_bsdinfo::pbi_name));
static_assert(offsetof(BSDInfo, startSeconds) == offsetof(proc_bsdinfo, pbi_start_tvsec));
static_assert(offsetof(BSDInfo, startMicroseconds) == offsetof(proc_bsdinfo, pbi_start_tvusec));

static_assert(sizeof(ResourceUsage) == sizeof(rusage_info_v6));
static_assert(offsetof(ResourceUsage, userTime) == offsetof(rusage_info_v6, ri_user_time));
static_assert(offsetof(ResourceUsage, systemTime) == offsetof(rusage_info_v6, ri_system_time));
static_assert(offsetof(ResourceUsage, physicalFootprint) == offsetof(rusage_info_v6, ri_phys_footprint));
static_assert(offsetof(ResourceUsage, lifetimeMaximumFootprint) ==
              offsetof(rusage_info_v6, ri_lifetime_max_phys_footprint));
static_assert(offsetof(ResourceUsage, performanceUserTime) == offsetof(rusage_info_v6, ri_user_ptime));
static_assert(offsetof(ResourceUsage, performanceSystemTime) == offsetof(rusage_info_v6, ri_system_ptime));

static_assert(sizeof(VnodePathInfo) == sizeof(proc_vnodepathinfo));
static_assert(sizeof(VnodePathInfo) == PROC_PIDVNODEPATHINFO_SIZE);
static_assert(offsetof(VnodePathInfo, folderPath) == offsetof(proc_vnodepathinfo, pvi_cdir.vip_path));
static_assert(sizeof(VnodePathInfo::folderPath) == sizeof(vnode_info_path::vip_path));

// Later systems append fields; our copy is that of macOS 15.
static_assert(sizeof(TaskMemory) >= offsetof(task_vm_info, ledger_swapins) + sizeof(task_vm_info::ledger_swapins));
static_assert(offsetof(TaskMemory, compressed) == offsetof(task_vm_info, compressed));
static_assert(offsetof(TaskMemory, ledgerSwapIns) == offsetof(task_vm_info, ledger_swapins));

static_assert(sizeof(Descriptor) == sizeof(proc_fdinfo) && sizeof(Descriptor) == PROC_PIDLISTFD_SIZE);
static_assert(offsetof(Descriptor, number) == offsetof(proc_fdinfo, proc_fd));
static_assert(offsetof(Descriptor, type) == offsetof(proc_fdinfo, proc_fdtype));

static_assert(sizeof(SocketInfo) == sizeof(socket_fdinfo) && sizeof(SocketInfo) == PROC_PIDFDSOCKETINFO_SIZE);
static_assert(offsetof(SocketInfo, kind) == offsetof(socket_fdinfo, psi.soi_kind));
static_assert(offsetof(SocketInfo, localPort) == offsetof(socket_fdinfo, psi.soi_proto.pri_tcp.tcpsi_ini.insi_lport));
static_assert(offsetof(SocketInfo, state) == offsetof(socket_fdinfo, psi.soi_proto.pri_tcp.tcpsi_state));

static_assert(sizeof(SwapSpace) == sizeof(xsw_usage));
static_assert(offsetof(SwapSpace, total) == offsetof(xsw_usage, xsu_total));
static_assert(offsetof(SwapSpace, used) == offsetof(xsw_usage, xsu_used));

static_assert(sizeof(MachineMemory) >= sizeof(vm_statistics64));
static_assert(offsetof(MachineMemory, wired) == offsetof(vm_statistics64, wire_count));
static_assert(offsetof(MachineMemory, purgeable) == offsetof(vm_statistics64, purgeable_count));
static_assert(offsetof(MachineMemory, swapIns) == offsetof(vm_statistics64, swapins));
static_assert(offsetof(MachineMemory, compressor) == offsetof(vm_statistics64, compressor_page_count));
static_assert(offsetof(MachineMemory, internal) == offsetof(vm_statistics64, internal_page_count));
static_assert(offsetof(MachineMemory, uncompressedInCompressor) ==
              offsetof(vm_statistics64, total_uncompressed_pages_in_compressor));

static_assert(sizeof(CoreTicks) == sizeof(host_cpu_load_info) && CoreTicks{}.size() == HOST_CPU_LOAD_INFO_COUNT);
static_assert(CPU_STATE_USER == 0 && CPU_STATE_SYSTEM == 1 && CPU_STATE_IDLE == 2 && CPU_STATE_NICE == 3);
static_assert(sizeof(Timebase) == sizeof(mach_timebase_info_data_t));

static_assert(listDescriptors == PROC_PIDLISTFDS && shortBSDInfo == PROC_PIDTBSDINFO);
static_assert(vnodePaths == PROC_PIDVNODEPATHINFO && socketInfo == PROC_PIDFDSOCKETINFO);
static_assert(resourceUsageVersion == RUSAGE_INFO_V6);
static_assert(socketDescriptor == PROX_FDTYPE_SOCKET && tcpSocket == SOCKINFO_TCP && listeningState == TSI_S_LISTEN);
static_assert(kernelName == CTL_KERN && argumentsName == KERN_PROCARGS2);
static_assert(taskMemoryFlavour == TASK_VM_INFO && machineMemoryFlavour == HOST_VM_INFO64);
static_assert(coreLoadFlavour == PROCESSOR_CPU_LOAD_INFO);
static_assert(darwinProcess == PRIO_DARWIN_PROCESS && backgroundPriority == PRIO_DARWIN_BG);
static_assert(appendToLog == (O_WRONLY | O_CREAT | O_APPEND) && logMode == 0644);
static_assert(ownSession == POSIX_SPAWN_SETSID && closeByDefault == POSIX_SPAWN_CLOEXEC_DEFAULT);
static_assert(static_cast<int>(Signal::terminate) == SIGTERM && static_cast<int>(Signal::kill) == SIGKILL);
static_assert(pressureWarning == DISPATCH_MEMORYPRESSURE_WARN && pressureCritical == DISPATCH_MEMORYPRESSURE_CRITICAL);

}  // namespace tolvane::machost
