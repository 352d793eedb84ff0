#pragma once
#include "com/com_headers.h"

#include <atomic>

namespace kova::com {

/// An object with one interface. It begins with one reference and deletes itself with the last.
template <class Interface>
class CountedObject : public Interface {
  public:
    /// By the interface's identifier, which lasts as long as the program.
    explicit CountedObject(const IID& id) : id_(id) {}
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
        if (found == nullptr)
            return E_POINTER;
        *found = id == IID_IUnknown || id == id_ ? this : nullptr;
        if (*found == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

  protected:
    virtual ~CountedObject() = default;
    const IID& id_;

  private:
    std::atomic<ULONG> references_ = 1;
};

/// An automation object that tells nothing of its types.
class DispatchObject : public CountedObject<IDispatch> {
  public:
    DispatchObject() : CountedObject(IID_IDispatch) {}
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        if (count == nullptr)
            return E_POINTER;
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
};

} // namespace kova::com
