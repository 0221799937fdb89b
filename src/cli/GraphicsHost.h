// The graphics test in quickstep-cli. It draws in a window of its own, so it
// needs an X display and the window half of the platform; without them the
// rest of the command works as ever.
//
// quickstep-cli itself is built without the window libraries: loading FLTK,
// Xft and fontconfig at every start would cost each command several
// milliseconds before it does anything. A run that asks for the graphics test
// hands itself over to quickstep-cli-graphics, the same command built with
// windows, installed in the package's private program directory.
#ifndef CLI_GRAPHICS_HOST_H
#define CLI_GRAPHICS_HOST_H

// Remembers the command line, for a hand-over. Called first thing in main.
void GraphicsSetCommandLine(int argc, char** argv);

// In the build without windows, with a display named: replaces this process
// with quickstep-cli-graphics, given the same command line. Returns only
// where there is nothing to hand over to, having said why on standard error;
// in the build with windows it returns at once.
void GraphicsHandOver();

// Whether the graphics test can run here: this build has windows and an X
// display answers. Touches nothing that could end the process without one.
bool GraphicsTestAvailable();
// Why it cannot, as the end of "the graphics test ...".
const char* GraphicsUnavailableReason();

// While it exists the calling thread is the interface thread, and the
// worker's graphics test draws its window. Made only when
// GraphicsTestAvailable answered true.
class GraphicsHost
{
public:
	GraphicsHost();
	~GraphicsHost();

	// Runs the windows on this thread until Stop.
	void Run();
	// Any thread, also before Run: makes Run return.
	void Stop();

	GraphicsHost(const GraphicsHost&) = delete;
	GraphicsHost& operator=(const GraphicsHost&) = delete;
};

#endif // CLI_GRAPHICS_HOST_H
