// Substitutions for tests and tools: point the platform at fixture trees, a
// chosen system profile or chosen directories instead of the real machine.
// Each setter with a null argument restores the real source.
#ifndef PLATFORM_TEST_H
#define PLATFORM_TEST_H

#include "FindDirectory.h"
#include "GraphicsDefs.h"
#include "OS.h"

class BRect;

// Root under which /proc and /sys are read ("" or null: the real root).
void platform_set_root(const char* root);
const char* platform_root();

// get_system_info answers this record (copied) instead of reading the machine.
void platform_set_system_info(const system_info* info);

// find_directory answers this path for the code.
void platform_set_directory(directory_which which, const char* path);

// _kset_cpu_state_ calls this instead of changing the affinity.
typedef status_t (*cpu_state_hook)(int32 cpu, bool enabled);
void platform_set_cpu_state_hook(cpu_state_hook hook);

// BScreen objects made from now on answer this frame and colour space instead
// of asking the display.
void platform_set_screen(const BRect* frame, color_space space);

// Makes every extended-attribute call fail as on a file system without them, so
// node attributes go to the per-user fallback store (false: the real calls).
void platform_set_xattr_disabled(bool disabled);

// The directory that stands for "/tmp" where the program uses fixed names
// there (platform_tmp_directory).
void platform_set_tmp_directory(const char* path);

// The user id the program counts as its own when it checks who owns a file
// (a negative id: the effective user again). Lets a test meet "another
// user's" file without changing owners.
void platform_set_user_id(int64 uid);

// The directories (colon-separated) BMailMessage looks in for sendmail and
// xdg-email instead of PATH, /usr/sbin and /usr/lib (null: those again).
void platform_set_mail_tool_path(const char* directories);

// How many finished, never waited-for threads stay known (0: the default).
void platform_set_finished_thread_limit(int32 limit);

#endif // PLATFORM_TEST_H
