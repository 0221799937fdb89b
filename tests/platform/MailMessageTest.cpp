#include "MailMessage.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <PlatformTest.h>

#include "platform/TempDirectory.h"

namespace {

// Prints what a real MIME parser makes of the message: the headers asked
// for, the text part and each attachment's name, type and bytes (written to
// <dir>/part<N>).
const char* const kParser = R"(
import email, email.policy, sys
with open(sys.argv[1], 'rb') as f:
    msg = email.message_from_binary_file(f, policy=email.policy.default)
out = []
out.append('to=' + str(msg['To']))
out.append('subject=' + str(msg['Subject']))
out.append('body=' + msg.get_body(preferencelist=('plain',)).get_content().rstrip('\n'))
n = 0
for part in msg.iter_attachments():
    n += 1
    out.append('file=%s type=%s' % (part.get_filename(), part.get_content_type()))
    with open('%s/part%d' % (sys.argv[2], n), 'wb') as f:
        f.write(part.get_payload(decode=True))
sys.stdout.buffer.write(('\n'.join(out) + '\n').encode('utf-8'))
)";

class MailMessageTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		fBin = fTemp.Path("bin");
		ASSERT_EQ(mkdir(fBin.c_str(), 0755), 0);
		// Only the fakes are found, whatever the machine has installed.
		platform_set_mail_tool_path(fBin.c_str());
	}

	void TearDown() override { platform_set_mail_tool_path(nullptr); }

	void MakeTool(const char* name, const std::string& body)
	{
		std::string path = fBin + "/" + name;
		std::ofstream(path) << "#!/bin/sh\n" << body << "\n";
		ASSERT_EQ(chmod(path.c_str(), 0755), 0);
	}

	// A fake sendmail that keeps its arguments and its input.
	void MakeSendmail(int status = 0)
	{
		MakeTool("sendmail", "printf '%s\\n' \"$@\" > '" + fTemp.Path("args") + "'\ncat > '" +
		                         fTemp.Path("message") + "'\nexit " + std::to_string(status));
	}

	std::string Read(const std::string& path)
	{
		std::stringstream text;
		text << std::ifstream(path, std::ios::binary).rdbuf();
		return text.str();
	}

	std::string WriteFile(const std::string& name, const std::string& bytes)
	{
		std::string path = fTemp.Path(name);
		std::ofstream(path, std::ios::binary) << bytes;
		return path;
	}

	// The parser's lines for the message sendmail received.
	std::string Parse()
	{
		if (system("python3 -c 'import email.policy' 2>/dev/null") != 0)
			return "no python3";
		std::string script = WriteFile("parse.py", kParser);
		std::string command = "python3 '" + script + "' '" + fTemp.Path("message") + "' '" +
		                      fTemp.Path() + "' > '" + fTemp.Path("parsed") + "'";
		if (system(command.c_str()) != 0)
			return "parser failed";
		return Read(fTemp.Path("parsed"));
	}

	TempDirectory fTemp;
	std::string fBin;
};

} // namespace

TEST_F(MailMessageTest, SendmailGetsAMessageAMimeParserTakesApart)
{
	// Every byte value, and enough of them for many base64 lines.
	std::string archive;
	for (int i = 0; i < 70000; i++)
		archive += static_cast<char>((i * 7 + i / 256) & 0xff);

	struct Case {
		const char* body;
		const char* file;
		const char* type;
	};
	const Case cases[] = {
	    {"Results for : Dual PII 400 BX.", "Quickstep.results.zip", "application/zip"},
	    // Beyond ASCII, a lone dot line and the boundary's own characters.
	    {"Results for : K6-2 \xc3\xbc =_ 300\n.\nend.", "run \"1\" \xc3\xa9.tar",
	     "application/x-tar"},
	};
	for (const Case& c : cases) {
		MakeSendmail();
		std::string path = WriteFile(c.file, archive);
		BMailMessage message;
		ASSERT_EQ(message.AddContent(c.body, static_cast<int32>(strlen(c.body))), B_OK);
		ASSERT_EQ(message.AddHeaderField(B_MAIL_TO, "quickstep-results@example.org"), B_OK);
		ASSERT_EQ(message.AddHeaderField(B_MAIL_SUBJECT, "Quickstep results"), B_OK);
		ASSERT_EQ(message.AddEnclosure(path.c_str()), B_OK);
		ASSERT_EQ(message.Send(true), B_OK);

		EXPECT_EQ(Read(fTemp.Path("args")), "-t\n-oi\n");
		std::string parsed = Parse();
		if (parsed == "no python3")
			GTEST_SKIP() << "python3 with its email package is needed";
		// The parser drops the line break that ends the text.
		std::string body = c.body;
		EXPECT_EQ(parsed, std::string("to=quickstep-results@example.org\n"
		                              "subject=Quickstep results\nbody=") +
		                      body + "\nfile=" + c.file + " type=" + c.type + "\n");
		EXPECT_TRUE(Read(fTemp.Path("part1")) == archive) << c.file;
	}
}

