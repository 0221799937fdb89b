#include "engine/Dhrystone.h"

#include <cstdint>
#include <cstdio>
#include <cstring>


Dhrystone::Dhrystone()
    : fOuter(0), fInner(0), fIterations(0), fPtrGlob(new record()), fNextPtrGlob(new record()),
      fIntGlob(0), fBoolGlob(false), fCh1Glob(0), fCh2Glob(0), fArr1Glob(), fArr2Glob(),
      fRunIndex(0)
{
	// Only the first record gets the benchmark's start values; the globals and
	// the second record start cleared, so a printout before any iteration shows
	// zeros and an empty string rather than stray memory.
	fPtrGlob->fPtrComp = fNextPtrGlob;
	fPtrGlob->fDiscr = Ident_1;
	fPtrGlob->fEnumComp = Ident_3;
	fPtrGlob->fIntComp = 40;
	strcpy(fPtrGlob->fStrComp, "DHRYSTONE PROGRAM, SOME STRING");
}


Dhrystone::~Dhrystone()
{
	delete fNextPtrGlob;
	delete fPtrGlob;
}


void
Dhrystone::Run(const long& runs)
{
	// Only the low 16 bits of the count are kept. The quotient by 32000 comes
	// from the high byte alone ((high byte * 526) >> 16 equals iterations / 32000
	// for every 16-bit value). The driver asks for 1600000 runs, whose low 16
	// bits are 27136: outer is then 0 and no iteration runs. Kept as it is.
	fIterations = static_cast<uint16>(runs);
	fOuter = ((fIterations >> 8) * 526) >> 16;
	fInner = static_cast<uint16>(fIterations - fOuter * 32000);

	fprintf(stderr, "Dhrystone: iter %d, outer %d, inner %d\n", fIterations, fOuter, fInner);

	char str1Loc[31];
	char str2Loc[31];
	strcpy(str1Loc, "DHRYSTONE PROGRAM, 1'ST STRING");

	for (int32 pass = 0; pass < fOuter; pass++) {
		// Each outer pass runs inner + (inner - 1) + ... + 1 iterations of the
		// body, restarting the run index and the array check value each time.
		fInner = static_cast<uint16>(fIterations - fOuter * 32000);
		if (fInner == 0)
			continue;
		do {
			fArr2Glob[8][7] = 10;
			for (fRunIndex = 1; fRunIndex <= fInner; ++fRunIndex) {
				int int1Loc;
				int int2Loc;
				int int3Loc;
				Enumeration enumLoc;

				Procedure_5();
				Procedure_4();
				int1Loc = 2;
				int2Loc = 3;
				strcpy(str2Loc, "DHRYSTONE PROGRAM, 2'ND STRING");
				enumLoc = Ident_2;
				fBoolGlob = !Function_2(str1Loc, str2Loc);
				while (int1Loc < int2Loc) {
					int3Loc = 5 * int1Loc - int2Loc;
					Procedure_7(int1Loc, int2Loc, int3Loc);
					int1Loc += 1;
				}
				Procedure_8(fArr1Glob, fArr2Glob, int1Loc, int3Loc);
				Procedure_1(fPtrGlob);
				for (char chIndex = 'A'; chIndex <= fCh2Glob; ++chIndex) {
					if (enumLoc == Function_1(chIndex, 'C')) {
						Procedure_6(Ident_1, enumLoc);
						strcpy(str2Loc, "DHRYSTONE PROGRAM, 3'RD STRING");
						int2Loc = fRunIndex;
						fIntGlob = fRunIndex;
					}
				}
				int2Loc = int2Loc * int1Loc;
				int1Loc = int2Loc / int3Loc;
				int2Loc = 7 * (int2Loc - int3Loc) - int1Loc;
				Procedure_2(int1Loc);
			}
			fInner--;
		} while (fInner != 0);
	}

	PrintResults();
}


void
Dhrystone::PrintResults()
{
	// The text, its misspelling and its missing closing quotes are what users
	// of this program have always read; nothing is compared.
	fprintf(stderr, "value = %d, should be 5\n", fIntGlob);
	fprintf(stderr, "test_state = %d, should be 1\n", fBoolGlob);
	fprintf(stderr, "char_1 = '%c', should be 'A'\n", fCh1Glob);
	fprintf(stderr, "char_2 = '%c', should be 'B'\n", fCh2Glob);
	fprintf(stderr, "array_1[8] = %d, should be 7\n", fArr1Glob[8]);
	fprintf(stderr, "array_2[8][7] = %d, should be number_of_runs + 10\n", fArr2Glob[8][7]);
	fprintf(stderr, "pointer:\n");
	fprintf(stderr, "\tptr_comp = %d, should be impl dependent\n",
	        static_cast<int>(reinterpret_cast<intptr_t>(fPtrGlob->fPtrComp)));
	fprintf(stderr, "\tdiscr = %d, should be 0\n", fPtrGlob->fDiscr);
	fprintf(stderr, "\tenum comp = %d, sould be 2\n", fPtrGlob->fEnumComp);
	fprintf(stderr, "\tint comp = %d, should be 17\n", fPtrGlob->fIntComp);
	fprintf(stderr, "\tstr compt = '%s', should be 'DHRYSTONE PROGRAM, SOME STRING\n",
	        fPtrGlob->fStrComp);
	fprintf(stderr, "next_pointer\n");
	fprintf(stderr, "\tptr_comp = %d, should be impl dependent\n",
	        static_cast<int>(reinterpret_cast<intptr_t>(fNextPtrGlob->fPtrComp)));
	fprintf(stderr, "\tdiscr = %d, should be 0\n", fNextPtrGlob->fDiscr);
	fprintf(stderr, "\tenum comp = %d, sould be 1\n", fNextPtrGlob->fEnumComp);
	fprintf(stderr, "\tint comp = %d, should be 18\n", fNextPtrGlob->fIntComp);
	fprintf(stderr, "\tstr compt = '%s', should be 'DHRYSTONE PROGRAM, SOME STRING\n",
	        fNextPtrGlob->fStrComp);
}


