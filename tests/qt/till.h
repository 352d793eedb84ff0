#pragma once
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "unit/test_world.h"

#include <QCoreApplication>
#include <QWidget>

namespace kova::test {

/// A component with its rules on real windows, on the doubles of the unit tests for all else.
class Till {
  public:
    explicit Till(const QSize& surface = {1280, 800}, QtEventLoop::Time time = QtEventLoop::Time::Stepped);
    ~Till();
    Till(const Till&) = delete;
    Till& operator=(const Till&) = delete;

    enum class Layout { Single, DrawersAndCurrencies, Double, ManyButtons };
    /// Connects and shows the dialog.
    void show(Layout layout = Layout::Single);
    Window& dialog() { return *component->dialog()->window(); }
    template <class Kind>
    Kind& control(const std::string& name, std::optional<int> index = {}) {
        return as<Kind>(dialog().find(name, index));
    }
    WindowFrame& frame() { return *userInterface.frame(dialog()); }
    QWidget& widget(const std::string& name, std::optional<int> index = {}) {
        return userInterface.view(*dialog().find(name, index))->widget();
    }
    void wait(int milliseconds) {
        loop.advance(std::chrono::milliseconds(milliseconds));
        loop.settle();
    }
    /// Fills in everything that a single movement needs but the amount.
    void composeMovement();

    ScriptedDatabase& database() { return *database_; }
    std::function<void(Window&)> insideModal; ///< what happens in a modal loop before it is closed
    std::vector<std::string> messages;        ///< texts of the message window
    RegionalSettings regional;
    QtEventLoop loop;
    QtUserInterface userInterface;

  private:
    void runModal(Window& window);
    void fillCatalogues();
    struct NoProvider final : DatabaseProvider {
        std::shared_ptr<DatabaseConnection> open(const std::string&) override { return nullptr; }
    } provider_;
    struct NoLogger final : ErrorLogger {
        void SetApplicationName(const std::string&) override {}
        void SetLogFile(const std::string&) override {}
        void LogError(const std::string& procedure, const std::string& message, const char*, std::int32_t,
                      const std::string&) override;
    };
    World defaults_; ///< whose scripted database has catalogues
    std::shared_ptr<ScriptedDatabase> database_ = std::make_shared<ScriptedDatabase>(defaults_.database());

  public:
    ProcessState process;
    RecordingSink sink;
    std::shared_ptr<cls_Kova_Drawer_Man> component;
    Connection sinkConnection;
};

} // namespace kova::test
