#include "results/ResultList.h"

ResultList::ResultList()
{
}


ResultList::~ResultList()
{
}


// Walks the nodes: the list's cursor (the selected row) stays where it is.
float
ResultList::MaxRate() const
{
	float best = 0;
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext) {
		const Metric* metric = node->fData->CurrentMetric();
		if (metric == nullptr)
			continue;
		int which = 0;
		const float rate = metric->MaxRate(which);
		if (rate > best)
			best = rate;
	}
	return best;
}


int
ResultList::MaxNbrCpus() const
{
	int most = 0;
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext) {
		if (node->fData->NbrCpus() > most)
			most = node->fData->NbrCpus();
	}
	return most;
}


Results*
ResultList::Contains(BPoint point)
{
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext) {
		if (node->fData->Contains(point))
			return node->fData;
	}
	return nullptr;
}


void
ResultList::MakeCurrent(const Metric& metric)
{
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext) {
		if (node->fData->Get(&metric) == nullptr)
			fprintf(stderr, "Unable to make given metric <%s> current\n", metric.Description());
	}
}


void
ResultList::FirstCurrent()
{
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext) {
		if (node->fData->First() == nullptr)
			fprintf(stderr, "Unable to make first current <%s>\n", node->fData->Description());
	}
}


void
ResultList::Save(FILE* file, const int& columns) const
{
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext)
		node->fData->Save(file, columns);
}


void
ResultList::PrintToStream() const
{
	for (ListNode<Results>* node = fHead; node != nullptr; node = node->fNext)
		node->fData->PrintToStream();
}
