#include "automation/event_source.h"

#include "automation/failure.h"
#include "automation/server_module.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"
#include "kova_drawer_man_automation.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace kova::automation {
namespace {

/// A BSTR that a sink may replace.
class Text {
  public:
    explicit Text(std::string& text) : text_(text), before_(com::wide(text)), bstr_(com::makeBstr(before_)) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(bstr_); }
    BSTR* reference() { return &bstr_; }
    void takeBack() {
        if (std::wstring_view(bstr_, SysStringLen(bstr_)) != before_)
            text_ = com::narrow(bstr_);
    }

  private:
    std::string& text_;
    const std::wstring before_;
    BSTR bstr_;
};

template <class Value>
VARIANT reference(VARTYPE type, Value* value) {
    VARIANT argument;
    VariantInit(&argument);
    argument.vt = static_cast<VARTYPE>(type | VT_BYREF);
    argument.byref = value;
    return argument;
}

/// A list of what is connected, or of the one point, as it was when it was asked for.
template <class Enumeration, class Item, class Given>
class Enumerator final : public com::CountedObject<Enumeration> {
  public:
    Enumerator(const IID& id, std::vector<Item> items, std::size_t next = 0)
        : com::CountedObject<Enumeration>(id), items_(std::move(items)), next_(next) {}
    HRESULT STDMETHODCALLTYPE Next(ULONG count, Given* given, ULONG* fetched) override {
        if (given == nullptr || (fetched == nullptr && count != 1))
            return E_POINTER;
        ULONG done = 0;
        for (; done < count && next_ < items_.size(); ++done, ++next_)
            items_[next_].give(given[done]);
        if (fetched != nullptr)
            *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool enough = count <= items_.size() - next_;
        next_ = enough ? next_ + count : items_.size();
        return enough ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(Enumeration** copy) override {
        if (copy == nullptr)
            return E_POINTER;
        *copy = nullptr;
        return outcomeOf([&] { *copy = new Enumerator(this->id_, items_, next_); }).code;
    }

  private:
    const HeldByHost held_;
    std::vector<Item> items_;
    std::size_t next_;
};

struct ConnectedSink {
    DWORD cookie;
    com::Pointer<IUnknown> sink;
    void give(CONNECTDATA& given) const {
        given = {sink.get(), cookie};
        given.pUnk->AddRef();
    }
};

struct Point {
    com::Pointer<IConnectionPoint> point;
    void give(IConnectionPoint*& given) const {
        given = point.get();
        given->AddRef();
    }
};

} // namespace

/// Hands the component's events to one dispatch object. It keeps itself while one is under way, since the
/// host may disconnect it then.
class EventSource::Sink final : public EventSink, public std::enable_shared_from_this<Sink> {
  public:
    explicit Sink(com::Pointer<IDispatch> target) : target_(std::move(target)) {}
    [[nodiscard]] IDispatch* target() const { return target_.get(); }

    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override {
        Text currency(Valuta), text(note);
        VARIANT_BOOL incoming = isIncasso ? VARIANT_TRUE : VARIANT_FALSE;
        std::array arguments{reference(VT_BOOL, &incoming),
                             reference(VT_I4, &tipoIncasso),
                             reference(VT_I2, &cassetto),
                             reference(VT_BSTR, text.reference()),
                             reference(VT_BSTR, currency.reference()),
                             reference(VT_R8, &importo),
                             reference(VT_I4, &idpagamento)};
        // What a failing handler wrote counts as well: it has the component's own values.
        const Outcome outcome = raise(1, arguments);
        currency.takeBack();
        text.takeBack();
        isIncasso = incoming != VARIANT_FALSE;
        throwOn(outcome);
    }
    void Stampa(std::string& DataOperazione) override { raiseText(2, DataOperazione); }
    void Anteprima(std::string& DataOperazione) override { raiseText(3, DataOperazione); }
    void ApriCassetto() override { throwOn(raise(4, {})); }

  private:
    void raiseText(DISPID id, std::string& text) {
        Text day(text);
        std::array arguments{reference(VT_BSTR, day.reference())};
        const Outcome outcome = raise(id, arguments);
        day.takeBack();
        throwOn(outcome);
    }

