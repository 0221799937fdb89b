// Fourier coefficients of (x + 1)^x on 0 to 2 by trapezoidal integration,
// computed over and over to be timed; the coefficients themselves are unused.
#ifndef FOURIER_H
#define FOURIER_H

class Fourier
{
public:
	virtual ~Fourier();

	// One full computation of the first 100 coefficients, cycles times.
	void Run(const int& cycles);
	// a[0] to a[size - 1] and b[1] to b[size - 1]; b[0] is left alone.
	void fpuTransIteration(double* a, double* b, const long& size);
	double TrapezoidIntegrate(const double& x0, const double& x1, const int& steps,
	                          const double& omega, const int& select);
	// select 0: (x + 1)^x; 1: times cos(omega x); 2: times sin(omega x); else 0.
	double Function(const double& x, const double& omega, const int& select);
};

#endif // FOURIER_H
