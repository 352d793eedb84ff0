#include "adapters/qt/application.h"

#include "adapters/qt/display.h"
#include "base/error.h"

#include <QApplication>
#include <QStyleFactory>
#include <QThread>

#include <list>
#include <utility>

namespace kova {
namespace {

/// Qt forgets a thread with its end and again with the process, where it expects the application's thread to
/// be the first one, and to be there still. Each object of a thread keeps what Qt knows of it.
void keepThread() {
    static auto* const kept = new std::list<QObject>; // never deleted
    thread_local bool keptThis = false;
    if (!std::exchange(keptThis, true))
        kept->emplace_back();
}

} // namespace

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
    keepThread();
    QApplication::setQuitOnLastWindowClosed(false);
    if (QStyle* style = QStyleFactory::create("Fusion"))
        QApplication::setStyle(style);
    return application;
}

} // namespace kova
