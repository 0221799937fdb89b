// Every seed and regression input of the fuzz targets, run through the
// target's entry in the ordinary build and under the sanitizers, so that a
// fault found once stays fixed without a fuzzing run.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FuzzEntries.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path>
Inputs(const std::string& folder)
{
	std::vector<fs::path> inputs;
	std::error_code error;
	for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
		if (entry.is_regular_file())
			inputs.push_back(entry.path());
	}
	std::sort(inputs.begin(), inputs.end());
	return inputs;
}

class FuzzReplayTest : public testing::TestWithParam<FuzzTarget>
{
};

TEST_P(FuzzReplayTest, EveryCorpusAndRegressionInputIsReadSafely)
{
	const FuzzTarget& target = GetParam();
	const std::string base = std::string(QS_SOURCE_DIR) + "/fuzz/";
	std::vector<fs::path> inputs = Inputs(base + "corpus/" + target.name);
	EXPECT_FALSE(inputs.empty()) << "no seed corpus for " << target.name;
	for (const fs::path& input : Inputs(base + "regressions/" + target.name))
		inputs.push_back(input);
	for (const fs::path& input : inputs) {
		SCOPED_TRACE(input.string());
		std::ifstream file(input, std::ios::binary);
		const std::string bytes((std::istreambuf_iterator<char>(file)),
		                        std::istreambuf_iterator<char>());
		EXPECT_EQ(0, target.entry(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
	}
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplayTest,
                         testing::ValuesIn(kFuzzTargets, kFuzzTargets + kFuzzTargetCount),
                         [](const testing::TestParamInfo<FuzzTarget>& target) {
	                         return std::string(target.param.name);
                         });

} // namespace
