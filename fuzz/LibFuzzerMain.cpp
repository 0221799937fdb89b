// The libFuzzer entry of one target; QS_FUZZ_ENTRY names its function.
#include "FuzzEntries.h"

extern "C" int
LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
	return QS_FUZZ_ENTRY(data, size);
}
