// A fresh directory under the temporary directory for one test, removed with
// its contents afterwards. The attribute fallback store is pointed into it.
#ifndef TEMP_DIRECTORY_H
#define TEMP_DIRECTORY_H

#include <cstdlib>
#include <filesystem>
#include <string>

class TempDirectory
{
public:
	explicit TempDirectory(const char* base = nullptr)
	{
		std::string pattern = std::string(base != nullptr ? base : "/tmp") + "/qs-test-XXXXXX";
		char* made = mkdtemp(&pattern[0]);
		fPath = made != nullptr ? made : "";
		const char* old = getenv("XDG_DATA_HOME");
		fHadData = old != nullptr;
		if (fHadData)
			fOldData = old;
	}

	~TempDirectory()
	{
		if (fHadData)
			setenv("XDG_DATA_HOME", fOldData.c_str(), 1);
		else
			unsetenv("XDG_DATA_HOME");
		std::error_code ignored;
		std::filesystem::permissions(fPath, std::filesystem::perms::owner_all,
		                             std::filesystem::perm_options::add, ignored);
		std::filesystem::remove_all(fPath, ignored);
	}

	// Keeps the fallback store inside this directory.
	void UseAsDataHome() const { setenv("XDG_DATA_HOME", (fPath + "/data").c_str(), 1); }

	std::string Path(const std::string& leaf = "") const
	{
		return leaf.empty() ? fPath : fPath + "/" + leaf;
	}

	bool Valid() const { return !fPath.empty(); }

private:
	std::string fPath;
	std::string fOldData;
	bool fHadData;
};

#endif // TEMP_DIRECTORY_H
