// The comparison window's background: it fills the window and carries the
// test menu, the ratio box and the rows' scroll view.
#ifndef COMPARE_VIEW_H
#define COMPARE_VIEW_H

#include <View.h>

class CompareView : public BView
{
public:
	explicit CompareView(BRect frame);
	~CompareView() override;
};

#endif // COMPARE_VIEW_H
