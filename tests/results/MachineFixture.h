// Runs made on a chosen machine: a substitute system record, screen and PCI
// bus, so Results::Reset and FillTheseDevices read known values.
#ifndef MACHINE_FIXTURE_H
#define MACHINE_FIXTURE_H

#include <cstring>
#include <string>

#include <OS.h>
#include <PlatformTest.h>
#include <Rect.h>
#include <gtest/gtest.h>

#include "CommandOutput.h"
#include "results/ResultList.h"

class MachineFixture : public testing::Test
{
protected:
	void SetUp() override { UseMachine(2); }

	void TearDown() override
	{
		platform_set_system_info(nullptr);
		platform_set_screen(nullptr, B_NO_COLOR_SPACE);
		platform_set_root(nullptr);
	}

	// "AT Clone (<cpus>-Intel Pentium II@400/100MHz) 128MB RAM", 1024 x 768 at
	// 8 bits, and a bus without devices.
	void UseMachine(int32 cpus)
	{
		system_info info;
		memset(&info, 0, sizeof(info));
		info.cpu_count = cpus;
		info.cpu_type = B_CPU_INTEL_PENTIUM_II;
		info.cpu_revision = 0x0652;
		info.cpu_clock_speed = 400000000;
		info.bus_clock_speed = 100000000;
		info.platform_type = B_AT_CLONE_PLATFORM;
		info.max_pages = 32768;
		platform_set_system_info(&info);
		const BRect frame(0, 0, 1023, 767);
		platform_set_screen(&frame, B_CMAP8);
		UseBus("pci-catalog-empty");
	}

	static void UseBus(const char* name)
	{
		platform_set_root((std::string(QS_FIXTURES_DIR) + "/" + name).c_str());
	}
};

inline Results*
Add(ResultList& list, const char* record, bool isCurrent = false)
{
	Results* results = new Results(isCurrent);
	results->Read(record);
	list.Insert(results);
	return results;
}

inline std::string
Record(const Results& results)
{
	char buffer[kRecordSize];
	return results.Write(buffer);
}

#endif // MACHINE_FIXTURE_H
