// One measured test: its name, units, the amount of work timed and one elapsed
// time per processor configuration, with its rates and its text forms.
#ifndef METRIC_H
#define METRIC_H

#include <cstddef>
#include <cstdio>

#include <SupportDefs.h>

#include "lib/LibString.h"

class BView;
struct rgb_color;

// One time per processor configuration; a machine has at most this many.
const int32 kMaxMetricTimes = 8;

class Metric
{
public:
	Metric();
	Metric(const Metric& other);
	virtual ~Metric();

	// Copies index, count, times, cycles, name and units; the drawn marks stay.
	Metric& operator=(const Metric& other);
	// Metrics are the same test when their names are equal.
	bool operator==(const Metric& other) const;

	void Index(const long& index);
	void NbrCycles(const long& cycles);
	void Units(const char* units);
	void Description(const char* name);
	// Records one elapsed time in seconds for the next configuration.
	void Time(const float& seconds);
	// Forgets the last time recorded (a repeated test records its median).
	void DropTime();

	int32 Index() const { return fIndex; }
	int32 Count() const { return fCount; }
	int32 NbrCycles() const { return fCycles; }
	const char* Units() const { return fUnits; }
	const char* Description() const { return fDescription; }
	// The time of one position in seconds; 0 outside 0 to 7.
	float TimeAt(int position) const;
	bool Drawn(int position) const;

	// cycles / time; the time itself when cycles is 0; 0 for a zero time.
	double Rate(const int& position) const;
	// The largest rate above 0 and its position (first on equal rates); 0 and
	// which untouched when there is none.
	float MaxRate(int& which) const;
	// The largest rate strictly below rate and above 0 among positions not yet
	// drawn: marks it drawn, stores its rate and answers its position; -1 when
	// there is none.
	int NextSmallestRate(float& rate);
	void SetDrawn(const bool& drawn);
	void SetDrawn(const int& position, const bool& drawn);
	// True when the name holds a blank.
	bool HasSubs() const;

	// Appends "index:cycles/t0,t1,...;" to dst, which must have room (a record
	// buffer of kRecordSize bytes holds a whole run).
	char* Write(char* dst) const;
	// The same, when dst (size bytes in all, NUL-terminated) has room for the
	// whole text; otherwise dst is left as it was and B_BUFFER_OVERFLOW answered.
	status_t Write(char* dst, size_t size) const;
	// The metric's cells of the tab-separated table, right-aligned under
	// columns configurations.
	void Save(FILE* file, const int& columns) const;
	void PrintToStream() const;

	// One bar per configuration, longest first and each shorter one over it,
	// left of view's frame width scaled to maxScale (or, with a reference
	// above 0, to maxScale percent of it); colors holds kMaxMetricTimes
	// colours, colors[n - 1] for the bar of n processors. Moves y to the next
	// row.
	void Draw(BView* view, const float& maxScale, const long& left, const rgb_color* colors,
	          float& y, const float& reference);

	// The length in pixels of the bar of rate on a row span pixels wide:
	// span x rate / maxScale, or with a reference above 0 span x (rate /
	// reference) x 100 / maxScale; 0 to span whatever the numbers.
	static double BarLength(double span, double rate, double maxScale, double reference);

	// The test name of a measurement index, "" for an unknown index.
	static const char* NameOf(int32 index);

private:
	int32 fIndex;
	int32 fCount;
	float fTimes[kMaxMetricTimes];
	int32 fCycles;
	LibString fDescription;
	LibString fUnits;
	bool fDrawn[kMaxMetricTimes];
};

#endif // METRIC_H
