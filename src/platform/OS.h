// Kernel services with BeOS names and meanings: threads, time, the system
// profile and switching processors on and off.
#ifndef OS_H
#define OS_H

#include "SupportDefs.h"

#define B_OS_NAME_LENGTH 32
#define B_FILE_NAME_LENGTH 256
#define B_PATH_NAME_LENGTH 1024
#define B_MAX_CPU_COUNT 256

typedef int32 thread_id;
typedef int32 team_id;
typedef int32 sem_id;
typedef int32 (*thread_func)(void*);

enum {
	B_LOW_PRIORITY = 5,
	B_NORMAL_PRIORITY = 10,
	B_DISPLAY_PRIORITY = 15,
	B_URGENT_DISPLAY_PRIORITY = 20,
	B_REAL_TIME_DISPLAY_PRIORITY = 100,
	B_URGENT_PRIORITY = 110,
	B_REAL_TIME_PRIORITY = 120,
};

typedef enum {
	B_THREAD_RUNNING = 1,
	B_THREAD_READY,
	B_THREAD_RECEIVING,
	B_THREAD_ASLEEP,
	B_THREAD_SUSPENDED,
	B_THREAD_WAITING,
} thread_state;

typedef struct {
	thread_id thread;
	team_id team;
	char name[B_OS_NAME_LENGTH];
	thread_state state;
	int32 priority;
	sem_id sem;
	bigtime_t user_time;
	bigtime_t kernel_time;
	void* stack_base;
	void* stack_end;
} thread_info;

// Threads have positive ids, never reused in a run. Threads that spawn_thread
// did not make (the main thread, std::thread) get an id when they ask for
// their own (find_thread(nullptr)); they can be suspended but neither killed
// nor waited for (B_NOT_ALLOWED), and their id goes when they end.
//
// States from get_thread_info:
//   B_THREAD_SUSPENDED  spawned and not yet started, or suspended
//   B_THREAD_ASLEEP     inside snooze
//   B_THREAD_WAITING    inside wait_for_thread; blocked in the kernel outside
//                       this layer; or finished and not yet waited for
//   B_THREAD_RUNNING    runnable (on a processor or ready for one)
// A finished thread stays known, with its exit value, until wait_for_thread
// reaps it; of the finished threads nobody waits for, the 4096 most recent
// are kept and older ones forgotten.

// Threads start suspended, at a start gate: resume_thread (or wait_for_thread)
// lets them run. Priorities are clamped to 1..120 and recorded; below
// B_NORMAL_PRIORITY the thread's nice value goes up by 2 per step.
thread_id spawn_thread(thread_func func, const char* name, int32 priority, void* data);
// Starts a spawned thread or lifts a suspension; B_BAD_THREAD_STATE for a
// thread that is running or finished.
status_t resume_thread(thread_id thread);
// Stops a running thread where it is (by a signal) and returns once it has
// stopped. A thread inside one of this layer's calls stops when it leaves the
// call, so a blocked thread sleeps on and stops when it wakes. Like the
// original, it may stop a thread that holds a lock (malloc's included): the
// caller must not need such a lock before resuming it. A thread at its start
// gate stays there (B_OK); B_BAD_THREAD_STATE for a finished thread.
status_t suspend_thread(thread_id thread);
// Takes the thread out of the registry at once (its id answers
// B_BAD_THREAD_ID from then on, also to threads already waiting for it) and
// ends it at its next blocking call of this layer: the start gate (the body
// never runs), snooze or wait_for_thread. There the thread leaves by
// pthread_exit: its stack unwinds and the destructors of its frames run, so
// those blocking calls must not be made from noexcept code (destructors
// included) on a thread that may be killed, nor inside catch (...) without a
// rethrow. A thread that never blocks there runs on, unreachable, until its
// body returns or the process ends. A suspended thread that is killed is
// never resumed: it stays stopped until the process ends (unwinding code that
// stopped at an arbitrary point is not safe). A thread killing itself ends at
// its next blocking call. B_BAD_THREAD_ID for a thread that has finished.
status_t kill_thread(thread_id thread);
// Starts a thread that was never resumed, waits for its end, hands back its
// exit value and forgets the thread. B_NOT_ALLOWED for the caller itself.
status_t wait_for_thread(thread_id thread, status_t* exitValue);
status_t get_thread_info(thread_id thread, thread_info* info);
// Answers the previous priority, or B_BAD_THREAD_ID.
status_t set_thread_priority(thread_id thread, int32 newPriority);
// The calling thread's id for a null name, else the first live thread of that name.
thread_id find_thread(const char* name);
// Sleeps on a monotonic clock; a killed thread ends here.
status_t snooze(bigtime_t microseconds);

