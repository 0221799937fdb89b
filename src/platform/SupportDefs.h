// Basic BeOS types and status codes, as the program's code expects them.
#ifndef SUPPORT_DEFS_H
#define SUPPORT_DEFS_H

#include <cstddef>
#include <cstdint>

#include "Errors.h"

typedef int8_t int8;
typedef uint8_t uint8;
typedef int16_t int16;
typedef uint16_t uint16;
typedef int32_t int32;
typedef uint32_t uint32;
typedef int64_t int64;
typedef uint64_t uint64;

typedef int32 status_t;
typedef int64 bigtime_t;
typedef uint32 type_code;

#ifndef B_INFINITE_TIMEOUT
#define B_INFINITE_TIMEOUT INT64_MAX
#endif

#endif // SUPPORT_DEFS_H
