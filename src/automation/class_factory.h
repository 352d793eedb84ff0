#pragma once
#include "automation/component_object.h"

#include <atomic>
#include <functional>
#include <memory>

namespace kova::automation {

/// Makes component objects around the components that `make` returns. It lives as long as the module or its
/// owner; references to it and locks keep the module. Any thread may call it.
class ClassFactory final : public IClassFactory {
  public:
    explicit ClassFactory(std::function<std::shared_ptr<cls_Kova_Drawer_Man>()> make)
        : make_(std::move(make)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override;
    ULONG STDMETHODCALLTYPE AddRef() override {
        HeldByHost::count(1);
        return 2;
    }
    ULONG STDMETHODCALLTYPE Release() override {
        HeldByHost::count(-1);
        return 1;
    }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** made) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

  private:
    std::function<std::shared_ptr<cls_Kova_Drawer_Man>()> make_;
    std::atomic<long> locks_ = 0;
};

} // namespace kova::automation
