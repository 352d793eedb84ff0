// A host's script under test, run by Windows' own script engine, with a cashier's hands besides: see
// docs/testing_a_host.md. For tests of the component itself there is more:
//
//   the argument elsewhere    objects live in another apartment
//   the argument thread       the script runs on one, which ends and leaves all as it is
//   Fail(how)                 makes the running handler fail as no script does
//   Left                      what lives: sinks, the component's module and windows
//   End(what)                 ends the process, or the apartment before
//   Keep(object), ReleaseElsewhere    releases it on another thread
#include "com/com_headers.h"
#include "com/com_pointer.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"
#include "component.h"
#include "fingers.h"
#include "list_library.h"

#include <initguid.h> // defines the identifiers of the engine's interfaces

#include <activscp.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

namespace {

using kova::com::Pointer;
using kova::com::query;
using kova::com::Value;
namespace test = kova::test;

Pointer<IActiveScript> engine;
std::wstring hostArgument;
int errors = 0;
int runningHandlers = 0;
EXCEPINFO failedHandler{}; ///< what the engine said of the last failure inside one
std::wstring failure;      ///< how the running handler is to fail
int sinks = 0;
/// The kind of events, and the sink's place among all that get them.
struct Connection {
    IID events{};
    DWORD cookie = 0;
};
std::map<std::wstring, Connection> connections; ///< by their prefixes
Pointer<IDispatch> givenObject, kept;           ///< a call's object; one to be released on another thread

/// With all that the script holds.
std::wstring endWith(const std::wstring& what) {
    std::fflush(stdout);
    if (what == L"apartment")
        CoUninitialize();
    if (what == L"at once")
        ExitProcess(0);
    std::exit(0);
}

HRESULT failAs(const std::wstring& how, EXCEPINFO& details) {
    if (how == L"bare")
        return E_ACCESSDENIED;
    details.bstrSource = SysAllocString(L"Till");
    if (how == L"numbered")
        details.wCode = 513;
    else
        details.scode = STG_E_MEDIUMFULL;
    // Wine carries the function itself to another apartment, cut to 32 bits.
    if (how == L"deferred" && hostArgument == L"elsewhere")
        details.bstrDescription = SysAllocString(L"Filled in when asked");
    else if (how == L"deferred")
        details.pfnDeferredFillIn = [](EXCEPINFO* asked) -> HRESULT {
            asked->bstrDescription = SysAllocString(L"Filled in when asked");
            return S_OK;
        };
    return DISP_E_EXCEPTION;
}

HRESULT callScript(std::wstring function, DISPPARAMS& parameters, VARIANT* result, EXCEPINFO* details,
                   UINT* wrong) {
    Pointer<IDispatch> script;
    engine->GetScriptDispatch(nullptr, script.put());
    LPOLESTR wanted = function.data();
    DISPID called = 0;
    if (FAILED(script->GetIDsOfNames(IID_NULL, &wanted, 1, LOCALE_USER_DEFAULT, &called)))
        return DISP_E_MEMBERNOTFOUND;
    return script->Invoke(called, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, result,
                          details, wrong);
}

/// What the cashier waits for.
struct Wait {
    int windows;
    std::wstring function;
    int looks = 0, stood = 0;
};
std::optional<Wait> wait;

void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
    if (!wait)
        return;
    wait->stood = std::ssize(test::shownWindows(true, 0)) == wait->windows ? wait->stood + 1 : 0;
    if (++wait->looks > 300) {
        std::printf("never %d windows for %s\n", wait->windows, kova::com::narrow(wait->function).c_str());
        std::fflush(stdout);
        _exit(4);
    }
    if (wait->stood < 5)
        return;
    DISPPARAMS none{};
    const int outerHandlers = std::exchange(runningHandlers, 0);
    callScript(std::exchange(wait, {})->function, none, nullptr, nullptr, nullptr);
    runningHandlers = outerHandlers;
}

/// The engine writes back through references to VARIANTs alone: each argument by reference gets one, whose
/// value goes back into the component's own variable afterwards.
class Sink final : public kova::com::DispatchObject {
  public:
    Sink(std::wstring prefix, Pointer<ITypeInfo> events)
        : prefix_(std::move(prefix)), events_(std::move(events)) {
        ++sinks;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO* details, UINT* wrong) override {
        BSTR name = nullptr;
        UINT count = 0;
        events_->GetNames(id, &name, 1, &count);
        std::wstring function = prefix_ + name;
        SysFreeString(name);
        std::vector<VARIANT> shadows(given->cArgs), arguments(given->cArgs);
        for (UINT i = 0; i < given->cArgs; ++i) {
            VariantInit(&shadows[i]);
            VariantCopyInd(&shadows[i], &given->rgvarg[i]);
            arguments[i].vt = VT_BYREF | VT_VARIANT;
            arguments[i].pvarVal = &shadows[i];
        }
        DISPPARAMS parameters{arguments.data(), nullptr, given->cArgs, 0};
        ++runningHandlers;
        HRESULT code = callScript(function, parameters, result, details, wrong);
        --runningHandlers;
        if (code == static_cast<HRESULT>(SCRIPT_E_REPORTED)) { // to the site, and no more to whoever called
            *details = failedHandler;
            code = DISP_E_EXCEPTION;
        }
        for (UINT i = 0; i < given->cArgs; ++i)
            writeBack(given->rgvarg[i], shadows[i]);
        const std::wstring how = std::exchange(failure, {});
        return how.empty() ? code : failAs(how, *details);
    }

