#include "results/Metric.h"

#include <cfloat>
#include <cmath>
#include <cstring>

struct MetricName {
	int32 index;
	const char* name;
};

// Records carry only the index; the name comes from here when they are read.
static const MetricName kMetricNames[] = {
    {100, "Strings Copy"},
    {101, "Strings Compare"},
    {200, "Memory"},
    {300, "Savage"},
    {400, "Ackerman"},
    {500, "Dhrystone"},
    {550, "Fourier"},
    {600, "Whetstone"},
    {601, "Ten Sequential Whetstones"},
    {602, "Ten Threaded Whetstones"},
    {700, "Sieve"},
    {800, "Disk File Output"},
    {801, "Disk File Input"},
    {900, "Disk File Creation"},
    {901, "Disk File Deletion"},
    {902, "Disk File/Thread Creation"},
    {903, "Disk File/Thread Deletion"},
    {1010, "Graphics Lines Flushed"},
    {1011, "Graphics Lines Unflushed"},
    {1020, "Graphics Ellipses Flushed"},
    {1021, "Graphics Ellipses Unflushed"},
    {1022, "Graphics Ellipses Unflushed Filled"},
    {1030, "Graphics Rectangles Flushed"},
    {1031, "Graphics Rectangles Unflushed"},
    {1032, "Graphics Rectangles Unflushed Filled"},
    {1040, "Graphics Polygons Flushed"},
    {1041, "Graphics Polygons Unflushed"},
    {1042, "Graphics Polygons Unflushed Filled"},
    {1050, "Graphics Strings Flushed"},
    {1051, "Graphics Strings Unflushed"},
};


Metric::Metric() : fIndex(0), fCount(0), fTimes(), fCycles(1), fDrawn()
{
}


Metric::Metric(const Metric& other) : Metric()
{
	*this = other;
}


Metric::~Metric()
{
}


Metric&
Metric::operator=(const Metric& other)
{
	if (&other == this)
		return *this;

	memcpy(fTimes, other.fTimes, sizeof(fTimes));
	fIndex = other.fIndex;
	fCount = other.fCount;
	fCycles = other.fCycles;
	fDescription = other.fDescription;
	fUnits = other.fUnits;
	return *this;
}


bool
Metric::operator==(const Metric& other) const
{
	return fDescription == other.fDescription;
}


void
Metric::Index(const long& index)
{
	fIndex = static_cast<int32>(index);
}


void
Metric::NbrCycles(const long& cycles)
{
	fCycles = static_cast<int32>(cycles);
}


void
Metric::Units(const char* units)
{
	fUnits = units;
}


void
Metric::Description(const char* name)
{
	fDescription = name;
}


// The driver adds one time per processor configuration, so eight slots hold
// any machine. A ninth time has nowhere to go: it is dropped rather than
// written past the array, and the count stays at eight.
void
Metric::Time(const float& seconds)
{
	if (fCount >= kMaxMetricTimes)
		return;
	fTimes[fCount++] = seconds;
}


void
Metric::DropTime()
{
	if (fCount > 0)
		fTimes[--fCount] = 0;
}


float
Metric::TimeAt(int position) const
{
	if (position < 0 || position >= kMaxMetricTimes)
		return 0;
	return fTimes[position];
}


bool
Metric::Drawn(int position) const
{
	if (position < 0 || position >= kMaxMetricTimes)
		return false;
	return fDrawn[position];
}


// Rates are handed on as floats; a finite rate beyond a float's range (a
// tiny time) would not convert, so it becomes the largest float instead.
static float
AsFloat(double rate)
{
	if (std::isfinite(rate) && std::fabs(rate) > FLT_MAX)
		return static_cast<float>(std::copysign(FLT_MAX, rate));
	return static_cast<float>(rate);
}


// Any rate a file can hold arrives here (zero, negative, NaN, infinite, huge),
// as can a zero or unusable scale: the answer is always between 0 and span.
double
Metric::BarLength(double span, double rate, double maxScale, double reference)
{
	if (!(span > 0) || !(maxScale > 0))
		return 0;
	double fraction = reference > 0 ? rate / reference * 100 / maxScale : rate / maxScale;
	if (!(fraction > 0))
		return 0;
	if (fraction > 1)
		fraction = 1;
	return span * fraction;
}


// A metric with no cycles (measured in seconds) reports its time as its value.
double
Metric::Rate(const int& position) const
{
	const float time = TimeAt(position);
	if (time == 0)
		return 0;
	if (fCycles != 0)
		return fCycles / static_cast<double>(time);
	return time;
}


float
Metric::MaxRate(int& which) const
{
	float best = 0;
	for (int i = 0; i < fCount; i++) {
		const float rate = AsFloat(Rate(i));
		if (rate > best) {
			best = rate;
			which = i;
		}
	}
	return best;
}


// Rates are compared as the floats they are handed on as, so a time whose rate
// equals one already drawn is never taken as "strictly below" it.
int
Metric::NextSmallestRate(float& rate)
{
	int found = -1;
	float foundRate = 0;
	for (int i = 0; i < fCount; i++) {
		if (fDrawn[i])
			continue;
		const float candidate = AsFloat(Rate(i));
		if (candidate < rate && candidate > 0 && candidate > foundRate) {
			found = i;
			foundRate = candidate;
		}
	}
	if (found >= 0) {
		fDrawn[found] = true;
		rate = foundRate;
	}
	return found;
}


void
Metric::SetDrawn(const bool& drawn)
{
	for (int i = 0; i < kMaxMetricTimes; i++)
		fDrawn[i] = drawn;
}


void
Metric::SetDrawn(const int& position, const bool& drawn)
{
	if (position >= 0 && position < kMaxMetricTimes)
		fDrawn[position] = drawn;
}


bool
Metric::HasSubs() const
{
	return fDescription.Contain(" ");
}


char*
Metric::Write(char* dst) const
{
	char* end = dst + strlen(dst);
	end += sprintf(end, "%d:%d/", fIndex, fCycles);
	for (int i = 0; i < fCount; i++)
		end += sprintf(end, i == 0 ? "%f" : ",%f", fTimes[i]);
	strcpy(end, ";");
	return dst;
}


status_t
Metric::Write(char* dst, size_t size) const
{
	LibString text;
	text.Format("%d:%d/", fIndex, fCycles);
	for (int i = 0; i < fCount; i++)
		text += LibString::Formatted(i == 0 ? "%f" : ",%f", fTimes[i]);
	text += ";";

	const size_t used = strnlen(dst, size);
	if (used + text.Length() + 1 > size)
		return B_BUFFER_OVERFLOW;
	memcpy(dst + used, text.String(), text.Length() + 1);
	return B_OK;
}


// Fewer times than columns are padded on the left so that they stand under
// the right-hand (fewest processors) columns.
void
Metric::Save(FILE* file, const int& columns) const
{
	for (int i = fCount; i < columns; i++)
		fputc('\t', file);
	for (int i = 0; i < fCount; i++)
		fprintf(file, "%.1f\t", Rate(i));
}


void
Metric::PrintToStream() const
{
	fprintf(stderr, "<%s> t= %.3f, cycles %d\n", fDescription.String(), fTimes[0], fCycles);
}


const char*
Metric::NameOf(int32 index)
{
	for (const MetricName& entry : kMetricNames) {
		if (entry.index == index)
			return entry.name;
	}
	return "";
}
