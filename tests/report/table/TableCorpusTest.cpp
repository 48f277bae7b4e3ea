#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "tests/report/table/TableReading.h"

namespace quillon::report {
namespace {

const std::string folder = QUILLON_TABLES_FOLDER "/";

/// A table of the corpus, the options with which it is read, and what is read of it.
struct Reading {
    std::string file;
    std::string options;
    std::string expected;
};

/// "readings.txt" has a block for each reading: a line "table: FILE OPTIONS", and the lines that are read.
std::vector<Reading> readReadings()
{
    std::vector<Reading> readings;
    std::ifstream file(folder + "readings.txt");
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.starts_with("#")) continue;
        if (line.starts_with("table: ")) {
            std::istringstream words(line.substr(7));
            readings.emplace_back();
            words >> readings.back().file >> std::ws;
            std::getline(words, readings.back().options);
        } else {
            readings.back().expected += line + "\n";
        }
    }
    return readings;
}

TEST(TableCorpus, ReadsEveryTableAsExpected)
{
    std::set<std::string> read = {"readings.txt"};
    for (const auto& [file, options, expected] : readReadings()) {
        SCOPED_TRACE("table: " + file + " " + options);
        read.insert(file);
        EXPECT_EQ(describeReading(folder + file, parseOptions(options)), expected);
    }
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        EXPECT_TRUE(read.contains(entry.path().filename().string())) << entry.path() << " has no reading";
}

}  // namespace
}  // namespace quillon::report
