#include "engine/MachineCheck.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <PlatformTest.h>

#include "platform/TempTree.h"

namespace {

// A machine tree under a temporary root: processors, load, power supplies
// and thermal zones as the kernel shows them.
class MachineCheckTest : public testing::Test
{
protected:
	void TearDown() override { platform_set_root(nullptr); }

	void Cpus(const std::vector<std::string>& governors, long khz)
	{
		fTree.Write("sys/devices/system/cpu/online", "0-" + std::to_string(governors.size() - 1));
		for (size_t cpu = 0; cpu < governors.size(); cpu++)
			Clock(cpu, governors[cpu], khz);
	}

	void Clock(size_t cpu, const std::string& governor, long khz)
	{
		const std::string base = "sys/devices/system/cpu/cpu" + std::to_string(cpu) + "/cpufreq/";
		if (!governor.empty())
			fTree.Write(base + "scaling_governor", governor + "\n");
		fTree.Write(base + "scaling_cur_freq", std::to_string(khz) + "\n");
	}

	void Supply(const std::string& name, const std::string& type, const std::string& file,
	            const std::string& value)
	{
		fTree.Write("sys/class/power_supply/" + name + "/type", type + "\n");
		fTree.Write("sys/class/power_supply/" + name + "/" + file, value + "\n");
	}

	void Zone(int zone, long temperature, const std::vector<std::pair<std::string, long>>& trips)
	{
		const std::string base = "sys/class/thermal/thermal_zone" + std::to_string(zone) + "/";
		fTree.Write(base + "type", "x86_pkg_temp\n");
		fTree.Write(base + "temp", std::to_string(temperature) + "\n");
		for (size_t i = 0; i < trips.size(); i++) {
			const std::string trip = base + "trip_point_" + std::to_string(i);
			fTree.Write(trip + "_type", trips[i].first + "\n");
			fTree.Write(trip + "_temp", std::to_string(trips[i].second) + "\n");
		}
	}

	std::vector<std::string> Kinds(const MachineCheck& check) const
	{
		std::vector<std::string> kinds;
		for (const MachineCheck::Warning& warning : check.Warnings())
			kinds.push_back(warning.kind);
		return kinds;
	}

	MachineCheck Checked()
	{
		platform_set_root(fTree.c_str());
		MachineCheck check;
		check.Start();
		return check;
	}

