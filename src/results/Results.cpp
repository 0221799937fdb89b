#include "results/Results.h"

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include <Bitmap.h>
#include <OS.h>

#include "results/ProcessorIcons.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"


// The characters from from up to (not including) to.
static LibString
Span(const char* from, const char* to)
{
	return LibString(std::string(from, to).c_str());
}


// Whole-field reads straight from a record: an empty field or one with
// anything after the number is not a number. std::from_chars reads the common
// forms without a copy and many times faster than the C library (a store of a
// thousand runs holds a hundred thousand times); what it declines (blanks, a
// '+', hexadecimal, values out of range) goes to strtol/strtof on a copy, so
// the answers stay theirs.
static bool
ParseInt32(const char* from, const char* to, int32& value)
{
	if (from == to)
		return false;
	long parsed = 0;
	const std::from_chars_result read = std::from_chars(from, to, parsed);
	if (read.ec != std::errc() || read.ptr != to) {
		const std::string text(from, to);
		char* end = nullptr;
		errno = 0;
		parsed = strtol(text.c_str(), &end, 10);
		if (*end != '\0' || errno != 0)
			return false;
	}
	value = static_cast<int32>(parsed);
	return true;
}


static bool
ParseFloat(const char* from, const char* to, float& value)
{
	if (from == to)
		return false;
	float parsed = 0;
	const std::from_chars_result read = std::from_chars(from, to, parsed);
	if (read.ec != std::errc() || read.ptr != to) {
		const std::string text(from, to);
		char* end = nullptr;
		parsed = strtof(text.c_str(), &end);
		if (*end != '\0')
			return false;
	}
	value = parsed;
	return true;
}


Results::Results(bool isCurrent)
    : fIconRect(0, 0, -1, -1), fExpanded(false), fNbrCpus(0), fCpuCountdown(1), fOverhead(0),
      fCalibrationRuns(1), fIcon(nullptr), fIsCurrent(isCurrent)
{
	Reset();
	fIcon = new (std::nothrow) BBitmap(BRect(0, 0, 15, 15), B_CMAP8);
	if (fIcon != nullptr)
		fIcon->SetBits(Processor, kProcessorIconSize, 0, B_CMAP8);
}


Results::Results(NoProfile)
    : fIconRect(0, 0, -1, -1), fExpanded(false), fNbrCpus(0), fCpuCountdown(1), fOverhead(0),
      fCalibrationRuns(1), fIcon(nullptr), fIsCurrent(false)
{
	fIcon = new (std::nothrow) BBitmap(BRect(0, 0, 15, 15), B_CMAP8);
	if (fIcon != nullptr)
		fIcon->SetBits(Processor, kProcessorIconSize, 0, B_CMAP8);
}


Results*
Results::FromRecord(const char* record)
{
	Results* results = new Results(NoProfile());
	results->Read(record);
	return results;
}


Results::~Results()
{
	fDevices.Clear();
	delete fIcon;
}


Results&
Results::operator=(const Results& other)
{
	if (&other == this)
		return *this;

	fIconRect = other.fIconRect;
	fExpanded = other.fExpanded;
	fDescription = other.fDescription;
	fProgram = other.fProgram;
	fNbrCpus = other.fNbrCpus;
	fCpuCountdown = other.fCpuCountdown;
	// The list copies move only the source's cursors, which are mutable.
	fDevices = other.fDevices;
	LinkList<Metric>::operator=(other);
	return *this;
}


bool
Results::operator==(const Results& other) const
{
	return fDescription == other.fDescription;
}


void
Results::Reset()
{
	Clear();
	fDevices.Clear();

	LibSysInfo info;
	info.Description(fDescription);
	fNbrCpus = info.CpuCount();
	fExpanded = false;
	fCpuCountdown = fNbrCpus + 1;
	fOverhead = 0;
}


bool
Results::CycleCpu()
{
	return --fCpuCountdown > 0;
}


// The name search leaves the cursor on the found metric or clears it; adding a
// new metric does not move it.
Metric*
Results::NewTest(const char* name, const long& cycles)
{
	Metric probe;
	probe.Description(name);
	Metric* metric = Get(&probe);
	if (metric != nullptr)
		return metric;

	metric = new Metric;
	metric->Description(name);
	metric->NbrCycles(cycles);
	if (!Insert(metric))
		fprintf(stderr, "<%s> not inserted\n", name);
	return metric;
}


// One loop per number of calls, so a pass holds exactly the calls a kernel
// makes and nothing else. rand() changes the library's state, so the calls
// stay; the empty pass keeps its loop through a compiler barrier.
template <int Calls>
static void
RandPasses(long iterations)
{
	for (long i = 0; i < iterations; i++) {
		for (int k = 0; k < Calls; k++)
			rand();
	}
}


