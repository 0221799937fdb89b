// Metric's bars: built into the desktop program only, as drawing needs the
// window half of the platform.
#include "results/Metric.h"

#include <View.h>

// Several bars over each other in one row: the longest first, then each
// shorter one over it, so every configuration shows as a band of its own
// colour. A rate equal to one already drawn is not drawn again and zero
// rates never are; both are meant.
void
Metric::Draw(BView* view, const float& maxScale, const long& left, const rgb_color* colors,
             float& y, const float& reference)
{
	SetDrawn(false);
	int which = 0;
	float rate = MaxRate(which);
	if (rate > 0) {
		SetDrawn(which, true);
		const BRect frame = view->Frame();
		const double span = frame.right - frame.left - left;
		for (int position = which; position >= 0; position = NextSmallestRate(rate)) {
			const double length = BarLength(span, rate, maxScale, reference);
			if (length < 1)
				continue;
			view->SetHighColor(colors[fCount - 1 - position]);
			const float right = static_cast<float>(left + length);
			view->FillRect(BRect(left + 1, y + 3, right, y + 13), B_SOLID_HIGH);
		}
	}
	y += 17;
}
