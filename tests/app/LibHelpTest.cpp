#include "lib/LibHelp.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include <Application.h>
#include <FindDirectory.h>
#include <PlatformTest.h>

#include "app/AppTestSupport.h"
#include "platform/TempDirectory.h"

namespace {

class LibHelpTest : public testing::Test
{
protected:
	void SetUp() override
	{
		ASSERT_TRUE(fTemp.Valid());
		platform_set_directory(B_COMMON_DOCUMENTATION_DIRECTORY, fTemp.Path("doc").c_str());
	}

	void TearDown() override { platform_set_directory(B_COMMON_DOCUMENTATION_DIRECTORY, nullptr); }

	TempDirectory fTemp;
	apptest::FakeBrowser fBrowser{fTemp.Path()};
};

} // namespace

TEST_F(LibHelpTest, ManualOpensAsAFileLinkInTheBrowser)
{
	std::filesystem::create_directories(fTemp.Path("doc/quickstep"));
	std::ofstream(fTemp.Path("doc/quickstep/QuickstepSUM.html")) << "<html></html>";

	EXPECT_EQ(LibHelp::Show("Quickstep"), B_OK);
	EXPECT_EQ(fBrowser.Opened(), "file://" + fTemp.Path("doc/quickstep/QuickstepSUM.html") + "\n");
}

TEST_F(LibHelpTest, ManualIsLookedUpByFolderThenExtension)
{
	// Files present under doc/, and the one the lookup must choose.
	const struct {
		std::vector<std::string> present;
		std::string chosen;
	} cases[] = {
	    {{"quickstep/QuickstepSUM.html"}, "quickstep/QuickstepSUM.html"},
	    {{"Quickstep/QuickstepSUM"}, "Quickstep/QuickstepSUM"},
	    {{"Quickstep/QuickstepSUM", "Quickstep/QuickstepSUM.html"}, "Quickstep/QuickstepSUM.html"},
	    {{"Quickstep/QuickstepSUM", "quickstep/QuickstepSUM.html"}, "Quickstep/QuickstepSUM"},
	    {{"quickstep/QuickstepSUM", "quickstep/QuickstepSUM.html"}, "quickstep/QuickstepSUM.html"},
	    // A folder of that name is no manual.
	    {{"quickstep/QuickstepSUM.html/"}, "quickstep/QuickstepSUM.html"},
	    {{}, "quickstep/QuickstepSUM.html"},
	};
	for (const auto& c : cases) {
		std::filesystem::remove_all(fTemp.Path("doc"));
		for (const std::string& file : c.present) {
			std::filesystem::path path = fTemp.Path("doc/" + file);
			if (file.back() == '/') {
				std::filesystem::create_directories(path);
			} else {
				std::filesystem::create_directories(path.parent_path());
				std::ofstream(path) << "<html></html>";
			}
		}
		SCOPED_TRACE(c.chosen);
		EXPECT_EQ(LibHelp::DocumentPath("Quickstep").String(), fTemp.Path("doc/" + c.chosen));
	}
}

TEST_F(LibHelpTest, NoBrowserLauncherIsReported)
{
	fBrowser.Remove();
	EXPECT_EQ(WebLinkTo("file:///tmp/x"), B_ENTRY_NOT_FOUND);
}

TEST_F(LibHelpTest, MissingManualIsToldToTheUserAndNothingOpens)
{
	QS_REQUIRE_DISPLAY();
	apptest::SharedApp();
	std::string expected = "Unable to find help file for Quickstep in '" +
	                       fTemp.Path("doc/quickstep/QuickstepSUM.html") + "'";
	apptest::AlertAnswerer answerer({0});
	EXPECT_EQ(LibHelp::Show("Quickstep"), B_ENTRY_NOT_FOUND);
	ASSERT_EQ(answerer.Texts().size(), 1u);
	EXPECT_EQ(answerer.Texts()[0], expected);
	EXPECT_EQ(fBrowser.Opened(0.3), "");
}

TEST_F(LibHelpTest, FailingOrMissingBrowserIsToldToTheUser)
{
	QS_REQUIRE_DISPLAY();
	apptest::SharedApp();
	std::filesystem::create_directories(fTemp.Path("doc/Quickstep"));
	std::ofstream(fTemp.Path("doc/Quickstep/QuickstepSUM")) << "<html></html>";
	fBrowser.Script("exit 4");

	apptest::AlertAnswerer answerer({0, 0});
	int exitStatus = 0;
	EXPECT_EQ(WebLinkTo("file:///x", &exitStatus), B_ERROR);
	EXPECT_EQ(exitStatus, 4);
	EXPECT_EQ(LibHelp::Show("Quickstep"), B_ERROR);
	fBrowser.Remove();
	EXPECT_EQ(LibHelp::Show("Quickstep"), B_ENTRY_NOT_FOUND);
	std::vector<std::string> texts = answerer.Texts();
	ASSERT_EQ(texts.size(), 2u);
	EXPECT_NE(texts[0].find("'xdg-open' failed (exit status 4)"), std::string::npos) << texts[0];
	EXPECT_NE(texts[1].find("'xdg-open' is not installed"), std::string::npos) << texts[1];
	EXPECT_NE(texts[1].find(fTemp.Path("doc/Quickstep/QuickstepSUM")), std::string::npos);
}
