// The Whetstone floating-point benchmark (Curnow and Wichmann) in double
// precision, one pass being worth 100 thousand Whetstone instructions.
#ifndef WHETSTONE_H
#define WHETSTONE_H

#include <SupportDefs.h>

class Whetstone
{
public:
	Whetstone();
	virtual ~Whetstone();

	// Runs the kernel passes times; nothing at all for zero or less.
	void Run(const long& passes);

	// Module 3: e[1] to e[4] (held at e[0] to e[3]) mixed six times.
	void Parameter(double* e);
	// Module 8.
	void Procedure(const double& x, const double& y, double& z);
	// Module 9: rotates E1 through J, K and L.
	void ArrayReference();

	// The kernel's state after the last pass, for checking it.
	double T() const { return fT; }
	double T1() const { return fT1; }
	double T2() const { return fT2; }
	// index counts from 1, as the kernel does.
	double E1(int32 index) const { return fE1[index - 1]; }
	int32 J() const { return fJ; }
	int32 K() const { return fK; }
	int32 L() const { return fL; }

private:
	int32 fScale;
	double fT;
	double fT1;
	double fT2;
	double fE1[4];
	int32 fJ;
	int32 fK;
	int32 fL;
};

#endif // WHETSTONE_H
