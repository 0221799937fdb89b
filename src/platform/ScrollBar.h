// A scroll bar that scrolls its target view: its value is the target's
// Bounds().top (vertical) or left (horizontal).
#ifndef SCROLL_BAR_H
#define SCROLL_BAR_H

#include "View.h"

constexpr float B_V_SCROLL_BAR_WIDTH = 14.0f;
constexpr float B_H_SCROLL_BAR_HEIGHT = 14.0f;

class BScrollBar : public BView
{
public:
	BScrollBar(BRect frame, const char* name, BView* target, float min, float max,
	           orientation direction);
	~BScrollBar() override;

	void SetValue(float value);
	float Value() const { return fValue; }
	void SetRange(float min, float max);
	void GetRange(float* min, float* max) const;
	// Visible part of the whole, 0 to 1.
	void SetProportion(float proportion);
	float Proportion() const { return fProportion; }
	void SetSteps(float smallStep, float largeStep);
	void GetSteps(float* smallStep, float* largeStep) const;
	void SetTarget(BView* target);
	BView* Target() const { return fTarget; }
	orientation Orientation() const { return fOrientation; }
	// Called after the value changed; the default scrolls the target.
	virtual void ValueChanged(float newValue);

protected:
	void LayoutNative() override;

private:
	friend class platform_interface::ViewWidget;
	void UpdateNative();
	static void NativeChanged(Fl_Widget* widget, void* data);

	BView* fTarget;
	float fMin;
	float fMax;
	float fValue;
	float fProportion;
	float fSmallStep;
	float fLargeStep;
	orientation fOrientation;
};

#endif // SCROLL_BAR_H
