#pragma once
#include <memory>
#include <utility>

namespace kova {

enum class CallKind {
    Operation,
    Opening, ///< makes or shows what needs the screen, which must still be there
    Event    ///< a request to the host, which also the dialog raises
};

/// Admits and counts the calls that a host makes. They are not made at the same time, but one inside another:
/// a host that handles an event calls the component again.
class HostCalls {
  public:
    virtual ~HostCalls() = default;
    /// Throws Error, and counts nothing, when the call may not be made, for instance because it comes from
    /// another thread than the user interface's. May be called on any thread.
    virtual void enter(CallKind kind) = 0;
    virtual void leave(CallKind kind) noexcept = 0;
};

/// One admitted call, for as long as it runs.
class HostCall {
  public:
    /// `kept` lives as long as the call, whatever the host releases meanwhile; null `calls` admit everything.
    HostCall(std::shared_ptr<const void> kept, HostCalls* calls, CallKind kind)
        : kept_(std::move(kept)), calls_(calls), kind_(kind) {
        if (calls_ != nullptr)
            calls_->enter(kind_);
    }
    HostCall(const HostCall&) = delete;
    HostCall& operator=(const HostCall&) = delete;
    ~HostCall() {
        if (calls_ != nullptr)
            calls_->leave(kind_);
    }

  private:
    std::shared_ptr<const void> kept_;
    HostCalls* calls_;
    CallKind kind_;
};

} // namespace kova
