// A label and a button that pops up a menu (owned). Choosing an item invokes
// it (its message goes to its target, by default the window) and, in a radio
// menu, marks it; the button shows the marked item's label (nothing while no
// item is marked).
#ifndef MENU_FIELD_H
#define MENU_FIELD_H

#include <string>

#include "View.h"

class BMenu;
class BMenuItem;

class BMenuField : public BView
{
public:
	BMenuField(BRect frame, const char* name, const char* label, BMenu* menu,
	           uint32 resizingMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
	           uint32 flags = B_WILL_DRAW | B_NAVIGABLE);
	~BMenuField() override;

	BMenu* Menu() const { return fMenu; }
	// The marked item, or null.
	BMenuItem* MenuItem() const;
	void SetLabel(const char* label);
	const char* Label() const;
	void SetDivider(float xCoordinate);
	float Divider() const { return fDivider; }
	void SetEnabled(bool enabled);
	bool IsEnabled() const { return fEnabled; }

	void Draw(BRect updateRect) override;
	void AttachedToWindow() override;

	// Brings what FLTK shows in line with the menu (after every change).
	void Rebuild();

protected:
	void LayoutNative() override;

private:
	BMenu* fMenu;
	std::string fLabel;
	float fDivider;
	bool fEnabled;
};

#endif // MENU_FIELD_H
