// A snapshot of the machine the benchmark runs on: processor, platform,
// memory, kernel build and main screen, with their display names.
#ifndef LIB_SYS_INFO_H
#define LIB_SYS_INFO_H

#include <SupportDefs.h>

#include "lib/LibString.h"

class LibSysInfo
{
public:
	// Reads the screen and the system profile once; nothing is refreshed later.
	LibSysInfo();
	LibSysInfo(const LibSysInfo& other);
	virtual ~LibSysInfo();

	LibSysInfo& operator=(const LibSysInfo& other);

	// The depth name of the colour space. The text lives in one holder shared
	// by every profile and is overwritten by each call: copy it at once. Not
	// for two threads at a time.
	const char* ScreenDepthStr() const;
	// "<platform> (<cpus>-<cpu>@<cpu MHz>/<bus MHz>MHz) <memory>MB RAM"
	void Description(LibString& out);
	void PrintToStream();

	int32 ColorSpace() const { return fColorSpace; }
	int32 CpuCount() const { return fCpuCount; }
	const char* CpuName() const { return fCpuName; }
	const char* PlatformName() const { return fPlatformName; }
	int32 ScreenWidth() const { return fScreenWidth; }
	int32 ScreenHeight() const { return fScreenHeight; }
	int32 CpuRevision() const { return fCpuRevision; }
	int32 CpuClock() const { return fCpuClock; }
	int32 BusClock() const { return fBusClock; }
	const char* KernelBuild() const { return fKernelBuild; }
	int32 Memory() const { return fMemory; }

private:
	int32 fColorSpace;
	int32 fCpuCount;
	LibString fCpuName;
	LibString fPlatformName;
	int32 fScreenWidth;
	int32 fScreenHeight;
	int32 fCpuRevision;
	int32 fCpuClock;
	int32 fBusClock;
	LibString fKernelBuild;
	int32 fMemory;
};

// The operating system's version text: the pretty name of its release file
// (under the platform root). out is left as it was when there is none.
void LibGetOSVersion(LibString& out);

#endif // LIB_SYS_INFO_H
