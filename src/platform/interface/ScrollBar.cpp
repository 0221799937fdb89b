#include "ScrollBar.h"

#include <FL/Fl_Scrollbar.H>

#include <algorithm>

#include "interface/UIThread.h"


BScrollBar::BScrollBar(BRect frame, const char* name, BView* target, float min, float max,
                       orientation direction)
    : BView(frame, name,
            direction == B_VERTICAL ? B_FOLLOW_TOP_BOTTOM | B_FOLLOW_RIGHT
                                    : B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM,
            B_WILL_DRAW),
      fTarget(target), fMin(min), fMax(max), fValue(min), fProportion(0), fSmallStep(1),
      fLargeStep(10), fOrientation(direction)
{
	Fl_Scrollbar* native = new Fl_Scrollbar(0, 0, 1, 1);
	native->type(direction == B_VERTICAL ? FL_VERTICAL : FL_HORIZONTAL);
	native->callback(NativeChanged, this);
	SetNativeWidget(native);
	UpdateNative();
}


BScrollBar::~BScrollBar()
{
}


void
BScrollBar::SetValue(float value)
{
	value = std::max(fMin, std::min(fMax, value));
	if (value == fValue)
		return;
	fValue = value;
	UpdateNative();
	ValueChanged(value);
}


void
BScrollBar::SetRange(float min, float max)
{
	fMin = min;
	fMax = std::max(min, max);
	float value = std::max(fMin, std::min(fMax, fValue));
	UpdateNative();
	if (value != fValue) {
		fValue = value;
		UpdateNative();
		ValueChanged(value);
	}
}


void
BScrollBar::GetRange(float* min, float* max) const
{
	if (min != nullptr)
		*min = fMin;
	if (max != nullptr)
		*max = fMax;
}


void
BScrollBar::SetProportion(float proportion)
{
	fProportion = std::max(0.0f, std::min(1.0f, proportion));
	UpdateNative();
}


void
BScrollBar::SetSteps(float smallStep, float largeStep)
{
	fSmallStep = smallStep;
	fLargeStep = largeStep;
	UpdateNative();
}


void
BScrollBar::GetSteps(float* smallStep, float* largeStep) const
{
	if (smallStep != nullptr)
		*smallStep = fSmallStep;
	if (largeStep != nullptr)
		*largeStep = fLargeStep;
}


void
BScrollBar::SetTarget(BView* target)
{
	fTarget = target;
}


void
BScrollBar::ValueChanged(float newValue)
{
	if (fTarget == nullptr)
		return;
	BRect bounds = fTarget->Bounds();
	if (fOrientation == B_VERTICAL)
		fTarget->ScrollTo(BPoint(bounds.left, newValue));
	else
		fTarget->ScrollTo(BPoint(newValue, bounds.top));
}


void
BScrollBar::LayoutNative()
{
	BView::LayoutNative();
}


void
BScrollBar::UpdateNative()
{
	Fl_Scrollbar* native = static_cast<Fl_Scrollbar*>(NativeWidget());
	if (native == nullptr)
		return;
	native->bounds(fMin, fMax);
	native->slider_size(fMax > fMin ? std::max(0.08f, fProportion) : 1.0);
	native->linesize(std::max(1, static_cast<int>(fSmallStep)));
	native->Fl_Valuator::value(fValue);
	if (fMax > fMin)
		native->activate();
	else
		native->deactivate();
	native->redraw();
	platform_interface::WakeUI();
}


void
BScrollBar::NativeChanged(Fl_Widget* widget, void* data)
{
	BScrollBar* bar = static_cast<BScrollBar*>(data);
	float value = static_cast<float>(static_cast<Fl_Scrollbar*>(widget)->value());
	value = std::max(bar->fMin, std::min(bar->fMax, value));
	if (value == bar->fValue)
		return;
	bar->fValue = value;
	bar->ValueChanged(value);
}
