// What a shell command prints on standard output, for tests that look at
// files and programs through the system's own tools (unzip, tar, ldd,
// xdotool); and what a file holds, or what a printer wrote to a stream.
#ifndef TESTS_COMMAND_OUTPUT_H
#define TESTS_COMMAND_OUTPUT_H

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/wait.h>

// status, when given, gets the command's exit status (-1 when it did not
// exit, or could not be started).
inline std::string
CommandOutput(const std::string& command, int* status = nullptr)
{
	std::string text;
	if (status != nullptr)
		*status = -1;
	FILE* pipe = popen(command.c_str(), "r");
	if (pipe == nullptr)
		return text;
	char buffer[512];
	while (fgets(buffer, sizeof(buffer), pipe) != nullptr)
		text += buffer;
	const int ended = pclose(pipe);
	if (status != nullptr && ended != -1 && WIFEXITED(ended))
		*status = WEXITSTATUS(ended);
	return text;
}

// Empty when the file cannot be read.
inline std::string
FileText(const std::string& path)
{
	std::stringstream text;
	text << std::ifstream(path).rdbuf();
	return text.str();
}

// What print(FILE*) wrote.
template <typename Print>
inline std::string
Printed(Print print)
{
	char* text = nullptr;
	size_t length = 0;
	FILE* file = open_memstream(&text, &length);
	print(file);
	fclose(file);
	std::string printed(text, length);
	free(text);
	return printed;
}

#endif // TESTS_COMMAND_OUTPUT_H
