// A menu that pops up from a menu field: by default one item at a time is
// marked (radio mode) and the field shows the marked item's label.
#ifndef POP_UP_MENU_H
#define POP_UP_MENU_H

#include "Menu.h"

class BPopUpMenu : public BMenu
{
public:
	explicit BPopUpMenu(const char* name, bool radioMode = true, bool labelFromMarked = true);
	~BPopUpMenu() override;

	bool IsLabelFromMarked() const { return fLabelFromMarked; }

private:
	bool fLabelFromMarked;
};

#endif // POP_UP_MENU_H
