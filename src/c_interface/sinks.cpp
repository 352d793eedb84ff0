// The component's events as calls of a host's functions.
#include "c_interface/held_component.h"
#include "library/library_process.h"

#include <utility>

namespace kova::c_interface {
namespace {

/// Keeps itself while a handler of it runs, which may disconnect it.
class Sink final : public EventSink, public std::enable_shared_from_this<Sink> {
  public:
    explicit Sink(const kova_handlers& handlers) : handlers_(handlers) {}
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    ~Sink() override {
        if (handlers_.released != nullptr)
            onHostStack([&] { handlers_.released(handlers_.user); });
    }
    void connectTo(cls_Kova_Drawer_Man& component) { connection_ = component.connect(*this); }
    void disconnect() { connection_.disconnect(); }

    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override {
        const LentText currency(Valuta), text(note);
        std::int32_t incoming = isIncasso ? 1 : 0;
        const std::int32_t failure =
            deliver(handlers_.SalvaPagamento, &idpagamento, &importo, currency.handle(), text.handle(),
                    &cassetto, &tipoIncasso, &incoming);
        isIncasso = incoming != 0;
        throwOn(failure);
    }
    void Stampa(std::string& DataOperazione) override {
        throwOn(deliver(handlers_.Stampa, LentText(DataOperazione).handle()));
    }
    void Anteprima(std::string& DataOperazione) override {
        throwOn(deliver(handlers_.Anteprima, LentText(DataOperazione).handle()));
    }
    void ApriCassetto() override { throwOn(deliver(handlers_.ApriCassetto)); }

  private:
    template <class Handler, class... Arguments>
    std::int32_t deliver(Handler handler, Arguments... arguments) {
        const auto self = shared_from_this();
        setWordsOfFailure({});
        std::int32_t failure = 0;
        if (handler != nullptr)
            onHostStack([&] { failure = handler(handlers_.user, arguments...); });
        return failure;
    }

    static void throwOn(std::int32_t failure) {
        if (failure == 0)
            return;
        std::string words = takeWordsOfFailure();
        throw Error(failure, words.empty() ? "The event handler failed" : words);
    }

    const kova_handlers handlers_;
    Connection connection_;
};

Handles<kova_sink, Sink>& sinks() {
    static auto* const all = new Handles<kova_sink, Sink>;
    return *all;
}

} // namespace
} // namespace kova::c_interface

using namespace kova::c_interface;

kova_status kova_connect(kova_component component, const kova_handlers* handlers, kova_sink* sink) {
    return guarded([&] {
        auto& result = wanted(sink);
        if (handlers == nullptr || handlers->size < sizeof(kova_handlers))
            refuseArgument("Handlers are null, or their size is not that of kova_handlers");
        const auto kept = held(component, "kova_connect");
        auto connected = std::make_shared<Sink>(*handlers);
        connected->connectTo(kept->component());
        result = sinks().add(std::move(connected));
    });
}

kova_status kova_disconnect(kova_sink sink) {
    return guarded([&] {
        const auto disconnected = sinks().remove(sink);
        if (!disconnected)
            throw Refusal(KOVA_INVALID_HANDLE, "Not a sink");
        disconnected->disconnect();
    });
}
