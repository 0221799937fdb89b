// One benchmark run on one machine: its metrics, the machine's description,
// CPU count and device lines, the stopwatch the kernels measure with, and the
// icon that expands the device list in the comparison rows.
#ifndef RESULTS_H
#define RESULTS_H

#include <cstddef>
#include <cstdio>

#include <Point.h>
#include <Rect.h>
#include <SupportDefs.h>

#include "lib/LibString.h"
#include "lib/LibTimer.h"
#include "lib/LinkList.h"
#include "results/Metric.h"
#include "results/RelatedDevices.h"

class BBitmap;
class BView;

// The buffer callers write one record into; it bounds a record.
const size_t kRecordSize = 9000;
// Timings of the empty calibration loop in a run of repeated tests, of which
// the shortest is kept.
const int32 kRepeatedCalibrationRuns = 5;

class Results : public LinkList<Metric>
{
public:
	// isCurrent: the run of the machine being measured now (never stored).
	// Reads this machine's profile (Reset).
	explicit Results(bool isCurrent = false);
	~Results() override;
	// A stored run (isCurrent false) made from a record line: it describes
	// another machine, so this one's profile, which Read would overwrite, is
	// not taken (that costs milliseconds, a lot for a store of many runs).
	static Results* FromRecord(const char* record);

	Results(const Results&) = delete;
	// Deep copies of metrics and device lines, with iconRect, expanded,
	// description, CPU count and countdown; not the overhead, icon or isCurrent.
	Results& operator=(const Results& other);
	// Runs are the same machine when their descriptions are equal.
	bool operator==(const Results& other) const;

	// Empties the run and describes this machine again.
	void Reset();
	// True nbrCpus times after Reset, then false.
	bool CycleCpu();
	// The metric of that name (its cycles unchanged), or a new one appended.
	Metric* NewTest(const char* name, const long& cycles);
	// Measures the overhead of iterations loop passes that each call rand()
	// randCalls times (1 to 6; any other value: an empty pass, timed
	// CalibrationRuns() times, the shortest kept).
	void Calibrate(const long& iterations, int randCalls);
	// How often the empty loop is timed: once in a plain run; more when tests
	// are repeated to bring their spread down. Kept across Reset.
	void SetCalibrationRuns(int32 runs);
	int32 CalibrationRuns() const { return fCalibrationRuns; }
	void StartTimer();
	// Seconds since StartTimer, less the calibrated overhead.
	float EndTimer();
	// The sum of all metrics' times of one configuration.
	float Time(const int& cpu) const;
	// Appends the screen line and one line per PCI class present.
	void FillTheseDevices();

	// The record line, copied into dst (kRecordSize bytes).
	char* Write(char* dst) const;
	// The record line into dst of size bytes. What does not fit is left out
	// whole (a device line or a metric at a time), and B_BUFFER_OVERFLOW says so.
	status_t Write(char* dst, size_t size) const;
	// Adds what a record line holds; bad fields are named on standard error.
	void Read(const char* record);

	void SaveHeader(FILE* file, const int& columns) const;
	void SaveUnits(FILE* file, const int& columns) const;
	void Save(FILE* file, const int& columns) const;

	// One comparison row at y: the description (blue when selected), the
	// icon, the current metric's bars (Metric::Draw) and, when expanded, the
	// device lines. Moves y past what it drew.
	void Draw(BView* view, const float& maxScale, const long& left, const rgb_color* colors,
	          float& y, const bool& selected, const float& reference);
	// How far Draw moves y, and where it puts the icon for a row at y: rows
	// out of sight are stepped over with these instead of being drawn.
	float RowHeight() const;
	static BRect IconFrame(float y);
	// A click on the icon toggles the device list and the icon's picture.
	bool Contains(BPoint point);
	void PrintToStream() const;

	// The metric under the list's cursor, or null.
	Metric* CurrentMetric() const;
	const char* Description() const { return fDescription; }
	// The build of the program that measured the run ("1.2.2 (commit ...)"),
	// "" when unknown. Kept beside the record, never in it.
	const char* Program() const { return fProgram; }
	void SetProgram(const char* program) { fProgram = program; }
	int32 NbrCpus() const { return fNbrCpus; }
	int32 CpuCountdown() const { return fCpuCountdown; }
	bigtime_t Overhead() const { return fOverhead; }
	bool Expanded() const { return fExpanded; }
	bool IsCurrent() const { return fIsCurrent; }
	BRect IconRect() const { return fIconRect; }
	void SetIconRect(BRect rect) { fIconRect = rect; }
	const BBitmap* Icon() const { return fIcon; }
	LinkList<RelatedDevices>& Devices() { return fDevices; }

private:
	struct NoProfile {
	};
	explicit Results(NoProfile);
	void AddDevice(int32 classId, const char* text);

	LibTimer fTimer;
	BRect fIconRect;
	bool fExpanded;
	LibString fDescription;
	LibString fProgram;
	int32 fNbrCpus;
	int32 fCpuCountdown;
	bigtime_t fOverhead;
	int32 fCalibrationRuns;
	LinkList<RelatedDevices> fDevices;
	BBitmap* fIcon;
	bool fIsCurrent;
};

#endif // RESULTS_H
