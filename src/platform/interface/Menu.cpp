#include "Menu.h"

#include <algorithm>
#include <cstring>

#include "MenuBar.h"
#include "MenuField.h"
#include "MenuItem.h"
#include "Message.h"


BMenu::BMenu(const char* name, menu_layout layout)
    : fName(name != nullptr ? name : ""), fSuperitem(nullptr), fBar(nullptr), fField(nullptr),
      fRadioMode(false), fEnabled(true)
{
	(void)layout;
}


BMenu::~BMenu()
{
	std::vector<BMenuItem*> items;
	items.swap(fItems);
	for (BMenuItem* item : items) {
		item->fMenu = nullptr;
		delete item;
	}
}


bool
BMenu::AddItem(BMenuItem* item)
{
	return AddItem(item, CountItems());
}


bool
BMenu::AddItem(BMenuItem* item, int32 index)
{
	if (item == nullptr || item->fMenu != nullptr || index < 0 || index > CountItems())
		return false;
	fItems.insert(fItems.begin() + index, item);
	item->fMenu = this;
	Changed();
	return true;
}


bool
BMenu::AddItem(BMenu* submenu)
{
	if (submenu == nullptr)
		return false;
	return AddItem(new BMenuItem(submenu));
}


bool
BMenu::AddSeparatorItem()
{
	return AddItem(new BSeparatorItem);
}


bool
BMenu::RemoveItem(BMenuItem* item)
{
	auto found = std::find(fItems.begin(), fItems.end(), item);
	if (found == fItems.end())
		return false;
	fItems.erase(found);
	item->fMenu = nullptr;
	Changed();
	return true;
}


BMenuItem*
BMenu::RemoveItem(int32 index)
{
	BMenuItem* item = ItemAt(index);
	if (item != nullptr)
		RemoveItem(item);
	return item;
}


bool
BMenu::RemoveItems(int32 index, int32 count, bool deleteItems)
{
	if (index < 0 || count < 0 || index + count > CountItems())
		return false;
	for (int32 i = 0; i < count; i++) {
		BMenuItem* item = RemoveItem(index);
		if (deleteItems)
			delete item;
	}
	return true;
}


BMenuItem*
BMenu::ItemAt(int32 index) const
{
	if (index < 0 || index >= CountItems())
		return nullptr;
	return fItems[index];
}


BMenu*
BMenu::SubmenuAt(int32 index) const
{
	BMenuItem* item = ItemAt(index);
	return item != nullptr ? item->Submenu() : nullptr;
}


int32
BMenu::CountItems() const
{
	return static_cast<int32>(fItems.size());
}


int32
BMenu::IndexOf(BMenuItem* item) const
{
	auto found = std::find(fItems.begin(), fItems.end(), item);
	return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}


BMenuItem*
BMenu::FindItem(const char* label) const
{
	if (label == nullptr)
		return nullptr;
	for (BMenuItem* item : fItems) {
		if (strcmp(item->Label(), label) == 0)
			return item;
		if (item->Submenu() != nullptr) {
			BMenuItem* found = item->Submenu()->FindItem(label);
			if (found != nullptr)
				return found;
		}
	}
	return nullptr;
}


BMenuItem*
BMenu::FindItem(uint32 command) const
{
	for (BMenuItem* item : fItems) {
		if (item->Message() != nullptr && item->Message()->what == command)
			return item;
		if (item->Submenu() != nullptr) {
			BMenuItem* found = item->Submenu()->FindItem(command);
			if (found != nullptr)
				return found;
		}
	}
	return nullptr;
}


BMenuItem*
BMenu::FindMarked() const
{
	for (BMenuItem* item : fItems) {
		if (item->IsMarked())
			return item;
	}
	return nullptr;
}


status_t
BMenu::SetTargetForItems(BHandler* target)
{
	status_t result = B_OK;
	for (BMenuItem* item : fItems) {
		status_t status = item->SetTarget(target);
		if (status != B_OK)
			result = status;
	}
	return result;
}


void
BMenu::SetRadioMode(bool on)
{
	fRadioMode = on;
	Changed();
}


void
BMenu::SetEnabled(bool enabled)
{
	fEnabled = enabled;
	Changed();
}


const char*
BMenu::Name() const
{
	return fName.c_str();
}


BMenu*
BMenu::Supermenu() const
{
	return fSuperitem != nullptr ? fSuperitem->Menu() : nullptr;
}


BMenuBar*
BMenu::Bar() const
{
	if (fBar != nullptr)
		return fBar;
	BMenu* super = Supermenu();
	return super != nullptr ? super->Bar() : nullptr;
}


BMenuField*
BMenu::Field() const
{
	if (fField != nullptr)
		return fField;
	BMenu* super = Supermenu();
	return super != nullptr ? super->Field() : nullptr;
}


BWindow*
BMenu::Window() const
{
	BMenuBar* bar = Bar();
	if (bar != nullptr)
		return bar->Window();
	BMenuField* field = Field();
	return field != nullptr ? field->Window() : nullptr;
}


void
BMenu::Changed()
{
	BMenuBar* bar = Bar();
	if (bar != nullptr)
		bar->Rebuild();
	BMenuField* field = Field();
	if (field != nullptr)
		field->Rebuild();
}
