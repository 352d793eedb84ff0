// A script of a host, run by Windows' own script engine:
//
//   script_host FILE.vbs|FILE.js [ARGUMENT]    `elsewhere`: the objects live in another apartment; `thread`:
//   the
//                                              script runs on one, which ends and leaves all as it is
//
// WScript has Echo, CreateObject(name, prefix), ConnectObject(object, prefix) and DisconnectObject(object,
// prefix): events of that object call the script's functions that are named by the prefix and the event's
// name. Fail(how) makes a handler fail as no script does. Left is what lives: sinks, the component's module
// and windows. End(what) ends the process, or the apartment before. Keep(object)
// and ReleaseElsewhere release it on another thread.
#include "../library/process_windows.h"
#include "com/com_headers.h"

#include <initguid.h> // defines the identifiers of the engine's interfaces

#include "component_windows.h"

#include <activscp.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <vector>

namespace {

using kova::com::Pointer;
using kova::com::query;
using kova::com::Value;

Pointer<IActiveScript> engine;
int errors = 0;
int runningHandlers = 0;
EXCEPINFO failedHandler{}; ///< what the engine said of the last failure inside one
std::wstring failure;      ///< how the running handler is to fail
int sinks = 0;
std::map<std::wstring, DWORD> connections; ///< by their prefixes
std::wstring argument;                     ///< of the script's
bool elsewhere = false;                    ///< objects live in another apartment
Pointer<IDispatch> kept;                   ///< to be released on another thread

/// With all that the script holds.
void endWith(const std::wstring& what) {
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
    if (how == L"deferred" &&
        elsewhere) // Wine carries the function itself to another apartment, cut to 32 bits
        details.bstrDescription = SysAllocString(L"Filled in when asked");
    else if (how == L"deferred")
        details.pfnDeferredFillIn = [](EXCEPINFO* asked) -> HRESULT {
            asked->bstrDescription = SysAllocString(L"Filled in when asked");
            return S_OK;
        };
    return DISP_E_EXCEPTION;
}

/// The engine writes back through references to VARIANTs alone: each argument by reference gets one, whose
/// value goes back into the component's own variable afterwards.
class Sink final : public kova::com::DispatchObject {
  public:
    Sink(std::wstring prefix, Pointer<ITypeInfo> events)
        : prefix_(std::move(prefix)), events_(std::move(events)) {
        ++sinks;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID locale, WORD, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO* details, UINT* wrong) override {
        BSTR name = nullptr;
        UINT count = 0;
        events_->GetNames(id, &name, 1, &count);
        std::wstring function = prefix_ + name;
        SysFreeString(name);
        Pointer<IDispatch> script;
        engine->GetScriptDispatch(nullptr, script.put());
        LPOLESTR wanted = function.data();
        DISPID called = 0;
        if (FAILED(script->GetIDsOfNames(IID_NULL, &wanted, 1, locale, &called)))
            return DISP_E_MEMBERNOTFOUND;
        std::vector<VARIANT> shadows(given->cArgs), arguments(given->cArgs);
        for (UINT i = 0; i < given->cArgs; ++i) {
            VariantInit(&shadows[i]);
            VariantCopyInd(&shadows[i], &given->rgvarg[i]);
            arguments[i].vt = VT_BYREF | VT_VARIANT;
            arguments[i].pvarVal = &shadows[i];
        }
        DISPPARAMS parameters{arguments.data(), nullptr, given->cArgs, 0};
        ++runningHandlers;
        HRESULT code =
            script->Invoke(called, IID_NULL, locale, DISPATCH_METHOD, &parameters, result, details, wrong);
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
        if (type == VT_I4)
            *target.plVal = shadow.lVal;
        else if (type == VT_I2 || type == VT_BOOL)
            *target.piVal = shadow.iVal;
        else if (type == VT_R8)
            *target.pdblVal = shadow.dblVal;
        else if (type == VT_BSTR)
            SysReAllocString(target.pbstrVal, shadow.bstrVal);
        VariantClear(&shadow);
    }
    std::wstring prefix_;
    Pointer<ITypeInfo> events_;
};

HRESULT connect(IDispatch* object, const std::wstring& prefix) {
    const auto classInfo = query<IProvideClassInfo2>(object, IID_IProvideClassInfo2);
    const auto container = query<IConnectionPointContainer>(object, IID_IConnectionPointContainer);
    IID id{};
    Pointer<ITypeInfo> type, events;
    Pointer<ITypeLib> library;
    Pointer<IConnectionPoint> point;
    UINT index = 0;
    if (!classInfo || !container || FAILED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id)) ||
        FAILED(classInfo->GetClassInfo(type.put())) ||
        FAILED(type->GetContainingTypeLib(library.put(), &index)) ||
        FAILED(library->GetTypeInfoOfGuid(id, events.put())) ||
        FAILED(container->FindConnectionPoint(id, point.put())))
        return E_FAIL;
    const auto sink = Pointer<IDispatch>::adopt(new Sink(prefix, std::move(events)));
    return point->Advise(sink.get(), &connections[prefix]);
}

