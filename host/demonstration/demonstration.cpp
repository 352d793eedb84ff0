#include "demonstration/demonstration.h"

#include "demonstration/look.h"
#include "demonstration/window.h"
#include "host_options.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStyleFactory>

#include <iostream>

namespace kova {
namespace {

void showUnusable(const HostOptions& options, const std::string& reason) {
    const std::string name = databaseName(options);
    std::cerr << "kova-host: " << name << ": " << reason << std::endl;
    const std::int32_t language = languageId();
    const double scale = host_look::scaleFor(QGuiApplication::primaryScreen()->availableSize());
    QMessageBox box(QMessageBox::Critical, caption(Caption::Title, language),
                    caption(Caption::DatabaseUnusable, language).arg(QString::fromStdString(name)));
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QString::fromStdString(reason));
    box.addButton("OK", QMessageBox::AcceptRole)->setObjectName("Primary");
    box.setStyleSheet(host_look::styleSheet(scale));
    box.exec();
}

/// A window to assistive technology, which is told that a plain widget only fills a place.
QAccessibleInterface* accessibleWindow(const QString&, QObject* object) {
    auto* const window = dynamic_cast<DemonstrationWindow*>(object);
    return window == nullptr ? nullptr : new QAccessibleWidget(window, QAccessible::Window);
}

/// The whole screen, also where no window manager maximises.
void showOnScreen(QWidget& window) {
    const QScreen& screen = *QGuiApplication::primaryScreen();
    window.setMinimumSize(800, 560);
    window.resize(screen.availableSize());
    window.showMaximized();
}

} // namespace

int runDemonstration(const HostOptions& options) {
    int count = 1;
    char name[] = "kova-host"; // also names the folder of the user's data
    char* arguments[] = {name, nullptr};
    QApplication application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QAccessible::installFactory(&accessibleWindow);
    try {
        PointOfSale shop(options);
        DemonstrationWindow window(shop);
        showOnScreen(window);
        return QApplication::exec();
    } catch (const std::exception& failure) {
        showUnusable(options, failure.what());
        return NotCarriedOut;
    }
}

} // namespace kova
