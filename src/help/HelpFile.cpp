#include "help/HelpFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

#include <File.h>
#include <FindDirectory.h>
#include <Path.h>
#include <Resources.h>
#include <SharedFile.h>

#include "help/HelpPage.h"
#include "help/xmlParser.h"
#include "help/xmlTag.h"
#include "lib/LibFile.h"

const char* const HelpFile::kResourceType = "kw:help";


HelpRow::HelpRow() : depth(0)
{
}


HelpRow::~HelpRow()
{
}


bool
HelpRow::operator==(const HelpRow& other) const
{
	return label == other.label && page == other.page;
}


static status_t
ExtractStored(const char* executable, const char* to)
{
	BFile file(executable, B_READ_ONLY);
	BResources resources(&file);
	size_t length = 0;
	const void* data =
	    resources.LoadResource(HelpFile::kResourceType, HelpFile::kResourceId, &length);
	if (data == nullptr)
		return B_ENTRY_NOT_FOUND;

	// The temporary directory is shared: never write through a link or into a
	// file another user put there.
	FILE* out = platform_create_shared(to, "w", 0644);
	if (out == nullptr)
		return B_ERROR;
	bool written = fwrite(data, 1, length, out) == length;
	written = fclose(out) == 0 && written;
	return written ? B_OK : B_IO_ERROR;
}


status_t
HelpFile::Locate(const char* helpName, const char* executable, BPath& out, bool report)
{
	LibString fileName;
	fileName.Format("%s.help", helpName);

	BPath path(fileName.String());
	if (LibExists(path.Path())) {
		out = path;
		return B_OK;
	}
	if (report)
		fprintf(stderr, "Help not in working directory <%s>\n", path.Path());

	BPath temp;
	find_directory(B_COMMON_TEMP_DIRECTORY, &temp);
	temp.Append(fileName.String());
	const bool inTemp = LibExists(temp.Path());
	// Anyone can put a file there: only this user's own copy is read.
	if (inTemp && platform_is_owned_file(temp.Path())) {
		out = temp;
		return B_OK;
	}
	if (report && inTemp)
		fprintf(stderr, "Help in tmp directory <%s> is not this user's file: not read\n",
		        temp.Path());
	else if (report)
		fprintf(stderr, "Help not in tmp directory <%s>\n", temp.Path());

	if (!inTemp && executable != nullptr && ExtractStored(executable, temp.Path()) == B_OK) {
		out = temp;
		return B_OK;
	}

	// The copy installed beside the program: <prefix>/bin/../share/quickstep.
	if (executable != nullptr) {
		BPath installed(executable);
		BPath bin;
		if (installed.GetParent(&bin) == B_OK && bin.GetParent(&installed) == B_OK) {
			installed.Append("share/quickstep");
			installed.Append(fileName.String());
			if (LibExists(installed.Path())) {
				out = installed;
				return B_OK;
			}
		}
	}
	return B_ENTRY_NOT_FOUND;
}


status_t
HelpFile::Store(const char* executable, const char* helpFile)
{
	FILE* in = fopen(helpFile, "r");
	if (in == nullptr)
		return B_ENTRY_NOT_FOUND;
	// A directory opens too, and a device never ends: only a regular file of
	// a help file's size is taken.
	struct stat info;
	status_t status = B_OK;
	if (fstat(fileno(in), &info) != 0)
		status = StatusFromErrno(errno);
	else if (S_ISDIR(info.st_mode))
		status = B_IS_A_DIRECTORY;
	else if (!S_ISREG(info.st_mode))
		status = B_BAD_VALUE;
	else if (info.st_size > kMaxStoredBytes)
		status = B_BUFFER_OVERFLOW;
	LibString text;
	char buffer[4096];
	size_t length;
	size_t total = 0;
	while (status == B_OK && (length = fread(buffer, 1, sizeof(buffer) - 1, in)) > 0) {
		// The file may grow while it is read.
		total += length;
		if (total > kMaxStoredBytes) {
			status = B_BUFFER_OVERFLOW;
			break;
		}
		buffer[length] = '\0';
		text += buffer;
	}
	if (status == B_OK && ferror(in))
		status = B_IO_ERROR;
	fclose(in);
	if (status != B_OK)
		return status;

	BFile file(executable, B_READ_ONLY);
	BResources resources(&file);
	return resources.AddResource(kResourceType, kResourceId, text.String(), text.Length(),
	                             helpFile);
}


static void
AddRows(xmlTag& parent, int32 depth, LinkList<HelpRow>& rows)
{
	LinkList<xmlTag>& children = parent.Children();
	// Each level is walked with its own list's cursor, so the recursion into a
	// child does not disturb this loop.
	for (xmlTag* child = children.First(); child != nullptr; child = children.Next()) {
		HelpRow* row = new HelpRow;
		row->depth = depth;
		row->label = child->Contents();
		row->label.StripSpaces();
		const char* value = nullptr;
		if (child->Modifiers().FindString("PAGE", &value) == B_OK)
			row->page = value;
		for (int32 i = 0; child->Modifiers().FindString("VIEW", i, &value) == B_OK; i++)
			row->views.Insert(new LibString(value));
		rows.Insert(row);
		AddRows(*child, depth + 1, rows);
	}
}


status_t
HelpFile::ReadContents(const char* path, LinkList<HelpRow>& rows)
{
	xmlParser parser;
	if (!parser.Open(path))
		return B_ENTRY_NOT_FOUND;
	parser.Rewind();
	xmlTag contents;
	if (!parser.FindTag("CONTENTS", contents))
		return B_NAME_NOT_FOUND;
	AddRows(contents, 0, rows);
	return B_OK;
}


status_t
HelpFile::ReadPage(const char* path, const char* name, xmlTag& page)
{
	xmlParser parser;
	if (!parser.Open(path))
		return B_ENTRY_NOT_FOUND;
	parser.Rewind();
	while (parser.FindTag("PAGE", page)) {
		const char* pageName = nullptr;
		if (page.Modifiers().FindString("NAME", &pageName) == B_OK && strcmp(pageName, name) == 0)
			return B_OK;
	}
	page.Clear();
	return B_NAME_NOT_FOUND;
}


status_t
HelpFile::ReadPageNames(const char* path, LinkList<LibString>& names)
{
	xmlParser parser;
	if (!parser.Open(path))
		return B_ENTRY_NOT_FOUND;
	parser.Rewind();
	xmlTag page;
	while (parser.FindTag("PAGE", page)) {
		const char* pageName = nullptr;
		if (page.Modifiers().FindString("NAME", &pageName) == B_OK)
			names.Insert(new LibString(pageName));
	}
	return B_OK;
}


LibString
HelpFile::PageText(xmlTag& page)
{
	HelpPage text;
	text.Read(page);
	return text.Text();
}