std::string left() {
    return std::to_string(sinks) + (kova::test::letGo() ? " gone " : " held ") +
           std::to_string(kova::test::shownWindows(true).size());
}

std::wstring text(VARIANT& value) {
    Value result;
    if (FAILED(VariantChangeType(&result, &value, VARIANT_ALPHABOOL, VT_BSTR)))
        return L"?";
    return std::wstring(result->bstrVal, SysStringLen(result->bstrVal));
}

class ScriptEnvironment final : public kova::com::DispatchObject {
  public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        const auto* const found = std::ranges::find_if(
            Members, [&](const wchar_t* member) { return _wcsicmp(names[0], member) == 0; });
        ids[0] = static_cast<DISPID>(found - Members);
        return found != std::end(Members) ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        const std::wstring_view member = Members[id];
        std::vector<std::wstring> words;
        Pointer<IDispatch> object;
        for (UINT i = given->cArgs; i-- > 0;) {
            Value plain;
            VariantCopyInd(&plain, &given->rgvarg[i]);
            if (plain->vt == VT_DISPATCH)
                object = Pointer<IDispatch>(plain->pdispVal);
            else
                words.push_back(text(*plain));
        }
        if (member == L"Echo") {
            std::string line;
            for (const auto& word : words)
                line += (line.empty() ? "" : " ") + kova::com::narrow(word);
            std::printf("%s\n", line.c_str());
        } else if (member == L"Fail")
            failure = words[0];
        else if (member == L"End")
            endWith(words[0]);
        else if (member == L"Keep")
            kept = object;
        else if (member == L"ReleaseElsewhere")
            std::thread([] { kept = {}; }).join();
        else if (member == L"Argument")
            *result = std::exchange(*Value(kova::com::narrow(argument)), VARIANT{});
        else if (member == L"Left")
            *result = std::exchange(*Value(left()), VARIANT{});
        else if (member == L"ConnectObject")
            return connect(object.get(), words[0]);
        else if (member == L"DisconnectObject")
            return kova::test::eventsOf(object.get())->Unadvise(connections[words[0]]);
        else
            return create(words, result);
        return S_OK;
    }

  private:
    static HRESULT create(const std::vector<std::wstring>& words, VARIANT* result) {
        CLSID classId{};
        Pointer<IDispatch> object;
        auto** const made = reinterpret_cast<void**>(object.put());
        HRESULT code = CLSIDFromProgID(words[0].c_str(), &classId);
        if (SUCCEEDED(code))
            code = elsewhere ? kova::test::createElsewhere(classId, IID_IDispatch, made)
                             : CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, made);
        if (SUCCEEDED(code) && words.size() > 1)
            code = connect(object.get(), words[1]);
        if (SUCCEEDED(code) && result != nullptr) {
            result->vt = VT_DISPATCH;
            result->pdispVal = object.release();
        }
        return code;
    }
    static constexpr const wchar_t* Members[] = {
        L"Echo", L"CreateObject", L"ConnectObject", L"DisconnectObject", L"Fail", L"Left",
        L"End",  L"Argument",     L"Keep",          L"ReleaseElsewhere"};
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

int play(const std::string& file) {
    std::ifstream lines(file, std::ios::binary);
    const std::string code((std::istreambuf_iterator(lines)), {});
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CLSID language{};
    CLSIDFromProgID(file.ends_with(".js") ? L"JScript" : L"VBScript", &language);
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
    engine->SetScriptState(SCRIPTSTATE_CONNECTED);
    if (argument != L"thread")
        engine->Close();
    return errors;
}

} // namespace

int main(int count, char** arguments) {
    kova::test::endWithCrashes();
    if (count < 2)
        return 2;
    argument = kova::com::wide(count > 2 ? arguments[2] : "");
    elsewhere = argument == L"elsewhere";
    if (argument != L"thread")
        return play(arguments[1]);
    std::thread(play, arguments[1]).join();
    return errors;
}
