// The graphics test in quickstep-cli. It draws in a window of its own, so it
// needs an X display and the window half of the platform; without them the
// rest of the command works as ever.
#ifndef CLI_GRAPHICS_HOST_H
#define CLI_GRAPHICS_HOST_H

// Whether the graphics test can run here: this build has windows and an X
// display answers. Touches nothing that could end the process without one.
bool GraphicsTestAvailable();

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
