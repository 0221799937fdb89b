#include "results/CompareResultsView.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>

#include <Message.h>
#include <Window.h>

#include "lib/LibAlert.h"
#include "lib/LibString.h"
#include "results/CompareStore.h"
#include "results/CompareWin.h"
#include "results/Results.h"

namespace {

// Scale labels stand at least this far apart.
const double kMarkSpacing = 60;
const int32 kMaxMarks = 32;

} // namespace


float
CompareScale(double value, int32* step)
{
	if (!(value > 0))
		value = 0;
	if (value > kCompareScaleLimit)
		value = kCompareScaleLimit;
	const int64 whole = static_cast<int64>(value);
	char digits[32];
	const int length = snprintf(digits, sizeof(digits), "%" PRId64, whole);
	int64 size = 10;
	if (length >= 3) {
		size = 1;
		for (int i = 0; i < length - 2; i++)
			size *= 10;
	}
	if (step != nullptr)
		*step = static_cast<int32>(size);
	return static_cast<float>((whole + size) / size * size);
}


CompareResultsView::CompareResultsView(BRect frame)
    : BView(frame, "results", B_FOLLOW_ALL_SIDES,
            B_WILL_DRAW | B_FRAME_EVENTS | B_FULL_UPDATE_ON_RESIZE | B_NAVIGABLE),
      fMaxScale(10), fStep(10), fByRatio(false), fReference(-1), fSelected(nullptr)
{
	SetViewColor(255, 255, 255);
	SetLowColor(255, 255, 255);
	for (int32 i = 0; i < kLibBarColorCount; i++)
		fColors[i] = kLibDefaultBarColors[i];
}


CompareResultsView::~CompareResultsView()
{
}


void
CompareResultsView::AttachedToWindow()
{
	BView::AttachedToWindow();
	// "S" is meant for the rows: they take the keys from the start.
	MakeFocus(true);
}


void
CompareResultsView::SetColor(int32 index, rgb_color color)
{
	if (index >= 0 && index < kLibBarColorCount)
		fColors[index] = color;
}


void
CompareResultsView::UpdateMaxScale()
{
	double scale = fList.MaxRate();
	fReference = -1;
	if (fByRatio && fSelected != nullptr) {
		const Metric* metric = fSelected->CurrentMetric();
		if (metric != nullptr) {
			int which = 0;
			fReference = metric->MaxRate(which);
			if (fReference > 0)
				scale = 100.0 * scale / fReference;
		}
	}
	fMaxScale = CompareScale(scale, &fStep);
}


void
CompareResultsView::CompareByRatio(const bool& on)
{
	fByRatio = on;
	UpdateMaxScale();
}


int32
CompareResultsView::ScaleMarks(double maxScale, int32 step, double width, double* values,
                               int32 capacity)
{
	if (!(maxScale > 0) || step <= 0 || !(width > 0) || capacity <= 0)
		return 0;
	// Round steps from the scale's own: 1, 2, 5, 10, 20, 50 ... times it.
	double spacing = step;
	const double factors[] = {2, 2.5, 2};
	for (int i = 0; width * spacing / maxScale < kMarkSpacing && spacing < maxScale; i++)
		spacing *= factors[i % 3];
	int32 count = 0;
	for (double value = spacing; value <= maxScale * (1 + 1e-9) && count < capacity;
	     value += spacing)
		values[count++] = value;
	return count;
}


float
CompareResultsView::RowsHeight()
{
	float height = kCompareFirstRow;
	for (ListNode<Results>* node = fList.Position(0); node != nullptr; node = node->fNext)
		height += node->fData->RowHeight();
	return height;
}


