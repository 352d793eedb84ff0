// The demonstration's first start and those after it.
#include "host_options.h"
#include "qt_demonstration_window.h"
#include "qt_point_of_sale.h"

#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kova {
namespace {

TEST(Demonstration, ExplainsItselfOnceAndHasMovementsOfToday) {
    const QTemporaryDir home;
    for (const char* place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(place, home.path().toUtf8());
    std::size_t movements = 0;
    for (const bool first : {true, false}) {
        PointOfSale shop{HostOptions{}};
        DemonstrationWindow window(shop);
        window.show();
        auto* const introduction = window.findChild<QWidget*>("Introduction");
        EXPECT_EQ(introduction->isVisible(), first);
        const auto sentences = introduction->findChildren<QLabel*>();
        ASSERT_EQ(sentences.size(), 3);
        const QString italian = sentences.last()->text();
        window.findChildren<QPushButton*>("LanguageSegment").at(1)->click();
        EXPECT_NE(sentences.last()->text(), italian);
        introduction->findChild<QPushButton*>()->click();
        EXPECT_FALSE(introduction->isVisible());
        const std::size_t present = shop.dayReport(shop.now()).movements.size();
        EXPECT_GT(present, 20U);
        EXPECT_EQ(present, first ? present : movements) << "filled once a day";
        movements = present;
    }
}

} // namespace
} // namespace kova
