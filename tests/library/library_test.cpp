// A host of the shared library: plays the part that its first argument names, with a Qt application of its
// own (second argument "with-qt") or without one. Each part is a process of its own, and has to end as such.

#include "host.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QTabBar>
#include <QTimer>

#include <algorithm>
#include <map>
#include <memory>
#include <thread>

namespace {

using namespace kova::test;

/// How many dialogs are on the screen in that language.
int dialogs(const char* title = "Gestione cassetto") {
    kova::processEvents();
    return static_cast<int>(
        std::ranges::count_if(QApplication::topLevelWidgets(), [&](const QWidget* widget) {
            return widget->isVisible() && widget->windowTitle() == title;
        }));
}

std::shared_ptr<kova::cls_Kova_Drawer_Man> shownComponent() {
    auto component = kova::createComponent();
    component->Inizializza(shop());
    component->Show(0);
    kova::processEvents();
    return component;
}

void wholeLife() {
    const auto component = shownComponent();
    expect(!kova::fontFamily().empty(), "the dialog has a font family to share");
    kova::setLanguage(1040, "Italiano");
    expect(dialogs() == 1, "a modeless show puts one dialog on the screen");
    kova::setLanguage(9, "English");
    expect(dialogs("Drawer management") == 1 && kova::languageId() == 9,
           "a change of language reaches the open dialog");
    component->DiscardForm();
    expect(dialogs("Drawer management") == 0, "discarding takes the dialog off the screen");

    expect(throws<kova::DatabaseError>([] { (void)kova::openDatabase("Driver=none"); }),
           "failures of databases cross the library as what they are");

    kova::setLanguage(1040, "Italiano");
    component->Show(0);
    expect(dialogs() == 1, "the dialog is open before the end");
    kova::shutDown();
    expect(dialogs() == 0, "the end closes open dialogs");
    kova::shutDown();
    expect(newRecords() == 0, "nothing of all this is a failure");
    expect(component->Show().empty() && newRecords() == 1, "a show after the end is one record");
    component->DiscardForm();
    expect(newRecords() == 0, "nothing is left to discard");
}

/// Ends the library inside an event, which `raise` makes the component raise.
void endInside(const std::shared_ptr<kova::cls_Kova_Drawer_Man>& component,
               const std::function<void()>& raise) {
    Host host;
    const auto connection = component->connect(host);
    bool handled = false;
    host.onEvent = [&] {
        kova::shutDown();
        expect(dialogs() == 1, "the end waits for the event");
        expect(throws([] { (void)kova::createComponent(); }), "nothing begins before the end");
        handled = true;
    };
    raise();
    kova::processEvents(); // ends an application of the library's own
    QCoreApplication::processEvents();
    expect(handled && dialogs() == 0, "the end comes after the event");
    expect(component->Show(0).empty() && dialogs() == 0, "nothing is shown any more");
}

void touchPreview() {
    for (QWidget* const widget : QApplication::topLevelWidgets())
        if (auto* const tabs = widget->findChild<QTabBar*>()) {
            QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
            QCoreApplication::sendEvent(tabs, &right); // to the page of the movements
            widget->findChild<QAbstractButton*>("cmdAnteprima")->click();
            return;
        }
}

void endInsideEvents() {
    const auto called = shownComponent();
    endInside(called, [&] { called->ApriCassetto(); });
    endInside(shownComponent(), touchPreview);
    const auto modal = shownComponent();
    endInside(modal, [&] {
        QTimer::singleShot(0, touchPreview);
        modal->Show(1);
    });
}

void exitInsideAnEvent() {
    static Host host;
    static const auto component = shownComponent();
    static const auto connection = component->connect(host);
    host.onEvent = [] { std::exit(failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE); };
    touchPreview();
    expect(false, "the process has gone");
}

void otherThread() {
    const auto component = shownComponent();
    std::string text;
    const std::function<void()> refused[] = {[] { (void)kova::createComponent(); },
                                             [] { kova::setLanguage(9, "English"); },
                                             [] { kova::setScreenAids({}); },
                                             [] { kova::setLogFolder("/"); },
                                             [] { (void)kova::languageId(); },
                                             kova::processEvents,
                                             kova::shutDown,
                                             [&] { component->Stampa(text); },
                                             [&] { (void)component->get("idCassa"); }};
    std::thread([&] {
        for (const auto& call : refused)
            expect(throws(call) && newRecords() == 1, "a call elsewhere is refused with a record");
        component->Show();
        component->DiscardForm();
        component->Inizializza(nullptr);
        expect(newRecords() == 3, "what never fails is one record each");
    }).join();
    std::thread([released = shownComponent()]() mutable { released.reset(); }).join();
    expect(newRecords() == 1 && dialogs() == 2, "a release elsewhere closes nothing");
}

/// A component that outlives main with its dialog open, made before or after what the library needs itself.
std::shared_ptr<kova::cls_Kova_Drawer_Man> forgotten;

void staticComponents() {
    static const auto local = shownComponent();
    forgotten = shownComponent();
}

const std::map<std::string, void (*)()> parts{{"whole-life", wholeLife},
                                              {"static-components", staticComponents},
                                              {"end-inside-events", endInsideEvents},
                                              {"exit-inside-an-event", exitInsideAnEvent},
                                              {"other-thread", otherThread}};

} // namespace

int main(int count, char** arguments) {
    const auto part = parts.at(arguments[1]);
    setenv("KOVA_LOG", logFile.c_str(), 1);
    if (count > 2) {
        QApplication application(count, arguments);
        QApplication::setQuitOnLastWindowClosed(false);
        part();
        expect(QCoreApplication::instance() == &application, "the host's application is left alone");
    } else {
        part();
    }
    std::filesystem::remove(logFile);
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
