#include "engine/Whetstone.h"

#include <cmath>

#include <gtest/gtest.h>


namespace {

struct State {
	double t, t1, t2, e1[4];
	int32 j, k, l;
};


State
StateOf(const Whetstone& whetstone)
{
	State state;
	state.t = whetstone.T();
	state.t1 = whetstone.T1();
	state.t2 = whetstone.T2();
	for (int i = 0; i < 4; i++)
		state.e1[i] = whetstone.E1(i + 1);
	state.j = whetstone.J();
	state.k = whetstone.K();
	state.l = whetstone.L();
	return state;
}

} // namespace


TEST(WhetstoneTest, NoPassLeavesTheFieldsAsConstructed)
{
	Whetstone whetstone;
	whetstone.Run(0);
	whetstone.Run(-3);

	// T, T1 and T2 are set at the start of a pass, not before.
	EXPECT_EQ(whetstone.T(), 0.0);
	EXPECT_EQ(whetstone.T1(), 0.0);
	EXPECT_EQ(whetstone.T2(), 0.0);
	for (int i = 1; i <= 4; i++)
		EXPECT_EQ(whetstone.E1(i), 0.0) << i;
	EXPECT_EQ(whetstone.J(), 0);
	EXPECT_EQ(whetstone.K(), 0);
	EXPECT_EQ(whetstone.L(), 0);
}


TEST(WhetstoneTest, PassEndsWithTheArrayReferenceModule)
{
	Whetstone whetstone;
	whetstone.Run(1);

	EXPECT_EQ(whetstone.T(), 0.499975);
	EXPECT_EQ(whetstone.T1(), 0.50025);
	EXPECT_EQ(whetstone.T2(), 2.0);
	// Module 9 rotates (1, 2, 3) through E1[1..3] 616 times, an even count.
	EXPECT_EQ(whetstone.E1(1), 3.0);
	EXPECT_EQ(whetstone.E1(2), 2.0);
	EXPECT_EQ(whetstone.E1(3), 3.0);
	EXPECT_EQ(whetstone.J(), 1);
	EXPECT_EQ(whetstone.K(), 2);
	EXPECT_EQ(whetstone.L(), 3);
	// E1[4] is left by module 3 and touched by nothing after it.
	EXPECT_TRUE(std::isfinite(whetstone.E1(4)));
	EXPECT_NE(whetstone.E1(4), 0.0);
	EXPECT_NE(whetstone.E1(4), -1.0);
}


TEST(WhetstoneTest, EveryPassRepeatsTheSameWork)
{
	Whetstone once;
	once.Run(1);
	Whetstone several;
	several.Run(3);
	Whetstone again;
	again.Run(1);
	again.Run(1);

	State first = StateOf(once);
	for (const State& state : {StateOf(several), StateOf(again)}) {
		EXPECT_EQ(state.t, first.t);
		EXPECT_EQ(state.t1, first.t1);
		EXPECT_EQ(state.t2, first.t2);
		for (int i = 0; i < 4; i++)
			EXPECT_EQ(state.e1[i], first.e1[i]) << "E1[" << i + 1 << "]";
		EXPECT_EQ(state.j, first.j);
		EXPECT_EQ(state.k, first.k);
		EXPECT_EQ(state.l, first.l);
	}
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
	const double y1 = t * (x1 + 1.0);
	EXPECT_DOUBLE_EQ(z, (x1 + y1) / 2.0);

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