static void
EmptyPasses(long iterations)
{
	for (long i = 0; i < iterations; i++)
		__asm__ __volatile__("" ::: "memory");
}


void
Results::Calibrate(const long& iterations, int randCalls)
{
	if (iterations == 0) {
		fOverhead = 0;
		return;
	}

	const bigtime_t start = system_time();
	switch (randCalls) {
		case 1:
			RandPasses<1>(iterations);
			break;
		case 2:
			RandPasses<2>(iterations);
			break;
		case 3:
			RandPasses<3>(iterations);
			break;
		case 4:
			RandPasses<4>(iterations);
			break;
		case 5:
			RandPasses<5>(iterations);
			break;
		case 6:
			RandPasses<6>(iterations);
			break;
		default: {
			// The empty loop is timed several times and the shortest kept: an
			// interruption (another program's time slice) only ever lengthens
			// a run, and subtracting one would take the interruption's length
			// off the measurement that follows. The loops with rand() calls
			// run once, so the random sequence the tests draw stays the same.
			bigtime_t shortest = -1;
			for (int32 run = 0; run < fCalibrationRuns; run++) {
				const bigtime_t runStart = system_time();
				EmptyPasses(iterations);
				const bigtime_t elapsed = system_time() - runStart;
				if (shortest < 0 || elapsed < shortest)
					shortest = elapsed;
			}
			fOverhead = shortest;
			return;
		}
	}
	fOverhead = system_time() - start;
}


void
Results::SetCalibrationRuns(int32 runs)
{
	fCalibrationRuns = runs > 1 ? runs : 1;
}


void
Results::StartTimer()
{
	fTimer.Start();
}


// The overhead is in microseconds.
float
Results::EndTimer()
{
	return fTimer.Stop() - fOverhead / 1000000.0;
}


// Walks the nodes, not the cursor: the current metric stays current.
float
Results::Time(const int& cpu) const
{
	float sum = 0;
	for (ListNode<Metric>* node = fHead; node != nullptr; node = node->fNext)
		sum += node->fData->TimeAt(cpu);
	return sum;
}


void
Results::FillTheseDevices()
{
	LibSysInfo info;
	LibString screen;
	screen.Format("%s, %dx%d resolution", info.ScreenDepthStr(), info.ScreenWidth(),
	              info.ScreenHeight());
	AddDevice(kScreenClassId, screen);

	LibDeviceInfo catalogue;
	int index = 0;
	int classId = 0;
	LibString className;
	while (catalogue.NextClassId(index, classId, className)) {
		LibString text;
		if (catalogue.FindDevice(classId, text))
			AddDevice(classId, text);
	}
}


char*
Results::Write(char* dst) const
{
	Write(dst, kRecordSize);
	return dst;
}


status_t
Results::Write(char* dst, size_t size) const
{
	if (size == 0)
		return B_BUFFER_OVERFLOW;
	dst[0] = '\0';

	LibString head(fDescription);
	head += "\t";
	if (static_cast<size_t>(head.Length()) + 1 > size)
		return B_BUFFER_OVERFLOW;
	memcpy(dst, head.String(), head.Length() + 1);
	size_t used = head.Length();

	// Only the device list's own cursor moves; nothing else uses it.
	LinkList<RelatedDevices>& devices = const_cast<LinkList<RelatedDevices>&>(fDevices);
	for (RelatedDevices* device = devices.First(); device != nullptr; device = devices.Next()) {
		LibString line;
		line.Format("%d:%s\t", device->ClassId(), device->Description());
		if (used + line.Length() + 1 > size)
			return B_BUFFER_OVERFLOW;
		memcpy(dst + used, line.String(), line.Length() + 1);
		used += line.Length();
	}

	for (ListNode<Metric>* node = fHead; node != nullptr; node = node->fNext) {
		if (node->fData->Write(dst, size) != B_OK)
			return B_BUFFER_OVERFLOW;
	}
	return B_OK;
}