Results*
CompareResultsView::BarAt(BPoint point, int32* colorIndex)
{
	const BRect frame = Frame();
	const double span = frame.right - frame.left - kCompareBarLeft;
	const bool usable = !fByRatio || fReference > 0;
	float y = kCompareFirstRow;
	for (ListNode<Results>* node = fList.Position(0); node != nullptr; node = node->fNext) {
		Results* row = node->fData;
		const float top = y;
		y += row->RowHeight();
		if (point.y < top + 3 || point.y > top + 13)
			continue;
		const Metric* metric = row->CurrentMetric();
		if (metric == nullptr || !usable || point.x <= kCompareBarLeft)
			return nullptr;
		// The band under the point is the shortest bar reaching it.
		double shortest = -1;
		int found = -1;
		for (int p = 0; p < metric->Count(); p++) {
			const double length = Metric::BarLength(span, metric->Rate(p), fMaxScale, fReference);
			if (length >= 1 && kCompareBarLeft + length >= point.x &&
			    (found < 0 || length < shortest)) {
				shortest = length;
				found = p;
			}
		}
		if (found < 0)
			return nullptr;
		if (colorIndex != nullptr)
			*colorIndex = metric->Count() - 1 - found;
		return row;
	}
	return nullptr;
}


void
CompareResultsView::DrawScale(float right)
{
	const float width = right - kCompareBarLeft;
	double values[kMaxMarks];
	const int32 count = ScaleMarks(fMaxScale, fStep, width, values, kMaxMarks);
	for (int32 i = 0; i < count; i++) {
		const float x = static_cast<float>(kCompareBarLeft + width * values[i] / fMaxScale);
		LibString label;
		label.Format("%" PRId64, static_cast<int64>(std::llround(values[i])));
		const float labelWidth = StringWidth(label);
		float labelLeft = x - labelWidth / 2;
		if (labelLeft + labelWidth > right - 2)
			labelLeft = right - 2 - labelWidth;
		DrawString(label, BPoint(labelLeft, 10));
		StrokeLine(BPoint(x, 11), BPoint(x, 14));
	}
}


void
CompareResultsView::Draw(BRect updateRect)
{
	const BRect bounds = Bounds();
	const float right = Frame().Width();
	SetHighColor(0, 0, 0);
	DrawString("Configuration", BPoint(10, 10));
	StrokeLine(BPoint(0, 14), BPoint(right, 14));

	DrawScale(right);

	LibString units;
	if (fByRatio) {
		units = "( Percent )";
	} else {
		Results* first = fList.First();
		const Metric* metric = first != nullptr ? first->CurrentMetric() : nullptr;
		units.Format("( %s )", metric != nullptr ? metric->Units() : "");
	}
	DrawString(units, BPoint(110, 10));

	// In ratio mode a selected row without a rate gives no percentages.
	const float scale = !fByRatio || fReference > 0 ? fMaxScale : 0;
	float y = kCompareFirstRow;
	for (ListNode<Results>* node = fList.Position(0); node != nullptr; node = node->fNext) {
		Results* row = node->fData;
		const float height = row->RowHeight();
		// Rows out of sight are stepped over; their icons still move with them.
		if (y > updateRect.bottom || y + height < updateRect.top) {
			row->SetIconRect(Results::IconFrame(y));
			y += height;
			continue;
		}
		row->Draw(this, scale, kCompareBarLeft, fColors, y, row == fSelected, fReference);
	}
	SetHighColor(0, 0, 0);
	StrokeLine(BPoint(kCompareBarLeft, 0), BPoint(kCompareBarLeft, std::max(y, bounds.bottom)));

	CompareWin* window = dynamic_cast<CompareWin*>(Window());
	if (window != nullptr)
		window->UpdateScrollBars(y);
}


void
CompareResultsView::MouseDown(BPoint where)
{
	MakeFocus(true);
	Results* row = fList.Contains(where);
	if (row != nullptr) {
		fSelected = row;
		if (fByRatio)
			UpdateMaxScale();
		Invalidate();
		return;
	}
	int32 colorIndex = 0;
	if (BarAt(where, &colorIndex) != nullptr && Window() != nullptr) {
		BMessage choose(kMsgCompareChooseColor);
		choose.AddInt32("index", colorIndex);
		Window()->PostMessage(&choose);
	}
}


void
CompareResultsView::KeyDown(const char* bytes, int32 numBytes)
{
	if (numBytes == 1 && bytes[0] == 'S' && Window() != nullptr)
		Window()->PostMessage(kMsgCompareSave);
	BView::KeyDown(bytes, numBytes);
}


status_t
CompareResultsView::Save()
{
	const status_t status = CompareStore::ExportTable(fList, kCompareTableName);
	// A table that cannot be made is passed over without a word.
	if (status == B_OK)
		LibInfo("%s has been created.", kCompareTableName);
	return status;
}
