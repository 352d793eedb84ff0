// A day's calls and events of a busy till: they leave nothing behind and, where an argument asks for it, take
// at most one and a half times as long as through the least that such an object can be.
#include "com/com_headers.h"
#include "library/process_windows.h"

#include <initguid.h> // defines the header's identifiers

#include "component_windows.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using namespace kova::test;

/// The property by the type library's own invocation, the event by a loop over the sinks.
class Bare final : public kova::com::DispatchObject {
  public:
    explicit Bare(IDispatch* sink) {
        Pointer<ITypeLib> library;
        LoadRegTypeLib(LIBID_Kova_Drawer_Man, 4, 10, 0, library.put());
        library->GetTypeInfoOfGuid(IID__cls_Kova_Drawer_Man, info_.put());
        sinks_.emplace(1, sink);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO* details, UINT* wrong) override {
        return info_->Invoke(&table_, id, kind, given, result, details, wrong);
    }
    void raise(Movement& movement) {
        const auto sinks = sinks_; // which may change meanwhile
        Movement own(movement.currency, movement.note);
        auto arguments = own.references();
        for (const auto& [cookie, sink] : sinks) {
            DISPPARAMS parameters{arguments.data(), nullptr, 7, 0};
            kova::com::Value result;
            EXCEPINFO details{};
            UINT wrong = 0;
            sink->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, &details,
                         &wrong);
        }
    }

  private:
    static HRESULT STDMETHODCALLTYPE idCassa(void*, LONG* result) { return *result = 7, S_OK; }
    Pointer<ITypeInfo> info_;
    std::map<DWORD, Pointer<IDispatch>> sinks_;
    void* entries_[39] = {}; ///< of the interface, of which one is called
    void** table_ = (entries_[18] = reinterpret_cast<void*>(idCassa), entries_);
};

using Call = std::function<bool()>;
constexpr int Blocks = 101;

/// Microseconds of a call, in blocks that take turns.
std::pair<double, double> medians(int calls, const Call& ours, const Call& bare) {
    std::pair<std::vector<double>, std::vector<double>> times;
    const auto block = [&](const Call& call, std::vector<double>& into) {
        const auto start = std::chrono::steady_clock::now();
        bool right = true;
        for (int i = 0; i < calls; ++i)
            right = call() && right;
        const std::chrono::duration<double, std::micro> taken = std::chrono::steady_clock::now() - start;
        into.push_back(right ? taken.count() / calls : 1e9);
    };
    for (int i = 0; i < Blocks; ++i) {
        block(ours, times.first);
        block(bare, times.second);
    }
    for (auto* const all : {&times.first, &times.second})
        std::ranges::nth_element(*all, all->begin() + Blocks / 2);
    return {times.first[Blocks / 2], times.second[Blocks / 2]};
}

constexpr double Most = 1.5; ///< times the bare object's
int failures = 0;

/// Of all heaps, with every text and object that lives.
std::size_t heapBlocks() {
    std::array<HANDLE, 64> heaps{};
    std::size_t count = 0;
    for (DWORD i = GetProcessHeaps(heaps.size(), heaps.data()); i-- > 0;)
        for (PROCESS_HEAP_ENTRY entry{}; HeapWalk(heaps[i], &entry) != FALSE;)
            count += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? 1 : 0;
    return count;
}

void compare(const char* what, int calls, const Call& ours, const Call& bare, bool timed) {
    auto before = resources();
    before["heap blocks"] = heapBlocks();
    const auto [time, least] = medians(calls, ours, bare);
    std::fprintf(stderr, "%s: %.3f us, at least %.3f us, %.2f times\n", what, time, least, time / least);
    failures += timed && time > Most * least;
    auto after = resources();
    after["heap blocks"] = heapBlocks();
    for (const auto& [name, count] : after) {
        std::fprintf(stderr, "  %s %zu, before %zu\n", name.c_str(), count, before.at(name));
        failures += count > before.at(name) + 20;
    }
}

} // namespace

int main(int count, char**) {
    const bool timed = count > 1; // a library that was built for its debugger takes longer
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Pointer<_cls_Kova_Drawer_Man> drawer;
    CoCreateInstance(CLSID_cls_Kova_Drawer_Man, nullptr, CLSCTX_INPROC_SERVER, IID__cls_Kova_Drawer_Man,
                     reinterpret_cast<void**>(drawer.put()));
    if (!drawer) {
        std::fprintf(stderr, "the class cannot be created\n");
        return 1;
    }
    const auto sink = Pointer<IDispatch>::adopt(new Sink([](DISPID id, VARIANT* arguments, EXCEPINFO&) {
        *arguments[0].pboolVal = VARIANT_TRUE;
        return *arguments[6].plVal = id, S_OK;
    }));
    connect(drawer.get(), sink.get());
    LONG seven = 7;
    drawer->put_idCassa(&seven);
    const auto bare = Pointer<Bare>::adopt(new Bare(sink.get()));
    const auto read = [](IDispatch* object) {
        DISPPARAMS none{};
        VARIANT result;
        VariantInit(&result);
        return SUCCEEDED(object->Invoke(9, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                        &result, nullptr, nullptr)) &&
               result.vt == VT_I4 && result.lVal == 7;
    };
    Movement movement(L"EUR", L"change");
    const auto raise = [&] { return SUCCEEDED(movement.raise(drawer.get())); };
    for (int i = 0; i < 1000; ++i) // what the first calls make for good
        raise(), bare->raise(movement), read(drawer.get()), read(bare.get());
    compare(
        "reads", 1000, [&] { return read(drawer.get()); }, [&] { return read(bare.get()); }, timed);
    compare(
        "events", 100, raise, [&] { return bare->raise(movement), true; }, timed);
    const auto references = [](IUnknown* object) { return object->AddRef(), object->Release(); };
    std::printf("failures %d, references %lu of the component, %lu of the sink\n", failures,
                references(drawer.get()), references(sink.get()));
    return failures;
}
