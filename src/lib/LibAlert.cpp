#include "lib/LibAlert.h"

#include <cstdarg>
#include <cstdio>

#include <Alert.h>

namespace {

void
ShowAlert(const char* title, alert_type type, const char* format, va_list arguments)
{
	char text[512];
	vsnprintf(text, sizeof(text), format, arguments);
	BAlert* alert = new BAlert(title, text, "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, type);
	alert->Go();
}

} // namespace


void
LibWarning(const char* format, ...)
{
	va_list arguments;
	va_start(arguments, format);
	ShowAlert("Warning", B_WARNING_ALERT, format, arguments);
	va_end(arguments);
}


void
LibInfo(const char* format, ...)
{
	va_list arguments;
	va_start(arguments, format);
	ShowAlert("Information", B_INFO_ALERT, format, arguments);
	va_end(arguments);
}


void
LibError(const char* format, ...)
{
	va_list arguments;
	va_start(arguments, format);
	ShowAlert("Error", B_STOP_ALERT, format, arguments);
	va_end(arguments);
}
