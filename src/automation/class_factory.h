#pragma once
#include "automation/component_object.h"

#include <functional>
#include <memory>
#include <vector>

namespace kova::automation {

/// Makes component objects around the components that `make` returns. Its references are not counted.
class ClassFactory final : public IClassFactory {
  public:
    explicit ClassFactory(std::function<std::shared_ptr<cls_Kova_Drawer_Man>()> make)
        : make_(std::move(make)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** made) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

  private:
    std::function<std::shared_ptr<cls_Kova_Drawer_Man>()> make_;
    std::vector<std::unique_ptr<HeldByHost>> locks_;
};

} // namespace kova::automation
