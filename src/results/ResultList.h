// The runs set side by side in the comparison: the current run first when
// there is one, then the stored machines. Owns its records.
#ifndef RESULT_LIST_H
#define RESULT_LIST_H

#include <cstdio>

#include <Point.h>
#include <SupportDefs.h>

#include "lib/LinkList.h"
#include "results/Results.h"

class ResultList : public LinkList<Results>
{
public:
	ResultList();
	~ResultList() override;

	// The largest rate of the records' current metrics; 0 when none.
	float MaxRate() const;
	int MaxNbrCpus() const;
	// The first record whose icon holds the point (which toggles it), or null.
	Results* Contains(BPoint point);
	// Puts each record's cursor on the metric of that name.
	void MakeCurrent(const Metric& metric);
	// Puts each record's cursor on its first metric.
	void FirstCurrent();
	// One table line per record, in order.
	void Save(FILE* file, const int& columns) const;
	void PrintToStream() const;
};

#endif // RESULT_LIST_H
