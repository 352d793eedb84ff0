#pragma once
#include "com/com_headers.h"

#include <atomic>

namespace kova::com {

/// An automation object that tells nothing of its types. It begins with one reference and deletes itself with
/// the last.
class DispatchObject : public IDispatch {
  public:
    DispatchObject() = default;
    DispatchObject(const DispatchObject&) = delete;
    DispatchObject& operator=(const DispatchObject&) = delete;
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
        if (found == nullptr)
            return E_POINTER;
        *found = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
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

  protected:
    virtual ~DispatchObject() = default;

  private:
    std::atomic<ULONG> references_ = 1;
};

} // namespace kova::com
