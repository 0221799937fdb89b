#include "MailMessage.h"

#include <cctype>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>
#include <random>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <strings.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "OS.h"
#include "PlatformTest.h"

extern char** environ;

namespace {

const char* const kSendmail = "sendmail";
const char* const kXdgEmail = "xdg-email";
// Where sendmail lives when it is not along PATH.
const char* const kMailDirectories = "/usr/sbin:/usr/lib";
// xdg-email may wait for the mail program it opens: after this long the
// message is the user's to send, and xdg-email is left running.
const bigtime_t kHandOverTime = 5000000;
const size_t kBase64LineLength = 76;

std::mutex sToolPathLock;
std::string sToolPath;
bool sToolPathSet = false;


// The directories searched for the mail tools.
std::string
ToolDirectories()
{
	{
		std::lock_guard<std::mutex> lock(sToolPathLock);
		if (sToolPathSet)
			return sToolPath;
	}
	const char* path = getenv("PATH");
	std::string directories = path != nullptr ? path : "";
	if (!directories.empty())
		directories += ":";
	return directories + kMailDirectories;
}


bool
FindTool(const char* name, std::string& found)
{
	std::string directories = ToolDirectories();
	size_t start = 0;
	while (start <= directories.size()) {
		size_t end = directories.find(':', start);
		if (end == std::string::npos)
			end = directories.size();
		std::string directory = directories.substr(start, end - start);
		start = end + 1;
		// Relative entries would depend on the working directory, which the
		// file utilities change: only absolute ones count.
		if (directory.empty() || directory[0] != '/')
			continue;
		std::string candidate = directory + "/" + name;
		struct stat info;
		if (stat(candidate.c_str(), &info) == 0 && S_ISREG(info.st_mode) &&
		    access(candidate.c_str(), X_OK) == 0) {
			found = candidate;
			return true;
		}
	}
	return false;
}


std::string
Base64(const std::string& data, bool wrap)
{
	static const char kAlphabet[] =
	    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
	std::string out;
	out.reserve(data.size() / 3 * 4 + data.size() / 57 * 2 + 8);
	size_t lineLength = 0;
	for (size_t i = 0; i < data.size(); i += 3) {
		uint32 chunk = static_cast<uint8>(data[i]) << 16;
		size_t count = data.size() - i < 3 ? data.size() - i : 3;
		if (count > 1)
			chunk |= static_cast<uint8>(data[i + 1]) << 8;
		if (count > 2)
			chunk |= static_cast<uint8>(data[i + 2]);
		out += kAlphabet[(chunk >> 18) & 63];
		out += kAlphabet[(chunk >> 12) & 63];
		out += count > 1 ? kAlphabet[(chunk >> 6) & 63] : '=';
		out += count > 2 ? kAlphabet[chunk & 63] : '=';
		lineLength += 4;
		if (wrap && lineLength >= kBase64LineLength) {
			out += '\n';
			lineLength = 0;
		}
	}
	if (wrap && lineLength > 0)
		out += '\n';
	return out;
}


bool
IsPlainText(const std::string& text)
{
	size_t lineLength = 0;
	for (char c : text) {
		unsigned char byte = static_cast<unsigned char>(c);
		if (byte >= 0x80 || byte == '\0' || byte == '\r')
			return false;
		lineLength = c == '\n' ? 0 : lineLength + 1;
		if (lineLength > 900)
			return false;
	}
	return true;
}


// A header value with bytes beyond ASCII becomes an encoded word.
std::string
HeaderValue(const std::string& value)
{
	for (char c : value) {
		if (static_cast<unsigned char>(c) >= 0x80)
			return "=?UTF-8?B?" + Base64(value, false) + "?=";
	}
	return value;
}


// filename="x.zip", or the RFC 2231 form for names a quoted string cannot hold.
std::string
FileNameParameter(const char* parameter, const std::string& name)
{
	bool plain = true;
	for (char c : name) {
		unsigned char byte = static_cast<unsigned char>(c);
		if (byte < 0x20 || byte >= 0x7f || c == '"' || c == '\\')
			plain = false;
	}
	if (plain)
		return std::string(parameter) + "=\"" + name + "\"";
	std::string encoded = std::string(parameter) + "*=UTF-8''";
	for (char c : name) {
		unsigned char byte = static_cast<unsigned char>(c);
		if (isalnum(byte) || strchr("!#$&+-.^_`|~", c) != nullptr) {
			encoded += c;
		} else {
			char escape[4];
			snprintf(escape, sizeof(escape), "%%%02X", byte);
			encoded += escape;
		}
	}
	return encoded;
}


std::string
MimeType(const std::string& name)
{
	struct Suffix {
		const char* suffix;
		const char* type;
	};
	static const Suffix kSuffixes[] = {
	    {".zip", "application/zip"}, {".tar", "application/x-tar"}, {".txt", "text/plain"}};
	for (const Suffix& entry : kSuffixes) {
		size_t length = strlen(entry.suffix);
		if (name.size() > length &&
		    strcasecmp(name.c_str() + name.size() - length, entry.suffix) == 0)
			return entry.type;
	}
	return "application/octet-stream";
}


std::string
DateField()
{
	static const char* const kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
	static const char* const kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
	                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
	time_t now = time(nullptr);
	struct tm local;
	localtime_r(&now, &local);
	long offset = local.tm_gmtoff / 60;
	char sign = offset < 0 ? '-' : '+';
	if (offset < 0)
		offset = -offset;
	char text[64];
	snprintf(text, sizeof(text), "%s, %d %s %d %02d:%02d:%02d %c%02ld%02ld", kDays[local.tm_wday],
	         local.tm_mday, kMonths[local.tm_mon], local.tm_year + 1900, local.tm_hour,
	         local.tm_min, local.tm_sec, sign, offset / 60, offset % 60);
	return text;
}


// The field name without its colon and blanks; empty when it is no name.
std::string
FieldName(const char* fieldName)
{
	if (fieldName == nullptr)
		return std::string();
	std::string name = fieldName;
	while (!name.empty() && (name.back() == ' ' || name.back() == ':'))
		name.pop_back();
	for (char c : name) {
		if (c <= ' ' || c >= 0x7f || c == ':')
			return std::string();
	}
	return name;
}


// Waits for the child at most timeout; true with its status when it ended.
// A child still running is left to a thread that reaps it when it ends.
bool
WaitForChild(pid_t child, bigtime_t timeout, int* status)
{
	bigtime_t deadline = system_time() + timeout;
	for (;;) {
		pid_t done = waitpid(child, status, WNOHANG);
		if (done == child)
			return true;
		if (done < 0 && errno != EINTR)
			return false;
		if (system_time() >= deadline)
			break;
		snooze(10000);
	}
	std::thread([child] {
		int ignored = 0;
		while (waitpid(child, &ignored, 0) < 0 && errno == EINTR) {
		}
	}).detach();
	return false;
}


// Runs argv[0] with the given bytes on its standard input (none when input is
// null); answers whether it ended with status 0, B_TIMED_OUT when it had not
// ended within timeout (or B_OK then, when handOver).
status_t
RunTool(const std::vector<std::string>& arguments, const std::string* input, bigtime_t timeout,
        bool handOver)
{
	int inputFd = -1;
	if (input != nullptr) {
		// The message waits in an anonymous file, so the tool can read it at
		// its pace and nothing of it lands on a disk.
		inputFd = memfd_create("quickstep-mail", MFD_CLOEXEC);
		if (inputFd < 0)
			return StatusFromErrno(errno);
		size_t written = 0;
		while (written < input->size()) {
			ssize_t count = write(inputFd, input->data() + written, input->size() - written);
			if (count < 0 && errno == EINTR)
				continue;
			if (count <= 0) {
				close(inputFd);
				return B_IO_ERROR;
			}
			written += count;
		}
		lseek(inputFd, 0, SEEK_SET);
	}

	posix_spawn_file_actions_t actions;
	posix_spawn_file_actions_init(&actions);
	if (inputFd >= 0)
		posix_spawn_file_actions_adddup2(&actions, inputFd, STDIN_FILENO);
	else
		posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);

