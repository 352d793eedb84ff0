// What the rules are built from: signals, results of queries, tables of texts, the log's file.
#include "adapters/system/file_error_logger.h"
#include "base/signal.h"
#include "ports/database.h"
#include "screen/unanswered_times.h"
#include "services/combo_multi_column.h"
#include "test_world.h"
#include "widgets/report_grid.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <unistd.h>

namespace kova::test {
namespace {

using Calls = std::vector<int>;

TEST(Signal, SlotsMayChangeTheConnectionsEmitAgainAndThrow) {
    Signal<> signal;
    Calls calls;
    bool failing = false;
    Connection self, later, added;
    self = signal.connect([&] {
        calls.push_back(1);
        self.disconnect();
        later.disconnect();
        added = signal.connect([&] { calls.push_back(3); });
        signal();
    });
    later = signal.connect([&] { calls.push_back(2); });
    const auto throwing = signal.connect([&] { failing ? throw std::runtime_error("slot") : void(); });
    auto last = signal.connect([&] { calls.push_back(8); });
    last = signal.connect([&] { calls.push_back(9); }); // replaces that one
    signal();
    EXPECT_EQ(calls, Calls({1, 9, 3, 9})) << "one disconnected is not called, one connected waits";
    failing = true;
    EXPECT_THROW(signal(), std::runtime_error);
    failing = false;
    { const auto gone = std::move(last); }
    signal();
    EXPECT_EQ(calls, Calls({1, 9, 3, 9, 3})) << "the signal is usable after a slot threw";
}

TEST(Signal, ASlotMayDestroyTheSignal) {
    auto signal = std::make_optional<Signal<>>();
    Calls calls;
    const auto destroying = signal->connect([&] {
        calls.push_back(1);
        signal.reset();
    });
    auto after = signal->connect([&] { calls.push_back(2); });
    (*signal)();
    EXPECT_EQ(calls, Calls({1})) << "slots of a destroyed signal are not called";
    after.disconnect(); // outliving the signal is no error
}

// Lengths are kept in one byte or four, texts in pages of 64 KiB: each border, again and again.
TEST(Recordset, KeepsTextsOfEveryLength) {
    std::vector<std::string> texts;
    for (int round = 0; round < 3; ++round)
        for (const std::size_t length : std::initializer_list<std::size_t>{
                 0, 1, 32, 33, 254, 255, 256, 65530, 65531, 65535, 65536, 65537, 200000})
            texts.emplace_back(length, static_cast<char>('a' + texts.size() % 26));
    auto snapshot = std::make_shared<Snapshot>();
    snapshot->addColumn("text");
    for (const std::string& text : texts) {
        snapshot->add(std::string_view(text));
        snapshot->endRow();
    }
    for (std::size_t row = 0; row < texts.size(); ++row)
        EXPECT_EQ(snapshot->at(row, 0), Value(std::string_view(texts[row]))) << texts[row].size();
    std::size_t rows = texts.size();
    EXPECT_THROW(for (;; ++rows) snapshot->endRow(), DatabaseError);
    EXPECT_EQ(rows, Snapshot::MostRows);
}

TEST(TextTable, UsesItsMemoryAgain) {
    TextTable table;
    std::size_t used = 0;
    for (int round = 0; round < 3; ++round) {
        table.clear();
        for (std::size_t record = 0; record < 30'000; ++record) {
            table.addRecord();
            for (int item = 0; item < 8; ++item)
                table.addItem(record, std::to_string(record * 8 + static_cast<std::size_t>(item)));
        }
        EXPECT_EQ(table.item(29'999, 7), "239999");
        EXPECT_EQ(round > 0 ? table.memoryUse() : used, used);
        used = table.memoryUse();
    }
    EXPECT_GT(used, 30'000U * (8 * (4 + 6) + 8)) << "places, texts and records";
    EXPECT_LT(used, 30'000U * (8 * (4 + 8) + 8) + 200'000);
}

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

TEST(UnansweredTimes, AreThoseInWhichNothingCouldAnswerForLong) {
    using namespace std::chrono_literals;
    UnansweredTimes times;
    times.begin([] { return 1000ms; });
    times.begin([] { return 1100ms; });
    times.end([] { return 1200ms; }); // inside the first
    times.end([] { return 1499ms; });
    times.begin([] { return 2000ms; });
    const int running = times.suspend(2500ms); // it waits for the user
    times.begin([] { return 2600ms; });
    times.end([] { return 2700ms; });
    times.resume(running, 9000ms);
    times.end([] { return 9600ms; });
    std::string refused;
    for (auto touched = 900ms; touched < 10s; touched += 100ms)
        if (times.contain(touched, 10s))
            refused += std::to_string(touched.count()) + " ";
    EXPECT_EQ(refused, "2000 2100 2200 2300 2400 9000 9100 9200 9300 9400 9500 ");
    EXPECT_FALSE(times.contain(9500ms, 70s)) << "nothing waits that long to be heard";
}

} // namespace
} // namespace kova::test