// Microseconds on a monotonic clock.
bigtime_t system_time();


typedef enum cpu_types {
	B_CPU_PPC_601 = 1,
	B_CPU_PPC_603 = 2,
	B_CPU_PPC_603e = 3,
	B_CPU_PPC_604 = 4,
	B_CPU_PPC_604e = 5,
	B_CPU_PPC_686 = 13,
	B_CPU_AMD_29K = 14,
	B_CPU_X86 = 15,
	B_CPU_MC6502 = 16,
	B_CPU_Z80 = 17,
	B_CPU_ALPHA = 18,
	B_CPU_MIPS = 19,
	B_CPU_HPPA = 20,
	B_CPU_M68K = 21,
	B_CPU_ARM = 22,
	B_CPU_SH = 23,
	B_CPU_SPARC = 24,

	B_CPU_INTEL_X86 = 0x1000,
	B_CPU_INTEL_PENTIUM = 0x1051,
	B_CPU_INTEL_PENTIUM75,
	B_CPU_INTEL_PENTIUM_486_OVERDRIVE,
	B_CPU_INTEL_PENTIUM_MMX,
	B_CPU_INTEL_PENTIUM_MMX_MODEL_4 = B_CPU_INTEL_PENTIUM_MMX,
	B_CPU_INTEL_PENTIUM_MMX_MODEL_8 = 0x1058,
	B_CPU_INTEL_PENTIUM75_486_OVERDRIVE,
	B_CPU_INTEL_PENTIUM_PRO = 0x1061,
	B_CPU_INTEL_PENTIUM_II = 0x1063,
	B_CPU_INTEL_PENTIUM_II_MODEL_3 = 0x1063,
	B_CPU_INTEL_PENTIUM_II_MODEL_5 = 0x1065,

	B_CPU_AMD_X86 = 0x1100,
	B_CPU_AMD_K5_MODEL0 = 0x1150,
	B_CPU_AMD_K5_MODEL1,
	B_CPU_AMD_K5_MODEL2,
	B_CPU_AMD_K5_MODEL3,
	B_CPU_AMD_K6_MODEL6 = 0x1156,
	B_CPU_AMD_K6_MODEL7,
	B_CPU_AMD_K6_MODEL8,
	B_CPU_AMD_K6_MODEL9,

	B_CPU_CYRIX_X86 = 0x1200,
	B_CPU_CYRIX_GXm = 0x1254,
	B_CPU_CYRIX_6x86MX = 0x1260,
} cpu_type;

typedef enum platform_types {
	B_BEBOX_PLATFORM = 0,
	B_MAC_PLATFORM,
	B_AT_CLONE_PLATFORM,
	B_ENIAC_PLATFORM,
	B_APPLE_II_PLATFORM,
	B_CRAY_PLATFORM,
	B_LISA_PLATFORM,
	B_TI_994A_PLATFORM,
	B_TIMEX_SINCLAIR_PLATFORM,
	B_ORAC_1_PLATFORM,
	B_HAL_PLATFORM,
	B_BESM_6_PLATFORM,
	B_MK_61_PLATFORM,
	B_NINTENDO_64_PLATFORM,
	// Machines that are none of the above (an ARM board, a POWER server).
	B_UNKNOWN_PLATFORM = 0xff,
} platform_type;

typedef struct {
	bigtime_t active_time;
} cpu_info;

typedef int32 machine_id[2];

typedef struct {
	machine_id id;
	bigtime_t boot_time;
	int32 cpu_count;
	enum cpu_types cpu_type; // the tag: a member may not reuse the typedef's name
	int32 cpu_revision;
	cpu_info cpu_infos[B_MAX_CPU_COUNT];
	int64 cpu_clock_speed;
	int64 bus_clock_speed;
	enum platform_types platform_type;
	int32 max_pages;
	int32 used_pages;
	int32 page_faults;
	int32 max_sems;
	int32 used_sems;
	int32 max_ports;
	int32 used_ports;
	int32 max_threads;
	int32 used_threads;
	int32 max_teams;
	int32 used_teams;
	char kernel_name[B_FILE_NAME_LENGTH];
	char kernel_build_date[B_OS_NAME_LENGTH];
	char kernel_build_time[B_OS_NAME_LENGTH];
	int64 kernel_version;
} system_info;

status_t get_system_info(system_info* info);

// Switches one processor off or on for this process: "off" removes it from the
// affinity of every thread of the process (threads created later inherit it),
// "on" adds it back. The machine's real processor hot-plug is never touched.
status_t _kset_cpu_state_(int32 cpu, bool enabled);
// Whether the processor is in this process's affinity.
bool _kget_cpu_state_(int32 cpu);

#endif // OS_H
