#include "adapters/system/file_error_logger.h"
#include "services/combo_multi_column.h"
#include "test_world.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace kova::test {
namespace {

TEST(ComboMultiColumn, KeepsRowsUpToTheOneAddedLast) {
    World world;
    ComboMultiColumn list(world.process);
    list.AddItem(3, "d", "4");
    EXPECT_EQ(list.rowCount(), 4U);
    EXPECT_EQ(list.GetItem(2, 3), "4");
    EXPECT_EQ(list.GetItem(1, 0) + list.GetItem(0, 3) + list.GetItem(3, 3) + list.GetItem(-1, 0) +
                  list.GetItem(1, -1) + list.GetItem(1, 4),
              "");
    list.AddItem(4, "d", "5");
    std::string found = "kept";
    EXPECT_FALSE(list.GetColonna2_fromColonna1("D", found));
    EXPECT_EQ(found, "kept");
    EXPECT_TRUE(list.GetColonna2_fromColonna1("d", found));
    EXPECT_EQ(found, "4") << "the lower row wins";
    list.AddItem(0, "a", "1");
    EXPECT_EQ(list.rowCount(), 1U) << "a lower index cuts the list";
    list.Clear();
    EXPECT_EQ(list.rowCount(), 1U);
    EXPECT_EQ(list.GetItem(1, 0), "");
}

class LogFile : public testing::Test {
  protected:
    void TearDown() override { std::filesystem::remove_all(folder); }
    [[nodiscard]] std::vector<std::string> lines() const {
        std::ifstream file(path);
        std::vector<std::string> read;
        for (std::string line; std::getline(file, line);)
            read.push_back(line);
        return read;
    }
    const std::string folder = testing::TempDir() + "kova_log_" + std::to_string(::getpid());
    const std::string path = folder + "/logfile.log";
    World::FixedClock clock;
    FileErrorLogger logger{clock};
};

TEST_F(LogFile, HoldsOneGreppableLineARecordAndEarlyRecordsWait) {
    logger.LogError("InitOpt : ", "two\nlines\tand \\", nullptr, -7, "");
    logger.SetApplicationName("KOVA");
    logger.SetLogFile(path); // the folder is missing
    std::filesystem::create_directories(folder);
    logger.LogError("Form_Load", "x", "object", 0, "text");
    EXPECT_EQ(lines(), (std::vector<std::string>{
                           "1970-01-01T00:00:00.000\t\tInitOpt : \ttwo\\nlines\\tand \\\\\t\t-7\t",
                           "1970-01-01T00:00:00.000\tKOVA\tForm_Load\tx\tobject\t0\ttext"}));
}

TEST_F(LogFile, SurvivesADeletedFileAndAFullDisk) {
    std::filesystem::create_directories(folder);
    for (int i = 0; i < 1002; ++i)
        logger.LogError("early", std::to_string(i), nullptr, 0, "");
    logger.SetLogFile(path);
    ASSERT_EQ(lines().size(), 1001U) << "1,000 records and the count of the lost";
    EXPECT_NE(lines()[0].find("2 records lost"), std::string::npos);
    std::filesystem::remove(path);
    logger.LogError("again", "", nullptr, 0, "");
    EXPECT_EQ(lines().size(), 1U) << "a deleted file is begun again";
    logger.SetLogFile("/dev/full");
    logger.LogError("full", "", nullptr, 0, "");
    logger.SetLogFile(path);
    EXPECT_EQ(lines().size(), 2U);
}

} // namespace
} // namespace kova::test
