// A host that calls as no compiler and no script lets it:
//
//   raw_host calls FILE    the calls of a file, and what came of each
//   raw_host PART          what the part's name says
#include "../library/process_windows.h"
#include "com/com_headers.h"

#include <initguid.h> // defines the header's identifiers

#include "component_windows.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <list>
#include <sstream>

namespace {

using namespace kova::test;
using kova::com::Value;
using Drawer = Pointer<_cls_Kova_Drawer_Man>;

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds)
        return;
    std::printf("does not hold: %s\n", what);
    ++failures;
}

Drawer create() {
    Drawer drawer;
    CoCreateInstance(CLSID_cls_Kova_Drawer_Man, nullptr, CLSCTX_INPROC_SERVER, IID__cls_Kova_Drawer_Man,
                     reinterpret_cast<void**>(drawer.put()));
    return drawer;
}

/// One argument as a file has it: [NAME=][v&]TYPE[&][:VALUE]. References without a value refer to nothing.
struct Argument {
    explicit Argument(std::string word) {
        if (const auto end = word.find('='); end < word.find(':')) {
            name = std::stoi(word.substr(0, end));
            named = true;
            word.erase(0, end + 1);
        }
        const bool inVariant = word.starts_with("v&");
        word.erase(0, inVariant ? 2 : 0);
        const auto colon = std::min(word.find(':'), word.size());
        std::string type = word.substr(0, colon);
        const bool isReference = type.ends_with('&'), hasValue = colon < word.size();
        if (isReference)
            type.pop_back();
        given = VARIANT{};
        if (hasValue) {
            Value text(std::string_view(word).substr(colon + 1));
            VariantChangeTypeEx(&variable, &text, LOCALE_INVARIANT, 0, Types.at(type));
        } else if (!type.empty())
            variable->vt = Types.at(type);
        if (type == "missing")
            variable->scode = DISP_E_PARAMNOTFOUND;
        given = *variable;
        if (isReference) {
            given.vt |= VT_BYREF;
            given.byref = !hasValue           ? nullptr
                          : type == "decimal" ? static_cast<void*>(&*variable)
                                              : &variable->byref;
        }
        isOut = isReference && hasValue;
        if (inVariant) {
            holder = given;
            given.vt = VT_BYREF | VT_VARIANT;
            given.pvarVal = type.empty() ? nullptr : isReference ? &holder : &*variable;
            isOut = isOut || (!isReference && !type.empty());
        }
        if (type == "itself")
            given.pvarVal = &given;
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    [[nodiscard]] std::string text() {
        Value shown;
        if (given.vt == (VT_DECIMAL | VT_BYREF))
            variable->vt = VT_DECIMAL; // it has no room in a variable of its own
        VariantChangeTypeEx(&shown, &variable, LOCALE_INVARIANT, 0, VT_BSTR);
        return std::to_string(variable->vt) + ":" + kova::com::narrow(shown->bstrVal);
    }
    Value variable;
    VARIANT holder{}, given;
    DISPID name = 0;
    bool named = false, isOut = false;
    inline static const std::map<std::string, VARTYPE> Types{{"empty", VT_EMPTY},
                                                             {"null", VT_NULL},
                                                             {"i1", VT_I1},
                                                             {"ui1", VT_UI1},
                                                             {"i2", VT_I2},
                                                             {"ui2", VT_UI2},
                                                             {"i4", VT_I4},
                                                             {"ui4", VT_UI4},
                                                             {"int", VT_INT},
                                                             {"uint", VT_UINT},
                                                             {"i8", VT_I8},
                                                             {"ui8", VT_UI8},
                                                             {"r4", VT_R4},
                                                             {"r8", VT_R8},
                                                             {"cy", VT_CY},
                                                             {"date", VT_DATE},
                                                             {"decimal", VT_DECIMAL},
                                                             {"bool", VT_BOOL},
                                                             {"bstr", VT_BSTR},
                                                             {"missing", VT_ERROR},
                                                             {"error", VT_ERROR},
                                                             {"dispatch", VT_DISPATCH},
                                                             {"unknown", VT_UNKNOWN},
                                                             {"record", VT_RECORD},
                                                             {"array", VT_ARRAY | VT_I4},
                                                             {"itself", VT_BYREF | VT_VARIANT},
                                                             {"nonsense", 0x0FFE}};
};

/// A line of ID KIND ARGUMENT..., the arguments as they are declared, named ones last.
void call(_cls_Kova_Drawer_Man* drawer, const std::string& line) {
    const std::map<std::string, WORD> kinds{{"method", DISPATCH_METHOD},
                                            {"get", DISPATCH_PROPERTYGET},
                                            {"put", DISPATCH_PROPERTYPUT},
                                            {"any", 3},
                                            {"none", 0}};
    std::istringstream words(line);
    DISPID id = 0;
    std::string word;
    words >> id >> word;
    const WORD kind = kinds.at(word);
    std::list<Argument> arguments;
    while (words >> word)
        arguments.emplace_back(word);
    std::vector<VARIANT> given;
    std::vector<DISPID> names;
    for (auto i = arguments.rbegin(); i != arguments.rend(); ++i) {
        given.push_back(i->given);
        if (i->named)
            names.push_back(i->name);
    }
    DISPPARAMS parameters{given.data(), names.data(), static_cast<UINT>(given.size()),
                          static_cast<UINT>(names.size())};
    EXCEPINFO details{};
    UINT wrong = 99;
    Value result;
    const HRESULT code =
        drawer->Invoke(id, IID_NULL, LOCALE_INVARIANT, kind, &parameters, &result, &details, &wrong);
    std::printf("%s -> %lx", line.c_str(), static_cast<unsigned long>(code));
    if (wrong != 99 && FAILED(code))
        std::printf(" of %u", wrong);
    if (code == DISP_E_EXCEPTION)
        std::printf(" %lx %s", static_cast<unsigned long>(details.scode),
                    kova::com::narrow(details.bstrDescription).c_str());
    SysFreeString(details.bstrSource);
    SysFreeString(details.bstrDescription);
    for (Argument& argument : arguments)
        if (argument.isOut)
            std::printf(" %s", argument.text().c_str());
    if (Value text;
        SUCCEEDED(VariantChangeType(&text, &result, VARIANT_ALPHABOOL, VT_BSTR)) && result->vt != 0)
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

void tell(const std::string& title, std::initializer_list<std::pair<const char*, HRESULT>> codes) {
    std::printf("%s:", title.c_str());
    for (const auto& [what, code] : codes)
        std::printf(" %s %lx", what, static_cast<unsigned long>(code));
    std::printf("\n");
}

/// Null pointers wherever there is one to pass; each comes back as a code.
void passNothing() {
    const Drawer drawer = create();
    const auto point = eventsOf(drawer.get());
    const auto container = query<IConnectionPointContainer>(drawer.get(), IID_IConnectionPointContainer);
    const auto types = query<IProvideClassInfo2>(drawer.get(), IID_IProvideClassInfo2);
    Pointer<IClassFactory> factory;
    CoGetClassObject(CLSID_cls_Kova_Drawer_Man, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                     reinterpret_cast<void**>(factory.put()));
    Pointer<IEnumConnections> all;
    Pointer<IEnumConnectionPoints> points;
    point->EnumConnections(all.put());
    container->EnumConnectionPoints(points.put());
    LPOLESTR name = const_cast<wchar_t*>(L"idCassa"), nameless = nullptr;
    DISPID id = 0, put = DISPID_PROPERTYPUT;
    DWORD cookie = 7;
    LONG number = 1;
    BSTR text = nullptr;
    Value value(1);
    DISPPARAMS none{}, noValues{nullptr, nullptr, 1, 0}, noNames{&value, nullptr, 1, 1},
        moreNames{nullptr, &put, 0, 1}, write{&value, &put, 1, 1};
    const auto invoke = [&](DISPID member, WORD kind, DISPPARAMS* given) {
        return drawer->Invoke(member, IID_NULL, 0, kind, given, nullptr, nullptr, nullptr);
    };
    tell("no interface",
         {{"object", drawer->QueryInterface(IID_IUnknown, nullptr)},
          {"point", point->QueryInterface(IID_IUnknown, nullptr)},
          {"factory", factory->QueryInterface(IID_IUnknown, nullptr)},
          {"list", all->QueryInterface(IID_IUnknown, nullptr)},
          {"made", factory->CreateInstance(nullptr, IID_IUnknown, nullptr)},
          {"inside", factory->CreateInstance(point.get(), IID_IUnknown, reinterpret_cast<void**>(&text))}});
    tell("no types", {{"count", drawer->GetTypeInfoCount(nullptr)},
                      {"type", drawer->GetTypeInfo(0, 0, nullptr)},
                      {"other", drawer->GetTypeInfo(1, 0, nullptr)},
                      {"class", types->GetClassInfo(nullptr)},
                      {"id", types->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr)}});
    tell("no names", {{"names", drawer->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id)},
                      {"name", drawer->GetIDsOfNames(IID_NULL, &nameless, 1, 0, &id)},
                      {"ids", drawer->GetIDsOfNames(IID_NULL, &name, 1, 0, nullptr)},
                      {"none", drawer->GetIDsOfNames(IID_NULL, &name, 0, 0, &id)},
                      {"reserved", drawer->GetIDsOfNames(IID_IUnknown, &name, 1, 0, &id)}});
    tell("no points", {{"find", container->FindConnectionPoint(DIID___cls_Kova_Drawer_Man, nullptr)},
                       {"list", container->EnumConnectionPoints(nullptr)},
                       {"interface", point->GetConnectionInterface(nullptr)},
                       {"container", point->GetConnectionPointContainer(nullptr)},
                       {"sink", point->Advise(nullptr, &cookie)},
                       {"cookie", point->Advise(drawer.get(), nullptr)},
                       {"unknown", point->Unadvise(cookie)},
                       {"connections", point->EnumConnections(nullptr)},
                       {"next", all->Next(1, nullptr, nullptr)},
                       {"copy", all->Clone(nullptr)},
                       {"copy", points->Clone(nullptr)}});
    tell("no arguments",
         {{"any", invoke(9, DISPATCH_PROPERTYGET, nullptr)},
          {"result", invoke(9, DISPATCH_PROPERTYGET, &none)},
          {"values", invoke(9, DISPATCH_PROPERTYPUT, &noValues)},
          {"names", invoke(9, DISPATCH_PROPERTYPUT, &noNames)},
          {"more names", invoke(9, DISPATCH_PROPERTYPUT, &moreNames)},
          {"wrong", invoke(4, DISPATCH_METHOD, &write)},
          {"reserved", drawer->Invoke(9, IID_IUnknown, 0, 2, &none, nullptr, nullptr, nullptr)}});
    tell("no values", {{"text", drawer->put_ValutaAziendale(&text)},
                       {"in", drawer->put_idCassa(nullptr)},
                       {"out", drawer->get_idCassa(nullptr)},
                       {"text out", drawer->get_ValutaAziendale(nullptr)},
                       {"show", drawer->Show(nullptr, &text)},
                       {"shown", drawer->Show(&number, nullptr)},
                       {"event", drawer->Stampa(nullptr)},
                       {"connection", drawer->Inizializza(nullptr)}});
    connect(drawer.get(), [](DISPID, VARIANT*, EXCEPINFO&) { return E_ACCESSDENIED; });
    tell("failing", {{"late", invoke(16, DISPATCH_METHOD, &none)}, {"early", drawer->ApriCassetto()}});
    std::thread([&] {
        const IID& id_ = IID_IUnknown;
        Pointer<IUnknown> same;
        Pointer<IEnumConnections> list;
        tell("other thread", {{"object", drawer->QueryInterface(id_, reinterpret_cast<void**>(same.put()))},
                              {"early", drawer->put_idCassa(&number)},
                              {"late", invoke(9, DISPATCH_PROPERTYGET, &none)},
                              {"connect", point->Advise(drawer.get(), &cookie)},
                              {"disconnect", point->Unadvise(1)},
                              {"list", point->EnumConnections(list.put())},
                              {"names", drawer->GetIDsOfNames(IID_NULL, &name, 1, 0, &id)}});
    }).join();
    tell("locks", {{"lock", factory->LockServer(TRUE)},
                   {"unlock", factory->LockServer(FALSE)},
                   {"once more", factory->LockServer(FALSE)}});
}