TEST_F(MailMessageTest, BadFieldsAndEnclosuresAreRefused)
{
	BMailMessage message;
	// A line break would smuggle in a field of its own.
	EXPECT_EQ(message.AddHeaderField(B_MAIL_SUBJECT, "x\nBcc: someone@example.org"), B_BAD_VALUE);
	EXPECT_EQ(message.AddHeaderField("Bad Name: ", "x"), B_BAD_VALUE);
	EXPECT_EQ(message.AddHeaderField(": ", "x"), B_BAD_VALUE);
	EXPECT_EQ(message.AddContent(nullptr, 3), B_BAD_VALUE);
	EXPECT_NE(message.AddEnclosure(fTemp.Path("missing").c_str()), B_OK);
	EXPECT_EQ(message.AddEnclosure(fTemp.Path().c_str()), B_BAD_TYPE);

	// Without a recipient nothing goes, even with a tool there.
	MakeSendmail();
	EXPECT_EQ(message.Send(true), B_NO_INIT);
	EXPECT_EQ(access(fTemp.Path("message").c_str(), F_OK), -1);
	ASSERT_EQ(message.AddHeaderField(B_MAIL_TO, "a@example.org"), B_OK);
	ASSERT_EQ(message.AddHeaderField(B_MAIL_TO, "b@example.org"), B_OK);
	EXPECT_NE(message.Text().find("\nTo: a@example.org, b@example.org\n"), std::string::npos);
	ASSERT_EQ(message.AddHeaderField(B_MAIL_TO, "c@example.org", true), B_OK);
	EXPECT_NE(message.Text().find("\nTo: c@example.org\n"), std::string::npos);
}

TEST_F(MailMessageTest, WithoutSendmailXdgEmailGetsTheTextAndTheFile)
{
	std::string path = WriteFile("Quickstep.results.zip", "PK archive");
	BMailMessage message;
	const char body[] = "Results for : Celeron 466 laptop.";
	ASSERT_EQ(message.AddContent(body, sizeof(body) - 1), B_OK);
	ASSERT_EQ(message.AddHeaderField(B_MAIL_TO, "quickstep-results@example.org"), B_OK);
	ASSERT_EQ(message.AddHeaderField(B_MAIL_SUBJECT, "Quickstep results"), B_OK);
	ASSERT_EQ(message.AddEnclosure(path.c_str()), B_OK);

	// Neither tool: nothing runs.
	EXPECT_EQ(message.Send(true), B_ENTRY_NOT_FOUND);

	MakeTool("xdg-email", "printf '%s\\n' \"$@\" > '" + fTemp.Path("args") + "'");
	ASSERT_EQ(message.Send(true), B_OK);
	EXPECT_EQ(Read(fTemp.Path("args")), "--utf8\n--subject\nQuickstep results\n--body\n" +
	                                        std::string(body) + "\n--attach\n" + path +
	                                        "\nquickstep-results@example.org\n");

	// A tool that fails is a failed send.
	MakeTool("xdg-email", "exit 3");
	EXPECT_EQ(message.Send(true), B_ERROR);
	MakeSendmail(75);
	EXPECT_EQ(message.Send(true), B_ERROR);
}
