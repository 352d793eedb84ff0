#include "ports/database.h"
#include "widgets/report_grid.h"

#include <gtest/gtest.h>

namespace kova {
namespace {

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

} // namespace
} // namespace kova