  private:
    ~Sink() override { --sinks; }
    static void writeBack(const VARIANT& target, VARIANT& shadow) {
        const VARTYPE type = target.vt & ~VT_BYREF;
        VariantChangeType(&shadow, &shadow, 0, type);
        if (type == VT_BSTR)
            SysReAllocString(target.pbstrVal, shadow.bstrVal);
        else
            std::memcpy(target.byref, &shadow.lVal, type == VT_R8 ? 8 : type == VT_I4 ? 4 : 2);
        VariantClear(&shadow);
    }
    std::wstring prefix_;
    Pointer<ITypeInfo> events_;
};

Pointer<IConnectionPoint> pointOf(IDispatch* object, const IID& events) {
    Pointer<IConnectionPoint> point;
    if (const auto container = query<IConnectionPointContainer>(object, IID_IConnectionPointContainer))
        container->FindConnectionPoint(events, point.put());
    return point;
}

HRESULT connect(IDispatch* object, const std::wstring& prefix) {
    const auto classInfo = query<IProvideClassInfo2>(object, IID_IProvideClassInfo2);
    Connection& made = connections[prefix];
    Pointer<ITypeInfo> type, events;
    Pointer<ITypeLib> library;
    UINT index = 0;
    if (!classInfo || FAILED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &made.events)) ||
        FAILED(classInfo->GetClassInfo(type.put())) ||
        FAILED(type->GetContainingTypeLib(library.put(), &index)) ||
        FAILED(library->GetTypeInfoOfGuid(made.events, events.put())))
        return E_FAIL;
    const auto point = pointOf(object, made.events);
    const auto sink = Pointer<IDispatch>::adopt(new Sink(prefix, std::move(events)));
    return point ? point->Advise(sink.get(), &made.cookie) : E_FAIL;
}

HRESULT disconnect(IDispatch* object, const std::wstring& prefix) {
    const Connection made = connections[prefix];
    const auto point = pointOf(object, made.events);
    return point ? point->Unadvise(made.cookie) : E_FAIL;
}

std::wstring left() {
    return std::to_wstring(sinks) + (test::letGo() ? L" gone " : L" held ") +
           std::to_wstring(test::shownWindows(true).size());
}

std::wstring text(VARIANT& value) {
    Value result;
    if (FAILED(VariantChangeType(&result, &value, VARIANT_ALPHABOOL, VT_BSTR)))
        return L"?";
    return std::wstring(result->bstrVal, SysStringLen(result->bstrVal));
}

using Words = std::vector<std::wstring>;

std::wstring echo(const Words& words) {
    std::string line;
    for (const auto& word : words)
        line += (line.empty() ? "" : " ") + kova::com::narrow(word);
    std::printf("%s\n", line.c_str());
    return {};
}

POINT place(const Words& words) {
    return test::place(test::front(0), std::stod(words[0]), std::stod(words[1]));
}

std::wstring color(const Words& words) {
    const POINT at = place(words);
    const HDC screen = GetDC(nullptr);
    const COLORREF seen = GetPixel(screen, at.x, at.y);
    ReleaseDC(nullptr, screen);
    wchar_t digits[8];
    std::swprintf(digits, 8, L"%02x%02x%02x", GetRValue(seen), GetGValue(seen), GetBValue(seen));
    return digits;
}

