// A host that calls as no compiler and no script lets it:
//
//   raw_host FILE    makes the calls of a file, says what came of each, and goes on with calls of its own
#include "com/com_headers.h"
#include "kova-script-host/fingers.h"

#include <initguid.h> // defines the header's identifiers

#include "component_windows.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <list>
#include <optional>
#include <sstream>

namespace {

using namespace kova::test;
using kova::com::Value;
using Drawer = Pointer<_cls_Kova_Drawer_Man>;

Drawer create() {
    Drawer drawer;
    CoCreateInstance(CLSID_cls_Kova_Drawer_Man, nullptr, CLSCTX_INPROC_SERVER, IID__cls_Kova_Drawer_Man,
                     reinterpret_cast<void**>(drawer.put()));
    return drawer;
}

/// One argument as a file has it: [NAME=][@][TYPE[:VALUE]], the type in hexadecimal digits. A reference
/// without a value refers to nothing; @ is a reference to a VARIANT, to the argument itself when nothing
/// follows.
struct Argument {
    explicit Argument(std::string word) {
        if (const auto end = word.find('='); end < word.find(':')) {
            name = std::stoi(word.substr(0, end));
            word.erase(0, end + 1);
        }
        const bool inVariant = word.starts_with("@");
        word.erase(0, inVariant ? 1 : 0);
        const auto colon = word.find(':');
        const auto type = static_cast<VARTYPE>(word.empty() ? 0 : std::stoi(word, nullptr, 16));
        plain = type & ~VT_BYREF;
        if (colon != std::string::npos) {
            Value text(std::string_view(word).substr(colon + 1));
            VariantChangeTypeEx(&variable, &text, LOCALE_INVARIANT, 0, plain);
            where = plain == VT_DECIMAL ? static_cast<void*>(&*variable) : &variable->byref;
        } else if (variable->vt = plain; plain == VT_ERROR)
            variable->scode = DISP_E_PARAMNOTFOUND;
        given = *variable;
        if (type != plain) {
            given.vt = type;
            given.byref = where;
        } else if (!inVariant)
            where = nullptr;
        if (inVariant) {
            holder = given;
            given.vt = VT_BYREF | VT_VARIANT;
            given.pvarVal = word.empty() ? &given : type == plain ? &*variable : &holder;
        }
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    [[nodiscard]] std::string text() {
        Value shown;
        if (plain == VT_DECIMAL)
            variable->vt = plain; // it has no room in a variable of its own
        VariantChangeTypeEx(&shown, &variable, LOCALE_INVARIANT, 0, VT_BSTR);
        return " " + std::to_string(variable->vt) + ":" + kova::com::narrow(shown->bstrVal);
    }
    Value variable;
    VARIANT holder{}, given{};
    VARTYPE plain = 0;
    void* where = nullptr; ///< a value that the call may change
    std::optional<DISPID> name;
};

/// A line of ID KIND ARGUMENT..., the arguments as they are declared, named ones last.
void call(_cls_Kova_Drawer_Man* drawer, const std::string& line) {
    std::istringstream words(line);
    DISPID id = 0;
    WORD kind = 0;
    std::list<Argument> arguments;
    std::vector<VARIANT> given;
    std::vector<DISPID> names;
    words >> id >> kind;
    for (std::string word; words >> word;)
        arguments.emplace_front(word);
    for (const Argument& argument : arguments) {
        given.push_back(argument.given);
        if (argument.name)
            names.push_back(*argument.name);
    }
    DISPPARAMS parameters{given.data(), names.data(), static_cast<UINT>(given.size()),
                          static_cast<UINT>(names.size())};
    EXCEPINFO details{};
    UINT wrong = 99;
    Value result;
    const HRESULT code =
        drawer->Invoke(id, IID_NULL, LOCALE_INVARIANT, kind, &parameters, &result, &details, &wrong);
    std::printf("%s -> %lx of %u", line.c_str(), static_cast<unsigned long>(code), wrong);
    for (Argument& argument : arguments)
        if (argument.where != nullptr)
            std::printf("%s", argument.text().c_str());
    if (Value text;
        result->vt != VT_EMPTY && SUCCEEDED(VariantChangeType(&text, &result, VARIANT_ALPHABOOL, VT_BSTR)))
        std::printf(" = %s", kova::com::narrow(text->bstrVal).c_str());
    std::printf("\n");
}

void playCalls(const char* file) {
    const Drawer drawer = create();
    connect(drawer.get(),
            [](DISPID id, VARIANT* arguments, EXCEPINFO&) { return answer(id, arguments), S_OK; });
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
        call(drawer.get(), line);
}

void say(const char* what, const std::vector<HRESULT>& codes) {
    std::printf("%s:", what);
    for (const HRESULT code : codes)
        std::printf(" %lx", static_cast<unsigned long>(code));
    std::printf("\n");
}

/// Calls every function of an interface with nothing in it, and says what each returns.
void callWithNothing(const char* what, IUnknown* object, std::size_t functions) {
    using Function = HRESULT(STDMETHODCALLTYPE*)(IUnknown*, const void*, const void*, void*, void*, void*,
                                                 void*, void*, void*);
    std::vector<HRESULT> codes;
    const bool isDispatch = functions > 30;
    for (std::size_t i = 0; i < functions; i = i == 0 ? 3 : i + 1) { // without those that count references
        const auto function = (*reinterpret_cast<Function* const*>(object))[i];
        codes.push_back(function(object, isDispatch && i == 5 ? &IID_NULL : nullptr,
                                 isDispatch && i == 6 ? &IID_NULL : nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr, nullptr));
    }
    say(what, codes);
}

/// Null pointers wherever there is one to pass, also on a thread where nothing may be called.
void passNothing() {
    const Drawer drawer = create();
    const auto point = eventsOf(drawer.get());
    const auto container = query<IConnectionPointContainer>(drawer.get(), IID_IConnectionPointContainer);
    const auto types = query<IProvideClassInfo2>(drawer.get(), IID_IProvideClassInfo2);
    Pointer<IClassFactory> factory;
    CoGetClassObject(CLSID_cls_Kova_Drawer_Man, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                     reinterpret_cast<void**>(factory.put()));
    Pointer<IEnumConnections> all;
    point->EnumConnections(all.put());
    const auto everything = [&] {
        callWithNothing("object", drawer.get(), 39);
        callWithNothing("point", point.get(), 8);
        callWithNothing("container", container.get(), 5);
        callWithNothing("types", types.get(), 5);
        callWithNothing("factory", factory.get(), 5);
        callWithNothing("list", all.get(), 7);
    };
    everything();
    std::thread(everything).join();
    DISPID put = DISPID_PROPERTYPUT;
    Value value(1);
    const auto invoke = [&](DISPID id, WORD kind, DISPPARAMS given) {
        return drawer->Invoke(id, IID_NULL, 0, kind, &given, nullptr, nullptr, nullptr);
    };
    connect(drawer.get(), [](auto&&...) { return E_ACCESSDENIED; });
    say("little",
        {invoke(9, DISPATCH_PROPERTYPUT, {}), invoke(9, DISPATCH_PROPERTYPUT, {nullptr, nullptr, 1, 0}),
         invoke(9, DISPATCH_PROPERTYPUT, {&value, nullptr, 1, 1}),
         invoke(9, DISPATCH_PROPERTYPUT, {nullptr, &put, 0, 1}),
         invoke(9, DISPATCH_PROPERTYPUT, {&value, &put, 1, 1}), invoke(9, DISPATCH_PROPERTYGET, {}),
         invoke(16, DISPATCH_METHOD, {}), drawer->ApriCassetto()});
}

/// Lists of what is connected: places, copies, references, and that they keep the module.
void enumerate() {
    Drawer drawer = create();
    const auto sink = Pointer<IDispatch>::adopt(new Sink([](auto&&...) { return S_OK; }));
    for (int i = 0; i < 3; ++i)
        connect(drawer.get(), sink.get());
    Pointer<IEnumConnections> all, copy;
    eventsOf(drawer.get())->EnumConnections(all.put());
    const auto next = [](IEnumConnections* list, ULONG count) {
        CONNECTDATA got[4]{};
        ULONG fetched = 9;
        say("next", {list->Next(count, got, &fetched), static_cast<HRESULT>(fetched)});
        for (ULONG i = 0; i < fetched; ++i) {
            std::printf("  %lu\n", got[i].dwCookie);
            got[i].pUnk->Release();
        }
    };
    next(all.get(), 1);
    all->Clone(copy.put());
    next(all.get(), 4);
    next(copy.get(), 1);
    say("reset, skip two", {all->Reset(), all->Skip(2)});
    next(all.get(), 1);
    say("skip none, one", {all->Skip(0), all->Skip(1)});
    Pointer<IEnumConnectionPoints> points, others;
    query<IConnectionPointContainer>(drawer.get(), IID_IConnectionPointContainer)
        ->EnumConnectionPoints(points.put());
    points->Clone(others.put());
    Pointer<IConnectionPoint> one, none;
    say("points", {points->Next(1, one.put(), nullptr), points->Next(1, none.put(), nullptr),
                   others->Next(1, none.put(), nullptr), one.get() == none.get()});
    const auto references = [](IUnknown* object) {
        return object->AddRef(), static_cast<HRESULT>(object->Release());
    };
    say("references", {references(drawer.get()), references(sink.get())});
    points = others = {};
    one = none = {};
    say("fewer references", {references(drawer.get())});
    drawer = {};
    say("lists keep the module", {!letGo()});
    all = copy = {};
    say("nothing does, references", {letGo(), references(sink.get())});
}

} // namespace

int main(int count, char** arguments) {
    endWithCrashes();
    _wputenv_s(L"KOVA_LOG", L"NUL"); // refusals are records of it
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (count > 1)
        playCalls(arguments[1]);
    passNothing();
    enumerate();
    CoUninitialize();
}
