#pragma once
#include "base/connection.h"
#include "com/com_headers.h"
#include "com/com_pointer.h"
#include "component/events.h"

#include <functional>
#include <memory>
#include <vector>

namespace kova::automation {

/// The one connection point of a component: it hands each event to the sinks in the order in which they
/// connected. Its references are those of the component object that it is part of. Sinks come and go on the
/// component's own thread alone; other threads get RPC_E_WRONG_THREAD.
class EventSource final : public IConnectionPoint {
  public:
    /// `connect` connects a sink to the component, `owner` outlives this.
    EventSource(IConnectionPointContainer& owner, std::function<Connection(EventSink&)> connect)
        : owner_(owner), connect_(std::move(connect)) {}
    EventSource(const EventSource&) = delete;
    EventSource& operator=(const EventSource&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** container) override;
    /// A sink that answers to the events' own identifier or is a plain dispatch object.
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) override;
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** connections) override;

  private:
    class Sink;
    struct Connected {
        DWORD cookie;
        std::shared_ptr<Sink> sink;
        Connection connection;
    };
    IConnectionPointContainer& owner_;
    std::function<Connection(EventSink&)> connect_;
    std::vector<Connected> connected_;
    DWORD lastCookie_ = 0;
    const DWORD thread_ = GetCurrentThreadId();
};

/// Enumerates the one point. The caller's.
IEnumConnectionPoints* enumerate(IConnectionPoint& point);

} // namespace kova::automation