class ScriptEnvironment final : public kova::com::DispatchObject {
  public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto* const found = std::ranges::find_if(
            Members, [&](const Member& member) { return _wcsicmp(names[0], member.name) == 0; });
        ids[0] = static_cast<DISPID>(found - Members);
        return found != std::end(Members) ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        Words words;
        for (UINT i = parameters->cArgs; i-- > 0;) {
            Value plain;
            VariantCopyInd(&plain, &parameters->rgvarg[i]);
            if (plain->vt == VT_DISPATCH)
                givenObject = Pointer<IDispatch>(plain->pdispVal);
            else
                words.push_back(text(*plain));
        }
        if (id == 0)
            return create(words, result);
        const std::wstring answer = Members[id].act(words);
        givenObject = {};
        if (result != nullptr) {
            result->vt = VT_BSTR;
            result->bstrVal = SysAllocString(answer.c_str());
        }
        return S_OK;
    }

  private:
    struct Member {
        const wchar_t* name;
        std::wstring (*act)(const Words& words);
    };
    static constexpr Member Members[] = {
        {L"CreateObject", nullptr},
        {L"Echo", echo},
        {L"Arguments", [](const Words&) { return hostArgument; }},
        {L"When",
         [](const Words& words) {
             return wait = {std::stoi(words[0]), words[1]}, std::wstring();
         }},
        {L"Touch", [](const Words& words) { return test::touch(place(words)), std::wstring(); }},
        {L"Press", [](const Words& words) { return test::press(WORD(std::stoi(words[0]))), std::wstring(); }},
        {L"Color", color},
        {L"Fail", [](const Words& words) { return failure = words[0], std::wstring(); }},
        {L"Left", [](const Words&) { return left(); }},
        {L"End", [](const Words& words) { return endWith(words[0]); }},
        {L"Keep", [](const Words&) { return kept = givenObject, std::wstring(); }},
        {L"ReleaseElsewhere",
         [](const Words&) { return std::thread([] { kept = {}; }).join(), std::wstring(); }},
        {L"ConnectObject",
         [](const Words& words) { return connect(givenObject.get(), words[0]), std::wstring(); }},
        {L"DisconnectObject",
         [](const Words& words) { return disconnect(givenObject.get(), words[0]), std::wstring(); }}};
    static HRESULT create(const Words& words, VARIANT* result) {
        CLSID classId{};
        Pointer<IDispatch> object;
        HRESULT code = CLSIDFromProgID(words[0].c_str(), &classId);
        if (SUCCEEDED(code))
            code = hostArgument == L"elsewhere"
                       ? test::createElsewhere(classId, IID_IDispatch, reinterpret_cast<void**>(object.put()))
                       : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                          reinterpret_cast<void**>(object.put()));
        if (SUCCEEDED(code) && words.size() > 1)
            code = connect(object.get(), words[1]);
        if (SUCCEEDED(code) && result != nullptr) {
            result->vt = VT_DISPATCH;
            result->pdispVal = object.release();
        }
        return code;
    }
};

class Site final : public IActiveScriptSite {
  public:
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
        *found = id == IID_IUnknown || id == IID_IActiveScriptSite ? this : nullptr;
        return *found != nullptr ? S_OK : E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE GetLCID(LCID* locale) override {
        *locale = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR, DWORD, IUnknown** item, ITypeInfo**) override {
        static auto* const environment = new ScriptEnvironment;
        if (item != nullptr)
            (*item = environment)->AddRef();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* error) override {
        EXCEPINFO details{};
        if (runningHandlers > 0)
            return error->GetExceptionInfo(&failedHandler);
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        error->GetExceptionInfo(&details);
        error->GetSourcePosition(&context, &line, &column);
        std::printf("error %08lx in line %lu: %s\n", static_cast<unsigned long>(details.scode), line + 1,
                    kova::com::narrow(details.bstrDescription).c_str());
        ++errors;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }
};

int play(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    const std::string code((std::istreambuf_iterator(file)), {});
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CLSID language{};
    CLSIDFromProgID(name.ends_with(".js") ? L"JScript" : L"VBScript", &language);
    static Site site;
    if (code.empty() || FAILED(CoCreateInstance(language, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript,
                                                reinterpret_cast<void**>(engine.put()))))
        return 3;
    const auto parser = query<IActiveScriptParse>(engine.get(), IID_IActiveScriptParse);
    engine->SetScriptSite(&site);
    parser->InitNew();
    engine->AddNamedItem(L"WScript", SCRIPTITEM_ISVISIBLE);
    parser->ParseScriptText(kova::com::wide(code).c_str(), nullptr, nullptr, nullptr, 0, 0,
                            SCRIPTTEXT_ISVISIBLE, nullptr, nullptr);
    SetTimer(nullptr, 0, 100, look);
    engine->SetScriptState(SCRIPTSTATE_CONNECTED);
    test::handleMessages([] { return !wait; });
    if (hostArgument != L"thread")
        engine->Close();
    return errors;
}

} // namespace

int main(int count, char** arguments) {
    test::endWithCrashes();
    if (count < 2) {
        std::fputs("usage: kova-script-host FILE.vbs|FILE.js [ARGUMENT]\n"
                   "       kova-script-host --list LIBRARY.dll|LIBRARY.tlb\n",
                   stderr);
        return 2;
    }
    if (count > 2 && std::strcmp(arguments[1], "--list") == 0)
        return kova::listLibrary(kova::com::wide(arguments[2])) ? 0 : 3;
    if (count > 2)
        hostArgument = kova::com::wide(arguments[2]);
    if (hostArgument != L"thread")
        return play(arguments[1]);
    std::thread(play, arguments[1]).join();
    return errors;
}
