// The demonstration: its first start, and what becomes of a request to print or preview a day.
#include "demonstration/point_of_sale.h"
#include "demonstration/window.h"
#include "host_options.h"
#include "shop/shop_database.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

namespace kova {
namespace {

TEST(Demonstration, ExplainsItselfOnceAndHasMovementsOfEachDay) {
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
        introduction->findChild<QPushButton*>()->click();
        EXPECT_FALSE(introduction->isVisible());
        const std::size_t before = std::exchange(movements, shop.dayReport(shop.now()).movements.size());
        EXPECT_GT(movements, 20U);
        EXPECT_TRUE(first || movements == before) << "filled once a day";
        for (const int days : {1, 4, 100, 360})
            EXPECT_GT(shop.dayReport(shop.now() - std::chrono::days(days)).movements.size(), 4U) << days;
    }
}

template <class Widget>
Widget* shown(const QString& name) {
    for (QWidget* const one : QApplication::allWidgets())
        if (auto* const wanted = qobject_cast<Widget*>(one);
            wanted != nullptr && wanted->objectName() == name && wanted->isVisible())
            return wanted;
    return nullptr;
}

/// On the dialog's second page.
void ask(const char* button, const QString& date) {
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QApplication::sendEvent(shown<QTabBar>("TabControl_tabs"), &right);
    shown<QLineEdit>("comboData_text")->setText(date);
    emit shown<QLineEdit>("comboData_text")->textEdited(date);
    shown<QAbstractButton>(button)->click();
}

void expectInFront(const char* name) {
    auto* const front = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(front, nullptr);
    EXPECT_EQ(front->objectName(), name);
    EXPECT_EQ(front->findChild<QLabel*>("Heading")->text().toStdString(),
              "Movimenti di cassetto 16/11/2026\nCassa 1 · Tutti gli operatori");
    front->reject();
}

TEST(Demonstration, OpensADocumentInFrontOfTheDialogOrSaysWhyThereIsNone) {
    const QTemporaryDir folder;
    HostOptions options;
    options.database = folder.filePath("shop.sqlite").toStdString();
    options.logFolder = folder.path().toStdString();
    auto rows = ShopDatabase::openFile(options.database);
    rows.createSchema();
    const auto day = std::chrono::local_days(std::chrono::year(2026) / 11 / 16);
    rows.storeMovement({.time = day,
                        .till = 1,
                        .movement = {.importo = 12.5, .Valuta = "€", .note = "", .isIncasso = true}});
    PointOfSale shop(options);
    DemonstrationWindow window(shop);
    window.show();
    std::string banner;
    const std::vector<std::function<void()>> steps{
        [] { ask("cmd_print", "31/02/2026"); },
        [&] { EXPECT_EQ(banner, "«31/02/2026» non è una data: scegli il giorno e riprova."); },
        [] { ask("cmdAnteprima", "17/11/2026"); },
        [&] { EXPECT_EQ(banner, "Nessun movimento il 17/11/2026"); },
        [] { ask("cmdAnteprima", "16/11/2026"); },
        [] { expectInFront("DayPreview"); },
        [] { ask("cmd_print", "16/11/2026"); },
        [] { expectInFront("DayPrintDialog"); },
        [&] {
            rows.execute("DROP TABLE tabUtenti");
            ask("cmd_print", "16/11/2026");
        },
        [&] { EXPECT_TRUE(banner.starts_with("I movimenti del giorno non si possono leggere: ")); },
        [] { shown<QAbstractButton>("PushButton1")->click(); }};
    std::size_t next = 0;
    const std::function<void()> step = [&] {
        if (next == steps.size())
            return;
        QTimer::singleShot(100, &window, step); // first, as the step may wait for what it opens
        auto* const sign = window.findChild<QPushButton*>("Banner");
        banner = sign->isHidden() ? "" : sign->text().toStdString();
        steps[next++]();
    };
    QTimer::singleShot(100, &window, step);
    QTimer::singleShot(10000, &window, [] { QApplication::exit(1); });
    window.findChild<QPushButton*>("Primary")->click();
    EXPECT_EQ(next, steps.size());
}

} // namespace
} // namespace kova
