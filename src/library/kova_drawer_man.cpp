#include "library/kova_drawer_man.h"

#include "adapters/databases/databases.h"
#include "library/library_process.h"

#include <QCoreApplication>

#include <utility>

namespace kova {
namespace {

/// Never destroyed by itself: when the program's static objects go, it is too late to end a Qt application.
std::shared_ptr<LibraryProcess>& slot() {
    static auto* const process = new std::shared_ptr<LibraryProcess>;
    return *process;
}

LibraryProcess& process() {
    auto& present = slot();
    if (!present) {
        const bool hostHasQt = QCoreApplication::instance() != nullptr;
        present = std::make_shared<LibraryProcess>();
        if (hostHasQt)
            qAddPostRoutine(shutDown);
    }
    return *present;
}

} // namespace

std::shared_ptr<cls_Kova_Drawer_Man> createComponent() {
    return process().createComponent();
}

std::shared_ptr<DatabaseConnection> openDatabase(const std::string& connectionString) {
    return process().databases().open(connectionString);
}

std::shared_ptr<DatabaseConnection> hostOdbcConnection(void* connectionHandle) {
    return shareOdbcConnection(connectionHandle);
}

void setLanguage(std::int32_t id, const std::string& name) {
    process().language().setLanguage(id, name);
}

void setScreenAids(const ScreenAids& aids) {
    process().setScreenAids(aids);
}

void setDecimalKey(DecimalKey key) {
    process().setDecimalKey(key);
}

void processEvents() {
    if (const auto present = slot())
        present->processEvents();
}

void shutDown() {
    const auto ending = std::exchange(slot(), nullptr);
    if (!ending)
        return;
    qRemovePostRoutine(shutDown);
    ending->end();
}

} // namespace kova
