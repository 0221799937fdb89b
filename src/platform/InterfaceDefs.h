// Constants and small types of the interface kit, under their BeOS names and
// values: colours of the user interface, key codes and modifiers, alignment,
// orientation, border styles, patterns and the system palette.
#ifndef INTERFACE_DEFS_H
#define INTERFACE_DEFS_H

#include "GraphicsDefs.h"
#include "SupportDefs.h"

enum color_which {
	B_PANEL_BACKGROUND_COLOR = 1,
	B_MENU_BACKGROUND_COLOR = 2,
	B_WINDOW_TAB_COLOR = 3,
	B_KEYBOARD_NAVIGATION_COLOR = 4,
	B_DESKTOP_COLOR = 5,
	B_MENU_SELECTION_BACKGROUND_COLOR = 6,
	B_MENU_ITEM_TEXT_COLOR = 7,
	B_MENU_SELECTED_ITEM_TEXT_COLOR = 8,
	B_PANEL_TEXT_COLOR = 10,
	B_DOCUMENT_BACKGROUND_COLOR = 11,
	B_DOCUMENT_TEXT_COLOR = 12,
	B_CONTROL_BACKGROUND_COLOR = 13,
	B_CONTROL_TEXT_COLOR = 14,
	B_CONTROL_BORDER_COLOR = 15,
	B_CONTROL_HIGHLIGHT_COLOR = 16,
	B_SHINE_COLOR = 100,
	B_SHADOW_COLOR = 101,
};

// The colours of the BeOS defaults: panels (216, 216, 216), menus, tabs ...
// Unknown values answer black.
rgb_color ui_color(color_which which);

rgb_color make_color(uint8 red, uint8 green, uint8 blue, uint8 alpha = 255);
bool operator==(const rgb_color& a, const rgb_color& b);
bool operator!=(const rgb_color& a, const rgb_color& b);

// A view colour that is never painted (the view's parent shows through).
extern const rgb_color B_TRANSPARENT_COLOR;

// Modifier keys. On Linux the BeOS command key is the Ctrl key: shortcuts
// written B_COMMAND_KEY + 'Q' answer Ctrl+Q, as Linux programs do. The Alt key
// is B_OPTION_KEY; B_CONTROL_KEY is never reported.
enum {
	B_SHIFT_KEY = 0x00000001,
	B_COMMAND_KEY = 0x00000002,
	B_CONTROL_KEY = 0x00000004,
	B_CAPS_LOCK = 0x00000008,
	B_SCROLL_LOCK = 0x00000010,
	B_NUM_LOCK = 0x00000020,
	B_OPTION_KEY = 0x00000040,
	B_MENU_KEY = 0x00000080,
};

// Characters ("raw_char", "byte") of keys without a printable character.
enum {
	B_BACKSPACE = 0x08,
	B_RETURN = 0x0a,
	B_ENTER = 0x0a,
	B_SPACE = 0x20,
	B_TAB = 0x09,
	B_ESCAPE = 0x1b,
	B_LEFT_ARROW = 0x1c,
	B_RIGHT_ARROW = 0x1d,
	B_UP_ARROW = 0x1e,
	B_DOWN_ARROW = 0x1f,
	B_INSERT = 0x05,
	B_DELETE = 0x7f,
	B_HOME = 0x01,
	B_END = 0x04,
	B_PAGE_UP = 0x0b,
	B_PAGE_DOWN = 0x0c,
	B_FUNCTION_KEY = 0x10,
};

// Key codes ("key") of the function keys: Escape is 1, F1 is 2 ... F12 is 13.
enum {
	B_ESCAPE_KEY_CODE = 0x01,
	B_F1_KEY = 0x02,
	B_F2_KEY = 0x03,
	B_F3_KEY = 0x04,
	B_F4_KEY = 0x05,
	B_F5_KEY = 0x06,
	B_F6_KEY = 0x07,
	B_F7_KEY = 0x08,
	B_F8_KEY = 0x09,
	B_F9_KEY = 0x0a,
	B_F10_KEY = 0x0b,
	B_F11_KEY = 0x0c,
	B_F12_KEY = 0x0d,
};

enum alignment {
	B_ALIGN_LEFT,
	B_ALIGN_RIGHT,
	B_ALIGN_CENTER,
};

enum orientation {
	B_HORIZONTAL,
	B_VERTICAL,
};

enum border_style {
	B_PLAIN_BORDER,
	B_FANCY_BORDER,
	B_NO_BORDER,
};

enum button_width {
	B_WIDTH_AS_USUAL,
	B_WIDTH_FROM_WIDEST,
	B_WIDTH_FROM_LABEL,
};

// Patterns of the drawing calls: only solid patterns exist here; B_MIXED_COLORS
// draws as the high colour.
struct pattern {
	uint8 data[8];
};
extern const pattern B_SOLID_HIGH;
extern const pattern B_SOLID_LOW;
extern const pattern B_MIXED_COLORS;

enum drawing_mode {
	B_OP_COPY,
	B_OP_OVER,
	B_OP_ERASE,
	B_OP_INVERT,
	B_OP_ADD,
	B_OP_SUBTRACT,
	B_OP_BLEND,
	B_OP_MIN,
	B_OP_MAX,
	B_OP_SELECT,
	B_OP_ALPHA,
};

// The BeOS 8-bit system palette: B_CMAP8 pixels are indices into color_list.
// index_map maps a 15-bit colour ((r >> 3) << 10 | (g >> 3) << 5 | b >> 3) to
// the nearest index; inversion_map gives each index's inverse.
struct color_map {
	int32 id;
	rgb_color color_list[256];
	uint8 inversion_map[256];
	uint8 index_map[32768];
};
const color_map* system_colors();

#endif // INTERFACE_DEFS_H
