// Draws the program's desktop icon from the processor picture the results rows
// show: PNG files at whole multiples of its 16 pixels and an SVG, in the
// colours of the system palette, into a hicolor icon theme folder.
//
//   quickstep_icons DIRECTORY SIZE...
//
// writes DIRECTORY/<SIZE>x<SIZE>/apps/quickstep.png for every SIZE and
// DIRECTORY/scalable/apps/quickstep.svg. Built and run by the build, so the
// icon never drifts from the picture in the program.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <vector>

#include <InterfaceDefs.h>

#include "results/ProcessorIcons.h"

namespace {

const int kSide = 16;
const int kMaxScale = 64;
const char* const kIconName = "quickstep";


uint32
Crc32(const uint8* data, size_t length, uint32 crc = 0)
{
	static uint32 table[256];
	static bool filled = false;
	if (!filled) {
		for (uint32 n = 0; n < 256; n++) {
			uint32 c = n;
			for (int k = 0; k < 8; k++)
				c = (c & 1) ? 0xedb88320u ^ (c >> 1) : c >> 1;
			table[n] = c;
		}
		filled = true;
	}
	crc = ~crc;
	for (size_t i = 0; i < length; i++)
		crc = table[(crc ^ data[i]) & 0xff] ^ (crc >> 8);
	return ~crc;
}


void
PutBig32(std::vector<uint8>& out, uint32 value)
{
	for (int shift = 24; shift >= 0; shift -= 8)
		out.push_back(static_cast<uint8>(value >> shift));
}


void
PutChunk(std::vector<uint8>& out, const char* type, const std::vector<uint8>& data)
{
	PutBig32(out, static_cast<uint32>(data.size()));
	size_t start = out.size();
	out.insert(out.end(), type, type + 4);
	out.insert(out.end(), data.begin(), data.end());
	PutBig32(out, Crc32(out.data() + start, out.size() - start));
}


// A zlib stream of stored (uncompressed) deflate blocks: the icons are small,
// and the build needs no compression library for them.
std::vector<uint8>
ZlibStored(const std::vector<uint8>& raw)
{
	std::vector<uint8> out = {0x78, 0x01};
	size_t offset = 0;
	do {
		size_t length = raw.size() - offset;
		if (length > 65535)
			length = 65535;
		bool last = offset + length == raw.size();
		out.push_back(last ? 1 : 0);
		out.push_back(static_cast<uint8>(length));
		out.push_back(static_cast<uint8>(length >> 8));
		out.push_back(static_cast<uint8>(~length));
		out.push_back(static_cast<uint8>(~length >> 8));
		out.insert(out.end(), raw.begin() + offset, raw.begin() + offset + length);
		offset += length;
	} while (offset < raw.size());

	uint32 a = 1;
	uint32 b = 0;
	for (uint8 byte : raw) {
		a = (a + byte) % 65521;
		b = (b + a) % 65521;
	}
	PutBig32(out, (b << 16) | a);
	return out;
}


// The picture's palette entries, in order of first use, so that the PNG's
// own palette holds only the colours drawn.
struct Colours {
	std::vector<uint8> systemIndex;
	uint8 local[256];
};


Colours
UsedColours(const uint8* bits)
{
	Colours colours;
	memset(colours.local, 0, sizeof(colours.local));
	bool seen[256] = {};
	for (int i = 0; i < kSide * kSide; i++) {
		if (!seen[bits[i]]) {
			seen[bits[i]] = true;
			colours.local[bits[i]] = static_cast<uint8>(colours.systemIndex.size());
			colours.systemIndex.push_back(bits[i]);
		}
	}
	return colours;
}


// An 8-bit palette PNG, every source pixel drawn as a scale x scale square.
std::vector<uint8>
EncodePng(const uint8* bits, int scale)
{
	const color_map* map = system_colors();
	Colours colours = UsedColours(bits);
	const uint32 side = static_cast<uint32>(kSide * scale);

	std::vector<uint8> header;
	PutBig32(header, side);
	PutBig32(header, side);
	header.insert(header.end(), {8, 3, 0, 0, 0}); // depth 8, palette, no interlace

	std::vector<uint8> palette;
	std::vector<uint8> alpha;
	for (uint8 index : colours.systemIndex) {
		const rgb_color& colour = map->color_list[index];
		palette.insert(palette.end(), {colour.red, colour.green, colour.blue});
		alpha.push_back(colour.alpha);
	}

	std::vector<uint8> raw;
	raw.reserve((side + 1) * side);
	for (uint32 y = 0; y < side; y++) {
		raw.push_back(0); // filter: none
		const uint8* row = bits + (y / scale) * kSide;
		for (uint32 x = 0; x < side; x++)
			raw.push_back(colours.local[row[x / scale]]);
	}

	std::vector<uint8> png = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
	PutChunk(png, "IHDR", header);
	PutChunk(png, "PLTE", palette);
	PutChunk(png, "tRNS", alpha);
	PutChunk(png, "IDAT", ZlibStored(raw));
	PutChunk(png, "IEND", {});
	return png;
}


// One rectangle per run of equal pixels in a row; transparent pixels are left out.
std::string
EncodeSvg(const uint8* bits)
{
	const color_map* map = system_colors();
	std::string svg = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
	                  "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"256\" height=\"256\" "
	                  "viewBox=\"0 0 16 16\" shape-rendering=\"crispEdges\">\n";
	for (int y = 0; y < kSide; y++) {
		for (int x = 0; x < kSide;) {
			uint8 index = bits[y * kSide + x];
			int run = 1;
			while (x + run < kSide && bits[y * kSide + x + run] == index)
				run++;
			const rgb_color& colour = map->color_list[index];
			if (colour.alpha != 0) {
				char rect[128];
				snprintf(rect, sizeof(rect),
				         "  <rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"1\" "
				         "fill=\"#%02x%02x%02x\"/>\n",
				         x, y, run, colour.red, colour.green, colour.blue);
				svg += rect;
			}
			x += run;
		}
	}
	svg += "</svg>\n";
	return svg;
}


bool
MakeDirectories(const std::string& path)
{
	for (size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
		std::string level = path.substr(0, slash);
		if (mkdir(level.c_str(), 0755) != 0 && errno != EEXIST) {
			fprintf(stderr, "quickstep_icons: cannot create %s: %s\n", level.c_str(),
			        strerror(errno));
			return false;
		}
		if (slash == std::string::npos)
			return true;
	}
}


bool
WriteFile(const std::string& directory, const std::string& name, const void* data, size_t size)
{
	if (!MakeDirectories(directory))
		return false;
	std::string path = directory + "/" + name;
	FILE* file = fopen(path.c_str(), "wb");
	if (file == nullptr) {
		fprintf(stderr, "quickstep_icons: cannot write %s: %s\n", path.c_str(), strerror(errno));
		return false;
	}
	bool written = fwrite(data, 1, size, file) == size;
	if (fclose(file) != 0 || !written) {
		fprintf(stderr, "quickstep_icons: cannot write %s\n", path.c_str());
		return false;
	}
	return true;
}

} // namespace


int
main(int argc, char** argv)
{
	if (argc < 2) {
		fprintf(stderr, "usage: quickstep_icons DIRECTORY SIZE...\n");
		return 2;
	}
	std::string root = argv[1];
	for (int i = 2; i < argc; i++) {
		char* end = nullptr;
		long size = strtol(argv[i], &end, 10);
		if (end == argv[i] || *end != '\0' || size < kSide || size > kSide * kMaxScale ||
		    size % kSide != 0) {
			fprintf(stderr, "quickstep_icons: %s is not a multiple of %d up to %d\n", argv[i],
			        kSide, kSide * kMaxScale);
			return 2;
		}
		std::vector<uint8> png = EncodePng(Processor, static_cast<int>(size / kSide));
		std::string directory = root + "/" + argv[i] + "x" + argv[i] + "/apps";
		if (!WriteFile(directory, std::string(kIconName) + ".png", png.data(), png.size()))
			return 1;
	}
	std::string svg = EncodeSvg(Processor);
	if (!WriteFile(root + "/scalable/apps", std::string(kIconName) + ".svg", svg.data(),
	               svg.size()))
		return 1;
	return 0;
}
