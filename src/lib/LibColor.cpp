#include "lib/LibColor.h"

#include <InterfaceDefs.h>

const rgb_color grey_color = {216, 216, 216, 255};


rgb_color
lib_nearest_system_color(rgb_color color)
{
	const color_map* map = system_colors();
	int key = (color.red >> 3) << 10 | (color.green >> 3) << 5 | color.blue >> 3;
	rgb_color nearest = map->color_list[map->index_map[key]];
	nearest.alpha = color.alpha;
	return nearest;
}