// Kept as the record has always been read: the CPU count is the one character
// after the first "(" of the description, and each metric reads as many times
// as that count says, whatever was written.
void
Results::Read(const char* record)
{
	const char* tab = strchr(record, '\t');
	if (tab == nullptr)
		return;

	fDescription = Span(record, tab);
	fNbrCpus = 0;
	const char* paren = strchr(fDescription.String(), '(');
	if (paren != nullptr && paren[1] >= '0' && paren[1] <= '9')
		fNbrCpus = paren[1] - '0';
	fCpuCountdown = fNbrCpus + 1;

	// Device lines: every tab-terminated field after the description.
	const char* field = tab + 1;
	for (const char* end = strchr(field, '\t'); end != nullptr; end = strchr(field, '\t')) {
		LibString text;
		text = Span(field, end);
		const int32 colon = text.Index(":");
		if (colon < 0) {
			fprintf(stderr, "Unable to get class id for <%s>\n", text.String());
			AddDevice(0, text);
		} else {
			const int32 classId = atoi(text.String());
			AddDevice(classId, text.Extract(colon + 1, text.Length() - colon - 1));
		}
		field = end + 1;
	}

	// Metrics: "index:cycles/time,time,...;" after the last tab.
	const char* at = field;
	for (const char* colon = strchr(at, ':'); colon != nullptr; colon = strchr(at, ':')) {
		const char* indexText = at;
		at = colon + 1;

		int32 index = 0;
		if (!ParseInt32(indexText, colon, index)) {
			fprintf(stderr, "Error extracting metric type for <%s>. <%s>\n",
			        Span(indexText, colon).String(), fDescription.String());
			continue;
		}
		Metric* metric = new Metric;
		metric->Index(index);
		metric->Description(Metric::NameOf(index));

		const char* slash = strchr(at, '/');
		int32 cycles = 1;
		bool cyclesRead = false;
		if (slash != nullptr) {
			cyclesRead = ParseInt32(at, slash, cycles);
			at = slash + 1;
		}
		if (!cyclesRead) {
			fprintf(stderr, "Error extracting number of iterations\n");
			cycles = 1;
		}
		metric->NbrCycles(cycles);
		const bool kept = Insert(metric);

		for (int32 i = 0; i < fNbrCpus; i++) {
			const char* end = strpbrk(at, ",;");
			float seconds = 0;
			bool timeRead = false;
			if (end != nullptr) {
				timeRead = ParseFloat(at, end, seconds);
				at = end + 1;
			}
			if (timeRead)
				metric->Time(seconds);
			else
				fprintf(stderr, "Error extracting time for metric <%s> (%d)\n",
				        metric->Description(), metric->Index());
		}
		if (!kept)
			delete metric;
	}
}


void
Results::SaveHeader(FILE* file, const int& columns) const
{
	fputc('\t', file);
	for (ListNode<Metric>* node = fHead; node != nullptr; node = node->fNext) {
		fprintf(file, "%s\t", node->fData->Description());
		for (int i = 1; i < columns; i++)
			fputc('\t', file);
	}
	fputc('\n', file);
}


void
Results::SaveUnits(FILE* file, const int& columns) const
{
	fputc('\t', file);
	for (ListNode<Metric>* node = fHead; node != nullptr; node = node->fNext) {
		fprintf(file, "(%s)\t", node->fData->Units());
		for (int i = 1; i < columns; i++)
			fputc('\t', file);
	}
	fputs("\n\t", file);
	for (ListNode<Metric>* node = fHead; node != nullptr; node = node->fNext) {
		for (int cpus = columns; cpus >= 1; cpus--)
			fprintf(file, "%d cpu\t", cpus);
	}
	fputc('\n', file);
}


void
Results::Save(FILE* file, const int& columns) const
{
	fprintf(file, "%s\t", fDescription.String());
	for (ListNode<Metric>* node = fHead; node != nullptr; node = node->fNext)
		node->fData->Save(file, columns);
	fputc('\n', file);
}


// A row is the bar line (17) and, expanded, a gap of 10 and 13 per device
// line, as Draw steps them.
float
Results::RowHeight() const
{
	float height = 17;
	if (fExpanded)
		height += 10 + 13.0f * fDevices.Size();
	return height;
}


// 16 x 16 pixels at the left of the row (BRect coordinates are inclusive).
BRect
Results::IconFrame(float y)
{
	return BRect(2, y, 17, y + 15);
}


// BRect coordinates are inclusive.
bool
Results::Contains(BPoint point)
{
	if (point.x < fIconRect.left || point.x > fIconRect.right || point.y < fIconRect.top ||
	    point.y > fIconRect.bottom)
		return false;

	fExpanded = !fExpanded;
	if (fIcon != nullptr)
		fIcon->SetBits(fExpanded ? ProcessorOpen : Processor, kProcessorIconSize, 0, B_CMAP8);
	return true;
}


void
Results::PrintToStream() const
{
	fprintf(stderr, "<%s>, nbrcpu %d, cpu %d\n", fDescription.String(), fNbrCpus, fCpuCountdown);
}


Metric*
Results::CurrentMetric() const
{
	return fCurrent != nullptr ? fCurrent->fData : nullptr;
}


void
Results::AddDevice(int32 classId, const char* text)
{
	RelatedDevices* line = new RelatedDevices;
	line->Description(classId, text);
	if (!fDevices.Insert(line))
		delete line;
}
