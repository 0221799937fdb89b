#include "engine/Fourier.h"

#include <cmath>
#include <cstdio>
#include <new>


static const long kArraySize = 100;
static const double kLowerBound = 0.0;
static const double kUpperBound = 2.0;
static const int kSteps = 200;
static const double kPi = 3.141592653589793;
static const double kHalf = 0.5;


Fourier::~Fourier()
{
}


void
Fourier::Run(const int& cycles)
{
	double* a = new (std::nothrow) double[kArraySize];
	double* b = new (std::nothrow) double[kArraySize];
	if (a == nullptr || b == nullptr) {
		// The array that was obtained is not given back: the run is over anyway.
		fprintf(stderr, "Out of memory in Fourier::Run\n");
		return;
	}

	for (int cycle = 0; cycle < cycles; cycle++) {
		fpuTransIteration(a, b, kArraySize);
		// Emits no instruction, but the compiler must assume the coefficients
		// are read here, so it cannot drop the computation of unused results.
		__asm__ __volatile__("" : : "r"(a), "r"(b) : "memory");
	}

	delete[] a;
	delete[] b;
}


void
Fourier::fpuTransIteration(double* a, double* b, const long& size)
{
	a[0] = TrapezoidIntegrate(kLowerBound, kUpperBound, kSteps, 0.0, 0) * kHalf;

	for (long i = 1; i < size; i++) {
		const double omega = kPi * i;
		a[i] = TrapezoidIntegrate(kLowerBound, kUpperBound, kSteps, omega, 1);
		b[i] = TrapezoidIntegrate(kLowerBound, kUpperBound, kSteps, omega, 2);
	}
}


double
Fourier::TrapezoidIntegrate(const double& x0, const double& x1, const int& steps,
                            const double& omega, const int& select)
{
	const double dx = (x1 - x0) / steps;

	// Every sample, the closing one included, is taken at x0: the sample point
	// is never advanced. That is the workload this test has always timed, so
	// each integral comes out as (steps - 1) * f(x0) * dx while still costing
	// steps evaluations of the integrand.
	// The empty assembler statement hides the sample point's value from the
	// compiler, which could otherwise evaluate the integrand at compile time.
	double x = x0;
	__asm__ __volatile__("" : "+m"(x));

	double sum = Function(x, omega, select) * kHalf;
	if (steps != 1 && steps != 2) {
		for (int i = 2; i < steps; i++)
			sum += Function(x, omega, select);
	}
	return (Function(x, omega, select) * kHalf + sum) * dx;
}


double
Fourier::Function(const double& x, const double& omega, const int& select)
{
	switch (select) {
		case 0:
			return pow(x + 1.0, x);
		case 1:
			return pow(x + 1.0, x) * cos(omega * x);
		case 2:
			return pow(x + 1.0, x) * sin(omega * x);
		default:
			return 0.0;
	}
}
