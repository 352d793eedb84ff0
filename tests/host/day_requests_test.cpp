// The host's window with the component's dialog open: what becomes of a request to print or preview.
#include "adapters/sqlite/sqlite_database.h"
#include "host_options.h"
#include "qt_demonstration_window.h"
#include "qt_point_of_sale.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

namespace kova {
namespace {

template <class Widget>
Widget* shown(const QString& name) {
    for (QWidget* const one : QApplication::allWidgets())
        if (auto* const wanted = qobject_cast<Widget*>(one);
            wanted != nullptr && wanted->objectName() == name && wanted->isVisible())
            return wanted;
    return nullptr;
}

/// A cashier who opens the dialog, turns to its second page and asks there.
class DayRequests : public testing::Test {
  protected:
    ~DayRequests() override {
        window.reset();
        shop.reset();
        std::filesystem::remove(file);
    }
    DayRequests() {
        HostOptions options;
        std::filesystem::remove(file);
        SqliteHostDatabase::openFile(file).createSchema();
        options.database = file;
        options.logFolder = testing::TempDir();
        shop.emplace(options);
        window.emplace(*shop);
        window->resize(1024, 736);
        window->show();
    }
    /// Each step runs in the innermost loop of that moment; the dialog is closed after the last.
    void inTheDialog(std::vector<std::function<void()>> actions) {
        steps = std::move(actions);
        QTimer::singleShot(10000, &*window, [] { QApplication::exit(1); });
        step();
        window->findChild<QPushButton*>("Primary")->click();
    }
    void step() {
        QTimer::singleShot(100, &*window, [this] {
            step(); // first, as the action may wait for what it opens
            if (next < steps.size())
                steps[next++]();
            else if (auto* const close = shown<QAbstractButton>("PushButton1"))
                close->click();
        });
    }
    void ask(const char* button, const QString& date) {
        auto* const tabs = shown<QTabBar>("TabControl_tabs");
        for (const auto kind : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const QPoint at = tabs->tabRect(1).center();
            QMouseEvent event(kind, at, tabs->mapToGlobal(at), Qt::LeftButton,
                              kind == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                              Qt::NoModifier);
            QApplication::sendEvent(tabs, &event);
        }
        shown<QLineEdit>("comboData_text")->setText(date);
        emit shown<QLineEdit>("comboData_text")->textEdited(date);
        shown<QAbstractButton>(button)->click();
    }
    [[nodiscard]] QString banner() const {
        auto* const sign = window->findChild<QPushButton*>("Banner");
        return sign->isHidden() ? QString() : sign->text();
    }

    const std::string file = testing::TempDir() + "kova-" + // tests run side by side
                             testing::UnitTest::GetInstance()->current_test_info()->name() + ".sqlite";
    int count = 1;
    char name[6] = "tests";
    char* arguments[2] = {name, nullptr};
    QApplication application{count, arguments};
    std::optional<PointOfSale> shop;
    std::optional<DemonstrationWindow> window;
    std::vector<std::function<void()>> steps;
    std::size_t next = 0;
};

TEST_F(DayRequests, SayWhyThereIsNoDocument) {
    std::vector<QString> said;
    inTheDialog({[&] { ask("cmd_print", "31/02/2026"); },
                 [&] {
                     said.push_back(banner());
                     ask("cmdAnteprima", "16/11/2026");
                 },
                 [&] { said.push_back(banner()); }});
    ASSERT_EQ(said.size(), 2U);
    EXPECT_TRUE(said[0].contains("31/02/2026") && said[0].contains("non è una data"))
        << said[0].toStdString();
    EXPECT_EQ(said[1], "Nessun movimento il 16/11/2026");
}

TEST_F(DayRequests, OpenADocumentInFrontOfTheDialogWhichGoesOn) {
    auto rows = SqliteHostDatabase::openFile(file);
    rows.storeMovement({.dataOperazione = std::chrono::local_days(std::chrono::year(2026) / 11 / 16),
                        .importoIncassato = 12.5,
                        .valuta = "€",
                        .note = "",
                        .idCassa = 1});
    QString preview, printer, again;
    int pages = 0;
    inTheDialog({[&] { ask("cmdAnteprima", "16/11/2026"); },
                 [&] {
                     auto* const front =
                         qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
                     ASSERT_NE(front, nullptr);
                     preview = front->windowTitle();
                     pages = front->findChild<QPrintPreviewWidget*>()->pageCount();
                     front->reject();
                 },
                 [&] { ask("cmd_print", "16/11/2026"); },
                 [&] {
                     auto* const front = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
                     ASSERT_NE(front, nullptr);
                     printer = front->windowTitle();
                     front->reject();
                 },
                 [&] {
                     rows.execute("DROP TABLE tabUtenti");
                     ask("cmd_print", "16/11/2026");
                 },
                 [&] { again = banner(); }});
    EXPECT_EQ(preview, "Movimenti di cassetto 16/11/2026");
    EXPECT_EQ(pages, 1);
    EXPECT_EQ(printer, preview);
    EXPECT_TRUE(again.startsWith("I movimenti del giorno non si possono leggere: ")) << again.toStdString();
}

} // namespace
} // namespace kova
