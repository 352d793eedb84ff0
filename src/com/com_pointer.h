#pragma once
#include "com/com_headers.h"

#include <utility>

namespace kova::com {

/// Shares one object of Windows' component model.
template <class Interface>
class Pointer {
  public:
    Pointer() = default;
    /// Adds a reference of its own.
    explicit Pointer(Interface* object) : object_(object) {
        if (object_ != nullptr)
            object_->AddRef();
    }
    Pointer(const Pointer& other) : Pointer(other.object_) {}
    Pointer(Pointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Pointer& operator=(Pointer other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Pointer() {
        if (object_ != nullptr)
            object_->Release();
    }
    /// Takes over the caller's reference.
    static Pointer adopt(Interface* object) {
        Pointer pointer;
        pointer.object_ = object;
        return pointer;
    }

    [[nodiscard]] Interface* get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    /// For a function that hands over a reference; drops the one held.
    Interface** put() {
        *this = Pointer();
        return &object_;
    }
    /// Gives the reference to the caller.
    [[nodiscard]] Interface* release() { return std::exchange(object_, nullptr); }

  private:
    Interface* object_ = nullptr;
};

/// The object's other interface; empty when it has none.
template <class Interface>
Pointer<Interface> query(IUnknown* object, const IID& id) {
    Pointer<Interface> found;
    if (object != nullptr)
        object->QueryInterface(id, reinterpret_cast<void**>(found.put()));
    return found;
}

} // namespace kova::com
