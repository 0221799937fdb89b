// The machine's profile in three groups (Machine, Monitor, CPU), one line
// each, filled once when the view is made.
#ifndef ABOUT_SYS_VIEW_H
#define ABOUT_SYS_VIEW_H

#include <View.h>

class AboutSysView : public BView
{
public:
	explicit AboutSysView(BRect frame);
	~AboutSysView() override;
};

#endif // ABOUT_SYS_VIEW_H