void
Dhrystone::Procedure_1(record* ptrValPar)
{
	record* nextRecord = ptrValPar->fPtrComp;

	*ptrValPar->fPtrComp = *fPtrGlob;
	ptrValPar->fIntComp = 5;
	nextRecord->fIntComp = ptrValPar->fIntComp;
	nextRecord->fPtrComp = ptrValPar->fPtrComp;
	Procedure_3(nextRecord);
	if (nextRecord->fDiscr == Ident_1) {
		nextRecord->fIntComp = 6;
		Procedure_6(ptrValPar->fEnumComp, nextRecord->fEnumComp);
		nextRecord->fPtrComp = fPtrGlob->fPtrComp;
		Procedure_7(nextRecord->fIntComp, 10, nextRecord->fIntComp);
	} else
		*ptrValPar = *ptrValPar->fPtrComp;
}


void
Dhrystone::Procedure_2(int& intParRef)
{
	int intLoc = intParRef + 10;
	Enumeration enumLoc = Ident_2;

	do {
		if (fCh1Glob == 'A') {
			intLoc -= 1;
			intParRef = intLoc - fIntGlob;
			enumLoc = Ident_1;
		}
	} while (enumLoc != Ident_1);
}


void
Dhrystone::Procedure_3(record* ptrRefPar)
{
	// Takes the record whose pointer component it sets, where the original
	// takes the address of that component.
	if (fPtrGlob != nullptr)
		ptrRefPar->fPtrComp = fPtrGlob->fPtrComp;
	Procedure_7(10, fIntGlob, fPtrGlob->fIntComp);
}


void
Dhrystone::Procedure_4()
{
	bool boolLoc = fCh1Glob == 'A';
	fBoolGlob = boolLoc | fBoolGlob;
	fCh2Glob = 'B';
}


void
Dhrystone::Procedure_5()
{
	fCh1Glob = 'A';
	fBoolGlob = false;
}


void
Dhrystone::Procedure_6(const Enumeration& enumValPar, Enumeration& enumRefPar)
{
	// The original passes the first argument by value.
	const Enumeration value = enumValPar;

	enumRefPar = value;
	if (!Function_3(value))
		enumRefPar = Ident_4;
	switch (value) {
		case Ident_1:
			enumRefPar = Ident_1;
			break;
		case Ident_2:
			if (fIntGlob > 100)
				enumRefPar = Ident_1;
			else
				enumRefPar = Ident_4;
			break;
		case Ident_3:
			enumRefPar = Ident_2;
			break;
		case Ident_4:
			break;
		case Ident_5:
			enumRefPar = Ident_3;
			break;
	}
}


void
Dhrystone::Procedure_7(const int& int1ParVal, const int& int2ParVal, int& intParRef)
{
	// intParRef may be int1ParVal itself (Procedure_1): read before writing.
	int intLoc = int1ParVal + 2;
	intParRef = int2ParVal + intLoc;
}


void
Dhrystone::Procedure_8(int* arr1ParRef, int (*arr2ParRef)[50], const int& int1ParVal,
                       const int& int2ParVal)
{
	int intLoc = int1ParVal + 5;

	arr1ParRef[intLoc] = int2ParVal;
	arr1ParRef[intLoc + 1] = arr1ParRef[intLoc];
	arr1ParRef[intLoc + 30] = intLoc;
	for (int intIndex = intLoc; intIndex <= intLoc + 1; ++intIndex)
		arr2ParRef[intLoc][intIndex] = intLoc;
	arr2ParRef[intLoc][intLoc - 1] += 1;
	arr2ParRef[intLoc + 20][intLoc] = arr1ParRef[intLoc];
	fIntGlob = 5;
}


Dhrystone::Enumeration
Dhrystone::Function_1(const char& ch1ParVal, const char& ch2ParVal)
{
	char ch1Loc = ch1ParVal;
	char ch2Loc = ch1Loc;

	if (ch2Loc != ch2ParVal)
		return Ident_1;
	fCh1Glob = ch1Loc;
	return Ident_2;
}


bool
Dhrystone::Function_2(const char* str1ParRef, const char* str2ParRef)
{
	int intLoc = 2;
	char chLoc = 'A';

	while (intLoc <= 2) {
		if (Function_1(str1ParRef[intLoc], str2ParRef[intLoc + 1]) == Ident_1) {
			chLoc = 'A';
			intLoc += 1;
		}
	}
	if (chLoc >= 'W' && chLoc < 'Z')
		intLoc = 7;
	if (chLoc == 'R')
		return true;
	if (strcmp(str1ParRef, str2ParRef) > 0) {
		intLoc += 7;
		fIntGlob = intLoc;
		return true;
	}
	return false;
}


bool
Dhrystone::Function_3(const Enumeration& enumParVal)
{
	Enumeration enumLoc = enumParVal;
	return enumLoc == Ident_3;
}
