#include "engine/Fourier.h"

#include <cmath>

#include <gtest/gtest.h>


// (steps - 1) * f(0) * dx = 199 * 1 * 0.01, halved for a[0]; sin(0) = 0 and
// b[0] is never written.
TEST(FourierTest, EveryCoefficientIsSampledAtTheLowerBound)
{
	const double sentinel = -12345.0;
	for (int size : {100, 1}) {
		SCOPED_TRACE(size);
		Fourier fourier;
		double a[101];
		double b[101];
		for (int i = 0; i <= 100; i++)
			a[i] = b[i] = sentinel;

		fourier.fpuTransIteration(a, b, size);

		EXPECT_NEAR(a[0], 0.995, 1e-12);
		EXPECT_EQ(b[0], sentinel);
		for (int i = 1; i < size; i++) {
			EXPECT_NEAR(a[i], 1.99, 1e-12) << "a[" << i << "]";
			EXPECT_EQ(b[i], 0.0) << "b[" << i << "]";
		}
		EXPECT_EQ(a[size], sentinel);
		EXPECT_EQ(b[size], sentinel);
	}
}


TEST(FourierTest, TrapezoidTakesEverySampleAtTheStart)
{
	Fourier fourier;
	const double pi = 3.141592653589793;

	// f(1) = 2 ^ 1 * cos(pi) = -2 over 1 to 3: the estimate is the start value
	// times dx times (steps - 1), except one step, which weighs it fully.
	EXPECT_NEAR(fourier.TrapezoidIntegrate(1.0, 3.0, 1, pi, 1), -2.0 * 2.0, 1e-12);
	EXPECT_NEAR(fourier.TrapezoidIntegrate(1.0, 3.0, 2, pi, 1), -2.0 * 1.0, 1e-12);
	EXPECT_NEAR(fourier.TrapezoidIntegrate(1.0, 3.0, 3, pi, 1), -2.0 * 2.0 * 2.0 / 3.0, 1e-12);
	EXPECT_NEAR(fourier.TrapezoidIntegrate(1.0, 3.0, 200, pi, 1), -2.0 * 199.0 * 0.01, 1e-12);
	// The upper bound counts only through dx.
	EXPECT_NEAR(fourier.TrapezoidIntegrate(1.0, 5.0, 4, 0.0, 0), 2.0 * 3.0 * 1.0, 1e-12);
	// An unknown integrand is zero everywhere.
	EXPECT_EQ(fourier.TrapezoidIntegrate(0.0, 2.0, 200, pi, 3), 0.0);

	// The integrands: (x + 1)^x alone, times cos(omega x), times sin(omega x).
	EXPECT_NEAR(fourier.Function(2.0, 5.0, 0), 9.0, 1e-12);
	EXPECT_NEAR(fourier.Function(0.5, pi, 2), std::sqrt(1.5), 1e-12);
	EXPECT_NEAR(fourier.Function(0.5, pi, 1), 0.0, 1e-12);
	EXPECT_EQ(fourier.Function(0.0, pi, 1), 1.0);
	EXPECT_EQ(fourier.Function(1.0, pi, -1), 0.0);

	// A full run computes silently.
	testing::internal::CaptureStderr();
	fourier.Run(2);
	EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
