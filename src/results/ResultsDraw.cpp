// Results' comparison row: built into the desktop program only, as drawing
// needs the window half of the platform.
#include "results/Results.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include <Bitmap.h>
#include <Font.h>
#include <View.h>

#include "lib/LibString.h"

namespace {

// The description cut (with "...") to end before the bars: a long one would
// run under them. A binary search, as a record's description may be long.
LibString
Fitted(BView* view, const char* text, float width)
{
	if (view->StringWidth(text) <= width)
		return LibString(text);
	const std::string whole(text);
	size_t low = 0;
	size_t high = whole.size();
	while (low < high) {
		const size_t middle = (low + high + 1) / 2;
		if (view->StringWidth((whole.substr(0, middle) + "...").c_str()) <= width)
			low = middle;
		else
			high = middle - 1;
	}
	// Not inside a UTF-8 sequence.
	while (low > 0 && (static_cast<unsigned char>(whole[low]) & 0xC0) == 0x80)
		low--;
	return LibString((whole.substr(0, low) + "...").c_str());
}

} // namespace


void
Results::Draw(BView* view, const float& maxScale, const long& left, const rgb_color* colors,
              float& y, const bool& selected, const float& reference)
{
	if (selected)
		view->SetHighColor(0, 0, 255, 0);
	else
		view->SetHighColor(0, 0, 0, 0);
	view->DrawString(Fitted(view, fDescription, left - 21 - 4), BPoint(21, y + 12));

	fIconRect = IconFrame(y);
	if (fIcon != nullptr)
		view->DrawBitmap(fIcon, fIcon->Bounds(), fIconRect);

	Metric* metric = CurrentMetric();
	if (metric == nullptr) {
		fprintf(stderr, "No metric is current in Results::Draw\n");
		y += 17;
	} else {
		metric->Draw(view, maxScale, left, colors, y, reference);
	}

	if (!fExpanded)
		return;
	view->SetHighColor(0, 0, 0, 0);
	y += 10;
	// The device lines in a smaller type, so that a label fits before 75; a
	// wider one (a larger desktop font) pushes its text right rather than
	// under it.
	BFont font;
	view->GetFont(&font);
	view->SetFontSize(10);
	for (ListNode<RelatedDevices>* node = fDevices.Position(0); node != nullptr;
	     node = node->fNext) {
		const char* label = RelatedDevices::ClassLabel(node->fData->ClassId());
		view->DrawString(label, BPoint(30, y));
		const float textLeft = std::max(75.0f, 30 + view->StringWidth(label) + 3);
		view->DrawString(node->fData->Description(), BPoint(textLeft, y));
		y += 13;
	}
	view->SetFont(&font);
}