	std::vector<char*> argv;
	for (const std::string& argument : arguments)
		argv.push_back(const_cast<char*>(argument.c_str()));
	argv.push_back(nullptr);

	pid_t child = -1;
	int spawned = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
	posix_spawn_file_actions_destroy(&actions);
	if (inputFd >= 0)
		close(inputFd);
	if (spawned != 0)
		return StatusFromErrno(spawned);

	int status = 0;
	if (!WaitForChild(child, timeout, &status))
		return handOver ? B_OK : B_TIMED_OUT;
	return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? B_OK : B_ERROR;
}

} // namespace


void
platform_set_mail_tool_path(const char* directories)
{
	std::lock_guard<std::mutex> lock(sToolPathLock);
	sToolPathSet = directories != nullptr;
	sToolPath = directories != nullptr ? directories : "";
}


BMailMessage::BMailMessage()
{
}


BMailMessage::~BMailMessage()
{
}


status_t
BMailMessage::AddHeaderField(const char* fieldName, const char* text, bool clobber)
{
	std::string name = FieldName(fieldName);
	if (name.empty() || text == nullptr)
		return B_BAD_VALUE;
	// A line break would let the text start fields of its own.
	if (strpbrk(text, "\r\n") != nullptr)
		return B_BAD_VALUE;
	for (Field& field : fFields) {
		if (strcasecmp(field.name.c_str(), name.c_str()) != 0)
			continue;
		if (clobber || field.value.empty())
			field.value = text;
		else if (text[0] != '\0')
			field.value += std::string(", ") + text;
		return B_OK;
	}
	fFields.push_back({name, text});
	return B_OK;
}


