// The rows of the comparison window: one machine a row, the chosen test's
// bars on a common scale or as a percentage of the selected row, under a
// heading with the scale's marks.
#ifndef COMPARE_RESULTS_VIEW_H
#define COMPARE_RESULTS_VIEW_H

#include <GraphicsDefs.h>
#include <View.h>

#include "lib/LibColorChooser.h"
#include "results/ResultList.h"

class Results;

// Where the bars start, in the view's coordinates; the scale's 0.
const long kCompareBarLeft = 320;
// The first row's top.
const float kCompareFirstRow = 19;
// Scales are capped here (11 digits), so that the scale's step stays an int32.
const double kCompareScaleLimit = 99999999999.0;

// The scale for rates up to value: the next multiple of step above it, step
// being 10, or 10 to the power (digits - 2) for 3 digits or more: 95 gives
// 100, 100 gives 110, 1234 gives 1300, 0 (or anything not above 0) gives 10.
float CompareScale(double value, int32* step);

class CompareResultsView : public BView
{
public:
	explicit CompareResultsView(BRect frame);
	~CompareResultsView() override;

	ResultList& List() { return fList; }
	Results* Selected() const { return fSelected; }
	void SetSelected(Results* results) { fSelected = results; }
	float MaxScale() const { return fMaxScale; }
	int32 Step() const { return fStep; }
	float Reference() const { return fReference; }
	bool ByRatio() const { return fByRatio; }
	const rgb_color* Colors() const { return fColors; }
	void SetColor(int32 index, rgb_color color);

	void UpdateMaxScale();
	void CompareByRatio(const bool& on);
	// The values at which the scale is marked for a bar area width pixels
	// wide: multiples of a round step, at least kMarkSpacing pixels apart.
	static int32 ScaleMarks(double maxScale, int32 step, double width, double* values,
	                        int32 capacity);

	// The height of all rows (the drawing's total height).
	float RowsHeight();
	// The row under point and the colour index of the bar there, or null.
	Results* BarAt(BPoint point, int32* colorIndex);

	void Draw(BRect updateRect) override;
	void MouseDown(BPoint where) override;
	void KeyDown(const char* bytes, int32 numBytes) override;
	void AttachedToWindow() override;
	// Writes the table "Quickstep.compare" in the current directory and says
	// so; B_OK when it was written.
	status_t Save();

private:
	void DrawScale(float right);

	ResultList fList;
	float fMaxScale;
	int32 fStep;
	bool fByRatio;
	float fReference;
	Results* fSelected;
	rgb_color fColors[kLibBarColorCount];
};

#endif // COMPARE_RESULTS_VIEW_H
