// Switching processors off and on for this process only. The benchmark runs a
// pass per processor configuration; on Linux the configuration is the affinity
// of every thread of the process, so the machine's real hot-plug (and every
// other program) is never disturbed.
#include "OS.h"

#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <vector>

#include <dirent.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "PlatformFiles.h"
#include "PlatformTest.h"

namespace {

std::mutex sLock;
cpu_state_hook sHook = nullptr;

std::vector<pid_t>
ProcessThreads()
{
	std::vector<pid_t> threads;
	DIR* directory = opendir("/proc/self/task");
	if (directory == nullptr) {
		threads.push_back(static_cast<pid_t>(syscall(SYS_gettid)));
		return threads;
	}
	while (struct dirent* entry = readdir(directory)) {
		char* end = nullptr;
		long tid = strtol(entry->d_name, &end, 10);
		if (end != entry->d_name && *end == '\0' && tid > 0)
			threads.push_back(static_cast<pid_t>(tid));
	}
	closedir(directory);
	return threads;
}

// The kernel's id of the index-th online processor, or -1.
int
KernelCpuId(int32 cpu)
{
	std::vector<int> cpus = platform::OnlineCpus(false);
	if (cpu < 0 || static_cast<size_t>(cpu) >= cpus.size() || cpus[cpu] >= CPU_SETSIZE)
		return -1;
	return cpus[cpu];
}

status_t
SetCpuState(int id, bool enabled)
{
	pid_t self = static_cast<pid_t>(syscall(SYS_gettid));
	cpu_set_t ownMask;
	if (sched_getaffinity(0, sizeof(ownMask), &ownMask) != 0)
		return StatusFromErrno(errno);
	if (!enabled) {
		cpu_set_t remaining = ownMask;
		CPU_CLR(id, &remaining);
		if (CPU_ISSET(id, &ownMask) && CPU_COUNT(&remaining) == 0)
			return B_NOT_ALLOWED;
	}

	// A thread that is being created while we walk the list may copy its
	// creator's old mask: walk again until a walk finds nothing left to change.
	for (int walk = 0; walk < 16; walk++) {
		bool changed = false;
		for (pid_t thread : ProcessThreads()) {
			cpu_set_t mask;
			if (sched_getaffinity(thread, sizeof(mask), &mask) != 0)
				continue; // it has just ended
			if ((CPU_ISSET(id, &mask) != 0) == enabled)
				continue;
			// Every thread gets the processor back, also one that was kept off
			// it before: the process has one configuration, not one per thread.
			if (enabled) {
				CPU_SET(id, &mask);
			} else {
				CPU_CLR(id, &mask);
				// A thread pinned to this processor alone moves with the caller.
				if (CPU_COUNT(&mask) == 0) {
					mask = ownMask;
					CPU_CLR(id, &mask);
				}
			}
			if (sched_setaffinity(thread, sizeof(mask), &mask) == 0)
				changed = true;
			else if (thread == self)
				return StatusFromErrno(errno);
		}
		if (!changed)
			break;
	}
	return B_OK;
}

} // namespace

void
platform_set_cpu_state_hook(cpu_state_hook hook)
{
	std::lock_guard<std::mutex> lock(sLock);
	sHook = hook;
}

status_t
_kset_cpu_state_(int32 cpu, bool enabled)
{
	std::unique_lock<std::mutex> lock(sLock);
	if (sHook != nullptr) {
		cpu_state_hook hook = sHook;
		lock.unlock();
		// The program's own idea of the machine decides what is valid here,
		// so tests can pretend to have four processors.
		system_info info;
		get_system_info(&info);
		if (cpu < 0 || cpu >= info.cpu_count)
			return B_BAD_VALUE;
		return hook(cpu, enabled);
	}
	int id = KernelCpuId(cpu);
	if (id < 0)
		return B_BAD_VALUE;
	return SetCpuState(id, enabled);
}

bool
_kget_cpu_state_(int32 cpu)
{
	int id = KernelCpuId(cpu);
	if (id < 0)
		return false;
	cpu_set_t mask;
	if (sched_getaffinity(0, sizeof(mask), &mask) != 0)
		return false;
	return CPU_ISSET(id, &mask);
}
