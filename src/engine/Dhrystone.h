// The Dhrystone 2.1 integer benchmark, its globals held as members so that
// one object is one independent run.
#ifndef DHRYSTONE_H
#define DHRYSTONE_H

#include <SupportDefs.h>

class Dhrystone
{
public:
	enum Enumeration : int32 { Ident_1 = 0, Ident_2, Ident_3, Ident_4, Ident_5 };

	// The benchmark's record type; every record carries the first variant.
	struct record {
		record* fPtrComp;
		Enumeration fDiscr;
		Enumeration fEnumComp;
		int32 fIntComp;
		char fStrComp[31];
	};

	Dhrystone();
	virtual ~Dhrystone();

	// Runs the benchmark for the low 16 bits of runs, split into outer passes
	// of triangular inner loops, then prints the verification lines.
	void Run(const long& runs);
	// The verification lines on standard error.
	void PrintResults();

	void Procedure_1(record* ptrValPar);
	void Procedure_2(int& intParRef);
	void Procedure_3(record* ptrRefPar);
	void Procedure_4();
	void Procedure_5();
	void Procedure_6(const Enumeration& enumValPar, Enumeration& enumRefPar);
	void Procedure_7(const int& int1ParVal, const int& int2ParVal, int& intParRef);
	void Procedure_8(int* arr1ParRef, int (*arr2ParRef)[50], const int& int1ParVal,
	                 const int& int2ParVal);
	Enumeration Function_1(const char& ch1ParVal, const char& ch2ParVal);
	bool Function_2(const char* str1ParRef, const char* str2ParRef);
	bool Function_3(const Enumeration& enumParVal);

private:
	Dhrystone(const Dhrystone&) = delete;
	Dhrystone& operator=(const Dhrystone&) = delete;

	int32 fOuter;
	uint16 fInner;
	uint16 fIterations;
	record* fPtrGlob;
	record* fNextPtrGlob;
	int32 fIntGlob;
	bool fBoolGlob;
	char fCh1Glob;
	char fCh2Glob;
	int32 fArr1Glob[50];
	int32 fArr2Glob[50][50];
	int32 fRunIndex;
};

#endif // DHRYSTONE_H
