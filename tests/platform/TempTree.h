// A throw-away directory tree for tests: files are written on demand and the
// whole tree goes when the object does.
#ifndef TEMP_TREE_H
#define TEMP_TREE_H

#include <cstdlib>
#include <fstream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

class TempTree
{
public:
	TempTree()
	{
		char pattern[] = "/tmp/quickstep-test-XXXXXX";
		const char* made = mkdtemp(pattern);
		fPath = made != nullptr ? made : "";
	}
	~TempTree()
	{
		if (!fPath.empty())
			Run("rm -rf '" + fPath + "'");
	}
	TempTree(const TempTree&) = delete;
	TempTree& operator=(const TempTree&) = delete;

	const std::string& Path() const { return fPath; }
	const char* c_str() const { return fPath.c_str(); }

	// Writes contents to path (relative to the tree), making its directories.
	void Write(const std::string& path, const std::string& contents) const
	{
		size_t slash = path.find_last_of('/');
		if (slash != std::string::npos)
			MakeDirectory(path.substr(0, slash));
		std::ofstream file(fPath + "/" + path, std::ios::binary);
		file << contents;
	}
	void MakeDirectory(const std::string& path) const
	{
		Run("mkdir -p '" + fPath + "/" + path + "'");
	}

private:
	static void Run(const std::string& command)
	{
		int status = std::system(command.c_str());
		(void)status;
	}

	std::string fPath;
};

#endif // TEMP_TREE_H