status_t
BMailMessage::AddContent(const char* text, int32 length, bool clobber)
{
	if (text == nullptr || length < 0)
		return B_BAD_VALUE;
	size_t size = strnlen(text, static_cast<size_t>(length));
	if (clobber)
		fContent.clear();
	fContent.append(text, size);
	return B_OK;
}


status_t
BMailMessage::AddEnclosure(const char* path, bool clobber)
{
	if (path == nullptr || path[0] == '\0')
		return B_BAD_VALUE;
	int fd = open(path, O_RDONLY | O_CLOEXEC);
	if (fd < 0)
		return StatusFromErrno(errno);
	struct stat info;
	if (fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
		close(fd);
		return B_BAD_TYPE;
	}
	if (info.st_size > kMaxEnclosureSize) {
		close(fd);
		return B_BUFFER_OVERFLOW;
	}
	Enclosure enclosure;
	enclosure.data.resize(static_cast<size_t>(info.st_size));
	size_t done = 0;
	while (done < enclosure.data.size()) {
		ssize_t count = read(fd, &enclosure.data[done], enclosure.data.size() - done);
		if (count < 0 && errno == EINTR)
			continue;
		if (count <= 0)
			break;
		done += count;
	}
	close(fd);
	// A file that shrank while it was read is taken as it was read.
	enclosure.data.resize(done);

	char resolved[PATH_MAX];
	enclosure.path = realpath(path, resolved) != nullptr ? resolved : path;
	const char* slash = strrchr(path, '/');
	enclosure.name = slash != nullptr ? slash + 1 : path;
	enclosure.type = MimeType(enclosure.name);
	if (clobber)
		fEnclosures.clear();
	fEnclosures.push_back(std::move(enclosure));
	return B_OK;
}


const BMailMessage::Field*
BMailMessage::FindField(const char* name) const
{
	for (const Field& field : fFields) {
		if (strcasecmp(field.name.c_str(), name) == 0)
			return &field;
	}
	return nullptr;
}