	TempTree fTree;
};


TEST_F(MachineCheckTest, QuietMachineOnMainsGivesNoWarning)
{
	Cpus({"performance", "performance"}, 2500000);
	fTree.Write("proc/loadavg", "0.99 0.50 0.20 1/123 4567\n");
	fTree.Write("proc/sys/kernel/osrelease", "6.1.0-18-amd64\n");
	Supply("AC", "Mains", "online", "1");
	Supply("BAT0", "Battery", "status", "Charging");
	// A mouse's battery running down is not the machine's.
	Supply("hid-mouse", "Battery", "status", "Discharging");
	fTree.Write("sys/class/power_supply/hid-mouse/scope", "Device\n");
	// The active trip point starts a fan; only the passive one throttles.
	Zone(0, 60000, {{"active", 50000}, {"passive", 95000}});

	MachineCheck check = Checked();
	EXPECT_TRUE(check.Warnings().empty()) << check.Warnings()[0].text;
	EXPECT_EQ(check.StartState().kernel_release, "6.1.0-18-amd64");
	EXPECT_DOUBLE_EQ(check.StartState().load_average, 0.99);
	EXPECT_TRUE(check.StartState().has_battery);
	ASSERT_EQ(check.StartState().thermal_zones.size(), 1u);
	EXPECT_EQ(check.StartState().thermal_zones[0].trip_millicelsius, 95000);
	EXPECT_TRUE(check.StartText().empty());
}


TEST_F(MachineCheckTest, GovernorsLoadAndBatteryAreWarnedBeforeTheRun)
{
	Cpus({"powersave", "performance", "powersave", "schedutil"}, 800000);
	fTree.Write("proc/loadavg", "2.01 1.00 0.50 3/200 999\n");
	Supply("ADP1", "Mains", "online", "0");
	Supply("BAT0", "Battery", "status", "Unknown");

	MachineCheck check = Checked();
	EXPECT_EQ(Kinds(check), (std::vector<std::string>{"governor", "governor", "load", "battery"}));
	const std::string text = check.StartText();
	EXPECT_NE(text.find("\"powersave\" on 2 of 4 CPUs"), std::string::npos) << text;
	EXPECT_NE(text.find("\"schedutil\" on 1 of 4 CPUs"), std::string::npos) << text;
	EXPECT_NE(text.find("load average is 2.01 on 4 CPUs"), std::string::npos) << text;
	EXPECT_NE(text.find("battery"), std::string::npos) << text;
}


TEST_F(MachineCheckTest, LoadIsWeighedPerOnlineCpu)
{
	const struct {
		const char* loadavg;
		int cpus;
		bool warned;
	} cases[] = {
	    {"1.00 0 0 1/1 1\n", 2, false}, {"1.01 0 0 1/1 1\n", 2, true},
	    {"0.51 0 0 1/1 1\n", 1, true},  {"garbage\n", 1, false},
	    {"-3 0 0\n", 1, false},
	};
	for (const auto& testCase : cases) {
		SCOPED_TRACE(testCase.loadavg);
		fTree.Write("sys/devices/system/cpu/online",
		            testCase.cpus == 1 ? "0\n" : "0-" + std::to_string(testCase.cpus - 1) + "\n");
		fTree.Write("proc/loadavg", testCase.loadavg);
		MachineCheck check = Checked();
		EXPECT_EQ(!check.Warnings().empty(), testCase.warned);
	}
}


TEST_F(MachineCheckTest, FallingClocksAndHotZonesAreWarnedOnceDuringTheRun)
{
	Cpus({"performance", "performance"}, 3000000);
	Zone(0, 70000, {{"passive", 90000}, {"critical", 105000}});
	Zone(1, 40000, {});
	MachineCheck check = Checked();
	ASSERT_TRUE(check.Warnings().empty());

	// A clock that rises is fine; one that falls is throttled.
	Clock(0, "performance", 3400000);
	Clock(1, "performance", 1200000);
	check.Sample();
	Zone(0, 91500, {{"passive", 90000}, {"critical", 105000}});
	Zone(1, 99000, {});
	check.Sample();
	check.Sample();

	EXPECT_EQ(Kinds(check), (std::vector<std::string>{"clock", "thermal"}));
	EXPECT_NE(check.Warnings()[0].text.find("CPU 1 ran at 1200 MHz during the run, below its 3000"),
	          std::string::npos)
	    << check.Warnings()[0].text;
	EXPECT_NE(check.Warnings()[1].text.find("thermal_zone0 (x86_pkg_temp) reached 91.5"),
	          std::string::npos)
	    << check.Warnings()[1].text;
	// What happened during the run is not what was found before it.
	EXPECT_TRUE(check.StartText().empty());
}


TEST_F(MachineCheckTest, MissingAndHostileReadingsAreSkipped)
{
	// No cpufreq, no supplies, no zones: a virtual machine.
	fTree.Write("sys/devices/system/cpu/online", "0-1\n");
	MachineCheck bare = Checked();
	EXPECT_TRUE(bare.Warnings().empty());
	EXPECT_EQ(bare.StartState().cpus.size(), 2u);
	EXPECT_LT(bare.StartState().load_average, 0);

	// A zone without a readable temperature, and numbers that do not fit.
	fTree.Write("sys/class/thermal/thermal_zone0/type", "broken\n");
	Zone(1, 50000, {{"passive", 999999999999999999}});
	fTree.Write("sys/class/thermal/thermal_zone2/temp", "99999999999999999999999\n");
	fTree.Write("sys/devices/system/cpu/cpu0/cpufreq/scaling_cur_freq",
	            std::string(10000, '9') + "\n");
	fTree.Write("proc/loadavg", std::string(100000, '7'));
	MachineCheck hostile = Checked();
	ASSERT_EQ(hostile.StartState().thermal_zones.size(), 1u);
	EXPECT_EQ(hostile.StartState().thermal_zones[0].name, "thermal_zone1");
	for (const MachineCheck::Warning& warning : hostile.Warnings())
		EXPECT_EQ(warning.kind, "load") << warning.text;
}

} // namespace
