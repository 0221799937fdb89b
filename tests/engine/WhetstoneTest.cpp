#include "engine/Whetstone.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>


namespace {

// T, T1, T2, E1[1..4], J, K and L.
std::vector<double>
StateOf(const Whetstone& whetstone)
{
	return {whetstone.T(),         whetstone.T1(),       whetstone.T2(),  whetstone.E1(1),
	        whetstone.E1(2),       whetstone.E1(3),      whetstone.E1(4), double(whetstone.J()),
	        double(whetstone.K()), double(whetstone.L())};
}

} // namespace


TEST(WhetstoneTest, EveryPassRepeatsTheSameWorkEndingWithTheArrayModule)
{
	// T, T1 and T2 are set at the start of a pass, not before.
	Whetstone none;
	none.Run(0);
	none.Run(-3);
	EXPECT_EQ(StateOf(none), std::vector<double>(10, 0.0));

	Whetstone once;
	once.Run(1);
	// Module 9 rotates (1, 2, 3) through E1[1..3] 616 times, an even count;
	// E1[4] is left by module 3 and touched by nothing after it.
	std::vector<double> state = StateOf(once);
	const double e4 = state[6];
	EXPECT_TRUE(std::isfinite(e4));
	EXPECT_NE(e4, 0.0);
	EXPECT_NE(e4, -1.0);
	EXPECT_EQ(state, (std::vector<double>{0.499975, 0.50025, 2.0, 3.0, 2.0, 3.0, e4, 1, 2, 3}));

	Whetstone several;
	several.Run(3);
	EXPECT_EQ(StateOf(several), state);
	Whetstone again;
	again.Run(1);
	again.Run(1);
	EXPECT_EQ(StateOf(again), state);
}


TEST(WhetstoneTest, ProceduresUseTheFieldsOfThePass)
{
	Whetstone whetstone;
	whetstone.Run(1);

	// Module 8: x1 = T (x + y), y1 = T (x1 + y), z = (x1 + y1) / T2.
	const double t = 0.499975;
	double z = 0.0;
	whetstone.Procedure(1.0, 1.0, z);
	const double x1 = t * 2.0;
	EXPECT_DOUBLE_EQ(z, (x1 + t * (x1 + 1.0)) / 2.0);

	// Module 3 uses the updated elements as it goes and divides the last by T2.
	double e[4] = {1.0, 0.0, 0.0, 0.0};
	double r[4] = {1.0, 0.0, 0.0, 0.0};
	whetstone.Parameter(e);
	for (int i = 0; i < 6; i++) {
		r[0] = (r[0] + r[1] + r[2] - r[3]) * t;
		r[1] = (r[0] + r[1] - r[2] + r[3]) * t;
		r[2] = (r[0] - r[1] + r[2] + r[3]) * t;
		r[3] = (-r[0] + r[1] + r[2] + r[3]) / 2.0;
	}
	for (int i = 0; i < 4; i++)
		EXPECT_DOUBLE_EQ(e[i], r[i]) << i;

	// Module 9 from the pass's end state: J = 1, K = 2, L = 3, E1 = (3, 2, 3).
	whetstone.ArrayReference();
	EXPECT_EQ(whetstone.E1(1), 2.0);
	EXPECT_EQ(whetstone.E1(2), 3.0);
	EXPECT_EQ(whetstone.E1(3), 2.0);
}