std::string
BMailMessage::Text() const
{
	std::string text = "MIME-Version: 1.0\n";
	if (FindField("Date") == nullptr)
		text += "Date: " + DateField() + "\n";
	for (const Field& field : fFields)
		text += field.name + ": " + HeaderValue(field.value) + "\n";

	bool plain = IsPlainText(fContent);
	std::string textType = "Content-Type: text/plain; charset=UTF-8\n";
	if (fEnclosures.empty()) {
		text += textType;
		if (plain)
			return text + "Content-Transfer-Encoding: 7bit\n\n" + fContent;
		return text + "Content-Transfer-Encoding: base64\n\n" + Base64(fContent, true);
	}

	// Base64 and the plain text checked below never hold "=_": the boundary
	// cannot occur inside a part.
	std::mt19937 random(static_cast<uint32>(system_time()));
	char boundary[48];
	snprintf(boundary, sizeof(boundary), "=_quickstep_%08x%08x", static_cast<unsigned>(random()),
	         static_cast<unsigned>(random()));
	if (plain && fContent.find("=_") != std::string::npos)
		plain = false;

	text += std::string("Content-Type: multipart/mixed; boundary=\"") + boundary + "\"\n\n";
	text += "This is a message in MIME format.\n";
	text += std::string("\n--") + boundary + "\n" + textType;
	if (plain) {
		text += "Content-Transfer-Encoding: 7bit\n\n" + fContent;
		if (!fContent.empty() && fContent.back() != '\n')
			text += "\n";
	} else {
		text += "Content-Transfer-Encoding: base64\n\n" + Base64(fContent, true);
	}
	for (const Enclosure& enclosure : fEnclosures) {
		text += std::string("\n--") + boundary + "\n";
		text += "Content-Type: " + enclosure.type + "; " +
		        FileNameParameter("name", enclosure.name) + "\n";
		text += "Content-Disposition: attachment; " +
		        FileNameParameter("filename", enclosure.name) + "\n";
		text += "Content-Transfer-Encoding: base64\n\n" + Base64(enclosure.data, true);
	}
	return text + "\n--" + boundary + "--\n";
}


status_t
BMailMessage::Send(bool sendNow, bool removeWhenDone)
{
	(void)sendNow;
	(void)removeWhenDone;
	const Field* to = FindField("To");
	if (to == nullptr || to->value.empty())
		return B_NO_INIT;
	// An address is never taken for an option of the tools.
	if (to->value[0] == '-')
		return B_BAD_VALUE;
	std::string tool;
	if (FindTool(kSendmail, tool))
		return SendThroughSendmail(tool);
	if (FindTool(kXdgEmail, tool))
		return SendThroughXdgEmail(tool);
	return B_ENTRY_NOT_FOUND;
}


status_t
BMailMessage::SendThroughSendmail(const std::string& tool) const
{
	// -t: the recipients come from the message; -oi: a line of one dot does
	// not end it.
	std::string message = Text();
	return RunTool({tool, "-t", "-oi"}, &message, kSendTimeout, false);
}


status_t
BMailMessage::SendThroughXdgEmail(const std::string& tool) const
{
	std::vector<std::string> arguments = {tool, "--utf8"};
	const Field* subject = FindField("Subject");
	if (subject != nullptr) {
		arguments.push_back("--subject");
		arguments.push_back(subject->value);
	}
	const Field* cc = FindField("Cc");
	if (cc != nullptr) {
		arguments.push_back("--cc");
		arguments.push_back(cc->value);
	}
	if (!fContent.empty()) {
		arguments.push_back("--body");
		arguments.push_back(fContent);
	}
	for (const Enclosure& enclosure : fEnclosures) {
		arguments.push_back("--attach");
		arguments.push_back(enclosure.path);
	}
	// Addresses after the options; "--" is not understood by every version.
	arguments.push_back(FindField("To")->value);
	return RunTool(arguments, nullptr, kHandOverTime, true);
}