    /// Arguments from the last to the first.
    Outcome raise(DISPID id, std::span<VARIANT> arguments) {
        const auto self = shared_from_this();
        DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        com::Value result;
        EXCEPINFO details{};
        UINT wrong = 0;
        const HRESULT code = target_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                             &result, &details, &wrong);
        if (SUCCEEDED(code) || code == DISP_E_MEMBERNOTFOUND) // a sink need not handle every event
            return {};
        if (code != DISP_E_EXCEPTION)
            return {code, {}, "The event handler failed"};
        if (details.pfnDeferredFillIn != nullptr)
            details.pfnDeferredFillIn(&details);
        Outcome outcome{details.scode, com::narrow(details.bstrSource), com::narrow(details.bstrDescription)};
        if (SUCCEEDED(outcome.code)) // numbered by the old languages' own count
            outcome.code = static_cast<HRESULT>(0x800A0000 | details.wCode);
        SysFreeString(details.bstrSource);
        SysFreeString(details.bstrDescription);
        SysFreeString(details.bstrHelpFile);
        return outcome;
    }

    static void throwOn(const Outcome& outcome) {
        if (FAILED(outcome.code))
            throw Failure(outcome.code, outcome.source, outcome.description);
    }

    com::Pointer<IDispatch> target_;
};

HRESULT EventSource::QueryInterface(REFIID id, void** found) {
    if (found == nullptr)
        return E_POINTER;
    *found = id == IID_IUnknown || id == IID_IConnectionPoint ? this : nullptr;
    if (*found == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

HRESULT EventSource::GetConnectionInterface(IID* id) {
    if (id == nullptr)
        return E_POINTER;
    *id = DIID___cls_Kova_Drawer_Man;
    return S_OK;
}

HRESULT EventSource::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr)
        return E_POINTER;
    owner_.AddRef();
    *container = &owner_;
    return S_OK;
}

HRESULT EventSource::Advise(IUnknown* sink, DWORD* cookie) {
    if (GetCurrentThreadId() != thread_)
        return RPC_E_WRONG_THREAD;
    if (sink == nullptr || cookie == nullptr)
        return E_POINTER;
    *cookie = 0;
    auto target = com::query<IDispatch>(sink, DIID___cls_Kova_Drawer_Man);
    if (!target)
        target = com::query<IDispatch>(sink, IID_IDispatch);
    if (!target)
        return CONNECT_E_CANNOTCONNECT;
    return outcomeOf([&] {
               const auto connected = std::make_shared<Sink>(std::move(target));
               connected_.push_back({lastCookie_ + 1, connected, connect_(*connected)});
               *cookie = ++lastCookie_;
           })
        .code;
}

HRESULT EventSource::Unadvise(DWORD cookie) {
    if (GetCurrentThreadId() != thread_)
        return RPC_E_WRONG_THREAD;
    const auto found = std::ranges::find(connected_, cookie, &Connected::cookie);
    if (found == connected_.end())
        return CONNECT_E_NOCONNECTION;
    const Connected leaving = std::move(*found); // whose release may call back
    connected_.erase(found);
    return S_OK;
}

HRESULT EventSource::EnumConnections(IEnumConnections** connections) {
    if (GetCurrentThreadId() != thread_)
        return RPC_E_WRONG_THREAD;
    if (connections == nullptr)
        return E_POINTER;
    *connections = nullptr;
    return outcomeOf([&] {
               std::vector<ConnectedSink> sinks;
               for (const auto& one : connected_)
                   sinks.push_back({one.cookie, com::Pointer<IUnknown>(one.sink->target())});
               *connections = new Enumerator<IEnumConnections, ConnectedSink, CONNECTDATA>(
                   IID_IEnumConnections, std::move(sinks));
           })
        .code;
}

IEnumConnectionPoints* enumerate(IConnectionPoint& point) {
    return new Enumerator<IEnumConnectionPoints, Point, IConnectionPoint*>(
        IID_IEnumConnectionPoints, {Point{com::Pointer<IConnectionPoint>(&point)}});
}

} // namespace kova::automation
