#include "InterfaceDefs.h"

#include <mutex>

const rgb_color B_TRANSPARENT_COLOR = {0x77, 0x74, 0x77, 0x00};

const pattern B_SOLID_HIGH = {{0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff}};
const pattern B_SOLID_LOW = {{0, 0, 0, 0, 0, 0, 0, 0}};
const pattern B_MIXED_COLORS = {{0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55, 0xaa, 0x55}};


rgb_color
make_color(uint8 red, uint8 green, uint8 blue, uint8 alpha)
{
	rgb_color color = {red, green, blue, alpha};
	return color;
}


bool
operator==(const rgb_color& a, const rgb_color& b)
{
	return a.red == b.red && a.green == b.green && a.blue == b.blue && a.alpha == b.alpha;
}


bool
operator!=(const rgb_color& a, const rgb_color& b)
{
	return !(a == b);
}


rgb_color
ui_color(color_which which)
{
	switch (which) {
		case B_PANEL_BACKGROUND_COLOR:
		case B_MENU_BACKGROUND_COLOR:
		case B_CONTROL_BACKGROUND_COLOR:
			return make_color(216, 216, 216);
		case B_WINDOW_TAB_COLOR:
			return make_color(255, 203, 0);
		case B_KEYBOARD_NAVIGATION_COLOR:
		case B_CONTROL_HIGHLIGHT_COLOR:
			return make_color(0, 0, 229);
		case B_DESKTOP_COLOR:
			return make_color(51, 102, 152);
		case B_MENU_SELECTION_BACKGROUND_COLOR:
			return make_color(115, 120, 184);
		case B_MENU_ITEM_TEXT_COLOR:
		case B_PANEL_TEXT_COLOR:
		case B_DOCUMENT_TEXT_COLOR:
		case B_CONTROL_TEXT_COLOR:
			return make_color(0, 0, 0);
		case B_MENU_SELECTED_ITEM_TEXT_COLOR:
		case B_DOCUMENT_BACKGROUND_COLOR:
		case B_SHINE_COLOR:
			return make_color(255, 255, 255);
		case B_CONTROL_BORDER_COLOR:
			return make_color(96, 96, 96);
		case B_SHADOW_COLOR:
			return make_color(0, 0, 0);
	}
	return make_color(0, 0, 0);
}


namespace {

// Our system palette: a grey ramp, a 6 x 6 x 6 colour cube, the interface's
// own colours, and the transparent colour at 255.
void
FillPalette(color_map* map)
{
	map->id = 0;
	int index = 0;
	for (int i = 0; i < 32; i++) {
		uint8 level = static_cast<uint8>(i * 255 / 31);
		map->color_list[index++] = make_color(level, level, level);
	}
	for (int r = 0; r < 6; r++) {
		for (int g = 0; g < 6; g++) {
			for (int b = 0; b < 6; b++) {
				map->color_list[index++] =
				    make_color(static_cast<uint8>(r * 51), static_cast<uint8>(g * 51),
				               static_cast<uint8>(b * 51));
			}
		}
	}
	const rgb_color extras[] = {
	    {216, 216, 216, 255}, {152, 152, 152, 255}, {184, 184, 184, 255}, {232, 232, 232, 255},
	    {96, 96, 96, 255},    {255, 203, 0, 255},   {51, 102, 152, 255},  B_TRANSPARENT_COLOR,
	};
	for (const rgb_color& color : extras)
		map->color_list[index++] = color;

	for (int i = 0; i < 32768; i++) {
		int red = ((i >> 10) & 31) * 255 / 31;
		int green = ((i >> 5) & 31) * 255 / 31;
		int blue = (i & 31) * 255 / 31;
		int best = 0;
		int bestDistance = 1 << 30;
		// 255 is transparent: never the nearest colour.
		for (int c = 0; c < 255; c++) {
			const rgb_color& color = map->color_list[c];
			int dr = color.red - red;
			int dg = color.green - green;
			int db = color.blue - blue;
			int distance = dr * dr + dg * dg + db * db;
			if (distance < bestDistance) {
				bestDistance = distance;
				best = c;
			}
		}
		map->index_map[i] = static_cast<uint8>(best);
	}
	for (int c = 0; c < 256; c++) {
		const rgb_color& color = map->color_list[c];
		int inverse = ((255 - color.red) >> 3) << 10 | ((255 - color.green) >> 3) << 5 |
		              (255 - color.blue) >> 3;
		map->inversion_map[c] = map->index_map[inverse];
	}
}

} // namespace


const color_map*
system_colors()
{
	static color_map sMap;
	static std::once_flag sFilled;
	std::call_once(sFilled, [] { FillPalette(&sMap); });
	return &sMap;
}
