#include "engine/FileLife.h"

#include <cstdio>
#include <unistd.h>


FileLife::FileLife() : fThread(0), fFirst(0), fLast(0)
{
}


FileLife::~FileLife()
{
}


void
FileLife::SetPathPrefix(const char* prefix)
{
	fPathPrefix = prefix;
}


void
FileLife::SetIndexRange(const long& first, const long& last)
{
	fFirst = static_cast<int32>(first);
	fLast = static_cast<int32>(last);
}


thread_id
FileLife::Go(const int& mode)
{
	if (mode == 1)
		fThread = spawn_thread(&FileLife::CreateThread, "CreateThread", 100, this);
	else
		fThread = spawn_thread(&FileLife::RemoveThread, "RemoveThread", 100, this);
	return fThread;
}


int32
FileLife::CreateThread(void* self)
{
	static_cast<FileLife*>(self)->Create();
	return 0;
}


int32
FileLife::RemoveThread(void* self)
{
	static_cast<FileLife*>(self)->Remove();
	return 0;
}


void
FileLife::Create()
{
	// A file that cannot be created is skipped; the test times the attempts.
	char name[B_FILE_NAME_LENGTH];
	for (int32 index = fFirst; index <= fLast; index++) {
		snprintf(name, sizeof(name), "%s.%d", fPathPrefix.String(), static_cast<int>(index));
		// "x": created anew or not at all, so a link or a file another user
		// left under the name is never opened (and the cost per file stays
		// that of one open).
		FILE* file = fopen(name, "wx");
		if (file != nullptr)
			fclose(file);
	}
}


void
FileLife::Remove()
{
	// Every name of the range is tried, whether or not its file was created.
	char name[B_FILE_NAME_LENGTH];
	for (int32 index = fFirst; index <= fLast; index++) {
		snprintf(name, sizeof(name), "%s.%d", fPathPrefix.String(), static_cast<int>(index));
		unlink(name);
	}
}
