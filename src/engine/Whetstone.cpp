#include "engine/Whetstone.h"

#include <cmath>


// Empty assembler statements that emit no instruction. The compiler must
// assume they read or change what they name, so it can neither fold a module
// from start values it knows nor drop a result that nobody reads afterwards.
static inline void
ForgetMemory()
{
	__asm__ __volatile__("" : : : "memory");
}


static inline void
ForgetValue(double& value)
{
	__asm__ __volatile__("" : "+m"(value));
}


static inline void
KeepValue(const double& value)
{
	__asm__ __volatile__("" : : "m"(value));
}


Whetstone::Whetstone() : fScale(100000), fT(0.0), fT1(0.0), fT2(0.0), fE1(), fJ(0), fK(0), fL(0)
{
}


Whetstone::~Whetstone()
{
}


void
Whetstone::Run(const long& passes)
{
	// Module 2 multiplies by this constant, not by the field of the same value.
	const double kT = 0.499975;

	for (long pass = 0; pass < passes; pass++) {
		// Every pass starts from the same values, so every pass does the same work.
		fT = 0.499975;
		fT1 = 0.50025;
		fT2 = 2.0;

		// Module 2: array elements.
		fE1[0] = 1.0;
		fE1[1] = -1.0;
		fE1[2] = -1.0;
		fE1[3] = -1.0;
		ForgetMemory();
		for (int i = 0; i < 12; i++) {
			fE1[0] = (fE1[0] + fE1[1] + fE1[2] - fE1[3]) * kT;
			fE1[1] = (fE1[0] + fE1[1] - fE1[2] + fE1[3]) * kT;
			fE1[2] = (fE1[0] - fE1[1] + fE1[2] + fE1[3]) * kT;
			fE1[3] = (-fE1[0] + fE1[1] + fE1[2] + fE1[3]) * kT;
		}

		// Module 3: array as parameter.
		for (int i = 0; i < 14; i++)
			Parameter(fE1);

		// Module 4: conditional jumps.
		fJ = 1;
		ForgetMemory();
		for (int i = 0; i < 345; i++) {
			if (fJ == 1)
				fJ = 2;
			else
				fJ = 3;
			if (fJ > 2)
				fJ = 0;
			else
				fJ = 1;
			if (fJ > 0)
				fJ = 0;
			else
				fJ = 1;
		}
		ForgetMemory();

		// Module 6: integer arithmetic. E1[n] counting from 1 is fE1[n - 1].
		fJ = 1;
		fK = 2;
		fL = 3;
		ForgetMemory();
		for (int i = 0; i < 210; i++) {
			fJ = fJ * (fK - fJ) * (fL - fK);
			fK = fL * fK - (fL - fJ) * fK;
			fL = (fL - fK) * (fK + fJ);
			fE1[fL - 2] = fJ + fK + fL;
			fE1[fK - 2] = fJ * fK * fL;
		}
		ForgetMemory();

		// Module 7: trigonometric functions.
		double x = 0.5;
		double y = 0.5;
		ForgetValue(x);
		ForgetValue(y);
		for (int i = 0; i < 32; i++) {
			x = fT * atan(fT2 * sin(x) * cos(x) / (cos(x + y) + cos(x - y) - 1.0));
			y = fT * atan(fT2 * sin(y) * cos(y) / (cos(x + y) + cos(x - y) - 1.0));
		}
		KeepValue(x);
		KeepValue(y);

		// Module 8: procedure calls.
		x = 1.0;
		y = 1.0;
		double z = 1.0;
		for (int i = 0; i < 899; i++)
			Procedure(x, y, z);
		KeepValue(z);

		// Module 9: array references.
		fJ = 1;
		fK = 2;
		fL = 3;
		fE1[0] = 1.0;
		fE1[1] = 2.0;
		fE1[2] = 3.0;
		ForgetMemory();
		for (int i = 0; i < 616; i++)
			ArrayReference();

		// Module 11: standard functions.
		x = 0.75;
		ForgetValue(x);
		for (int i = 0; i < 93; i++)
			x = sqrt(exp(log(x) / fT1));
		KeepValue(x);
	}
}


// The three procedures stay real calls: modules 3, 8 and 9 measure calling
// them, and a call of Procedure with unchanged arguments would otherwise be
// hoisted out of its loop.
__attribute__((noinline)) void
Whetstone::Parameter(double* e)
{
	for (int i = 0; i < 6; i++) {
		e[0] = (e[0] + e[1] + e[2] - e[3]) * fT;
		e[1] = (e[0] + e[1] - e[2] + e[3]) * fT;
		e[2] = (e[0] - e[1] + e[2] + e[3]) * fT;
		e[3] = (-e[0] + e[1] + e[2] + e[3]) / fT2;
	}
}


__attribute__((noinline)) void
Whetstone::Procedure(const double& x, const double& y, double& z)
{
	double x1 = fT * (x + y);
	double y1 = fT * (x1 + y);
	z = (x1 + y1) / fT2;
}


__attribute__((noinline)) void
Whetstone::ArrayReference()
{
	// E1 counts from 1: element n is held at fE1[n - 1].
	fE1[fJ - 1] = fE1[fK - 1];
	fE1[fK - 1] = fE1[fL - 1];
	fE1[fL - 1] = fE1[fJ - 1];
}
