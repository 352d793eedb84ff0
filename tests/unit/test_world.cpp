#include "test_world.h"

#include "player/script_database.h"

namespace kova::test {

void ScriptedDatabase::table(const std::string& piece, std::vector<std::string> columns,
                             std::vector<std::vector<Value>> rows) {
    auto snapshot = std::make_shared<Snapshot>();
    for (auto& column : columns)
        snapshot->addColumn(std::move(column));
    for (const auto& row : rows) {
        for (const auto& cell : row)
            snapshot->add(cell);
        snapshot->endRow();
    }
    std::erase_if(tables_, [&](const auto& known) { return known.first == piece; });
    tables_.emplace_back(piece, std::move(snapshot));
}

void ScriptedDatabase::setting(const std::string& key, const Value& value) {
    table("'" + key + "'", {"descrizione", "valore"}, {{std::string_view(key), value}});
}

Recordset ScriptedDatabase::query(const Query& query) {
    texts.push_back(query.text);
    std::shared_ptr<BreakingSnapshot> broken;
    for (const auto& failure : failures) {
        if (query.text.find(failure.piece) == std::string::npos)
            continue;
        const DatabaseError error(DatabaseError::CommandFailed, "injected", "42000");
        if (!failure.afterRows)
            throw error;
        broken = std::make_shared<BreakingSnapshot>(*failure.afterRows, error);
    }
    for (const auto& [piece, snapshot] : tables_) {
        if (query.text.find(piece) == std::string::npos)
            continue;
        if (!broken)
            return Recordset(snapshot);
        broken->copy(Recordset(snapshot));
        return Recordset(std::move(broken));
    }
    return Recordset(std::make_shared<Snapshot>());
}

namespace {

void failIf(bool wanted, const char* reason) {
    if (wanted)
        throw Error(5, reason);
}

class RecordingLogger final : public ErrorLogger {
  public:
    explicit RecordingLogger(World& world) : world_(world) {}
    void SetApplicationName(const std::string& name) override { world_.logApplication = name; }
    void SetLogFile(const std::string& path) override { world_.logFile = path; }
    void LogError(const std::string& procedure, const std::string& message, const char*, std::int32_t,
                  const std::string&) override {
        if (world_.faults.log > 0 && world_.faults.log-- > 0)
            throw std::runtime_error("no log");
        world_.log.push_back({procedure, message});
    }

  private:
    World& world_;
};

} // namespace

class World::FaultyLoop final : public EventLoop {
  public:
    explicit FaultyLoop(World& world) : world_(world) {}
    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
        failIf(world_.faults.startTimer, "no timer");
        return world_.loop.startTimer(interval, std::move(tick));
    }
    void stopTimer(TimerId id) override { world_.loop.stopTimer(id); }
    void processPendingEvents() override { world_.loop.processPendingEvents(); }

  private:
    World& world_;
};

class World::FaultyInterface final : public UserInterface {
  public:
    explicit FaultyInterface(World& world) : world_(world) {}
    std::unique_ptr<WindowView> present(Window& window) override {
        failIf(world_.faults.present, "no window");
        if (world_.onPresent)
            world_.onPresent(window);
        return std::make_unique<View>(world_.views);
    }
    void runModal(Window& window) override {
        failIf(world_.faults.runModal, "no loop");
        world_.passModal(window);
    }
    MessageAnswer messageBox(const PlatformMessage& message) override {
        failIf(world_.faults.messageBox, "no box");
        world_.messages.push_back("!" + message.text);
        if (world_.insideBox)
            world_.insideBox();
        return (message.buttons & PlatformMessage::YesNo) != 0 ? MessageAnswer::Yes : MessageAnswer::Ok;
    }
    void setLanguage(std::int32_t) override {}

  private:
    struct View final : WindowView {
        explicit View(int& count) : open(++count) {}
        View(const View&) = delete;
        View& operator=(const View&) = delete;
        ~View() override { --open; }
        int& open;
    };
    World& world_;
};

std::shared_ptr<DatabaseConnection> World::Provider::open(const std::string& text) {
    if (world.openDatabase)
        return world.openDatabase(text);
    if (text == "bad")
        throw DatabaseError(DatabaseError::Unspecified, "cannot open", "08001");
    return world.database_;
}

World::World()
    : faultyLoop_(std::make_unique<FaultyLoop>(*this)),
      userInterface_(std::make_unique<FaultyInterface>(*this)),
      process(platform(*userInterface_, *faultyLoop_)) {
    open();
}

World::World(UserInterface& userInterface, EventLoop& events) : process(platform(userInterface, events)) {
    open();
}

Platform World::platform(UserInterface& userInterface, EventLoop& events) {
    return {userInterface, events,    clock,    runtime,
            store,         provider_, regional, [this] { return std::make_unique<RecordingLogger>(*this); },
            "/opt/kova"};
}

void World::passModal(Window& window) {
    const bool message = window.name() == "frmMsgBox";
    if (message)
        messages.push_back(as<Label>(window.find("lblMessaggio")).caption());
    if (insideModal)
        insideModal(window);
    if (faults.leaveModal)
        return;
    if (window.visible() && message)
        as<PushButton>(window.find("cmd1")).press();
    else if (window.visible())
        window.requestClose();
}

/// A component, and a database with catalogues.
void World::open() {
    using namespace std::chrono;
    clock.time = local_days(2026y / November / 16) + 10h;
    const auto n = [](std::int64_t number) { return Value(number); };
    auto& db = database();
    db.table("where visible", {"id", "Description", "idTypeRow"},
             {{n(1), "Fondo cassa", n(1)}, {n(2), "Prelievo", n(4)}, {n(3), "Versamento", n(2)}});
    const std::vector<std::string> flags{"description", "coefficient", "IsAutomaticNote", "isOpenECRDrawer"};
    db.table("WHERE id = 1", flags, {{"Fondo cassa", n(1), n(1), n(0)}});
    db.table("WHERE id = 2", flags, {{"Prelievo", n(-1), n(0), n(1)}});
    db.table("WHERE id = 3", flags, {{"Versamento", n(1), n(0), n(0)}});
    db.table("FROM tabPagamenti", {"idpagamento", "TipoPagamento", "IdTipoPagamento", "Valuta"},
             {{n(1), "Contanti", n(1), "€"}, {n(2), "Carta", n(2), "€"}, {n(3), "Franchi", n(1), "CHF"}});
    db.table("tabValute", {"Valuta"}, {{"€"}});
    db.setting("idCassettoCausPred_Prelievi", n(2));
    db.setting("idCassettoCausPred_Versamenti", n(3));
    component = ComponentState::createComponent(process);
    sinkConnection = component->connect(sink);
}

void World::connect() {
    component->Inizializza(database_);
    log.clear();
    database_->texts.clear();
}

void World::countCoins(const std::function<void()>& then) {
    insideModal = [&](Window& window) {
        if (window.name() == "frm_CaricaMoneta")
            then();
    };
    control<PushButton>("CMD_CaricaMoneta").press();
    insideModal = {};
}

void World::composeMovement() {
    control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
    wait(50);
    control<TextBox>("txtVisore").paste("12,5");
    control<TextBox>("txtNote").paste("RESTO");
}

} // namespace kova::test