/// Lists of what is connected: places, copies, references, and that they keep the module.
void enumerate() {
    Drawer drawer = create();
    const auto sink = Pointer<IDispatch>::adopt(new Sink([](auto&&...) { return S_OK; }));
    auto point = eventsOf(drawer.get());
    DWORD cookie = 0;
    for (int i = 0; i < 3; ++i)
        point->Advise(sink.get(), &cookie);
    Pointer<IEnumConnections> all, copy;
    point->EnumConnections(all.put());
    const auto next = [](IEnumConnections* list, ULONG count) {
        CONNECTDATA got[4]{};
        ULONG fetched = 9;
        std::printf("next %lu: %lx", count, list->Next(count, got, &fetched));
        for (ULONG i = 0; i < fetched; ++i) {
            std::printf(" %lu", got[i].dwCookie);
            got[i].pUnk->Release();
        }
        std::printf("\n");
    };
    next(all.get(), 1);
    all->Clone(copy.put());
    next(all.get(), 4);
    next(copy.get(), 1);
    tell("skip", {{"reset", all->Reset()}, {"two", all->Skip(2)}});
    next(all.get(), 1);
    tell("skip", {{"none", all->Skip(0)}, {"one", all->Skip(1)}});
    next(all.get(), 0);
    Pointer<IEnumConnectionPoints> points, others;
    query<IConnectionPointContainer>(drawer.get(), IID_IConnectionPointContainer)
        ->EnumConnectionPoints(points.put());
    points->Clone(others.put());
    Pointer<IConnectionPoint> one, none;
    tell("points", {{"one", points->Next(1, one.put(), nullptr)},
                    {"no more", points->Next(1, none.put(), nullptr)},
                    {"of a copy", others->Next(1, none.put(), nullptr)}});
    const auto references = [](IUnknown* object) { return object->AddRef(), object->Release(); };
    std::printf("same point %d, references %lu of the object, %lu of the sink\n", one.get() == none.get(),
                references(drawer.get()), references(sink.get()));
    points = others = {};
    one = none = point = {};
    std::printf("now %lu of the object\n", references(drawer.get()));
    drawer = {};
    std::printf("held by lists %d, ", !letGo());
    all = copy = {};
    std::printf("let go %d, references of the sink %lu\n", letGo(), references(sink.get()));
}

