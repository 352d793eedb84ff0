#include "adapters/qt/application.h"

#include "adapters/qt/display.h"
#include "base/error.h"

#include <QApplication>
#include <QStyleFactory>
#include <QThread>

namespace kova {

std::unique_ptr<QApplication> makeApplication() {
    if (QCoreApplication::instance() != nullptr) {
        if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
            throw Error(5, "The process has a Qt application without widgets");
        if (QCoreApplication::instance()->thread() != QThread::currentThread())
            throw Error(5, "The process has a Qt application on another thread");
        return nullptr;
    }
    static int count = 1;
    static char name[] = "kova";
    static char* arguments[] = {name, nullptr};
    auto application = openApplication(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    if (QStyle* style = QStyleFactory::create("Fusion"))
        QApplication::setStyle(style);
    return application;
}

} // namespace kova
