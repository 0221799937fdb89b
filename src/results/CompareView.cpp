#include "results/CompareView.h"

#include <InterfaceDefs.h>


CompareView::CompareView(BRect frame) : BView(frame, "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
}


CompareView::~CompareView()
{
}