/// A component with an open dialog and a handler; whoever calls this keeps it.
_cls_Kova_Drawer_Man* open(Sink::Handler handler = [](auto&&...) { return S_OK; }) {
    Drawer drawer = create();
    LONG modeless = 0;
    BSTR nothing = nullptr;
    connect(drawer.get(), std::move(handler));
    drawer->Show(&modeless, &nothing);
    SysFreeString(nothing);
    expect(shownWindows(true).size() == 1, "a dialog is open");
    return drawer.release();
}

void expectNothingLeft() {
    expect(letGo() && Sink::living == 0 && shownWindows(true).empty(), "nothing is left");
}

void releaseElsewhere() {
    const Drawer other = create();
    std::thread([drawer = open()] { drawer->Release(); }).join();
    expect(Sink::living == 0, "the handler is released");
    LONG id = 0;
    expect(SUCCEEDED(other->get_idCassa(&id)) && id == -1, "others live on");
}

const std::map<std::string, void (*)()> parts{
    {"nothing", passNothing},
    {"lists", enumerate},
    {"exit-after-release", [] { open()->Release(), expectNothingLeft(); }},
    {"exit-after-release-elsewhere", releaseElsewhere},
    {"exit-by-returning", [] { static const auto drawer = Drawer::adopt(open()); }},
    {"exit-at-once", [] { open(), ExitProcess(static_cast<UINT>(failures)); }},
    {"exit-of-the-apartment", [] { open(), CoUninitialize(), CoFreeUnusedLibraries(); }},
    {"exit-inside-an-event", [] { open([](auto&&...) -> HRESULT { std::exit(failures); })->ApriCassetto(); }},
    {"exit-of-the-thread",
     [] { std::thread([] { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), open(); }).join(); }}};

} // namespace

int main(int count, char** arguments) {
    endWithCrashes();
    _wputenv_s(L"KOVA_LOG", L"NUL"); // refusals are records of it
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (count > 2)
        playCalls(arguments[2]);
    else
        parts.at(arguments[1])();
    return failures;
}
