// A script of a host, run by Windows' own script engine:
//
//   script_host FILE.vbs|FILE.js [ARGUMENT]
//
// It has WScript.Echo, WScript.Arguments(0), and WScript.CreateObject(name, prefix): events of that object
// call the script's functions that are named by the prefix and the event's name. A cashier's hands besides,
// in whichever program the dialog is, at places that part the width and height of the window in front:
//
//   WScript.When windows, function    calls it when so many of the component's windows have stood still
//   WScript.Touch x, y
//   WScript.Press key                 by its virtual code
//   WScript.Color(x, y)               hexadecimal digits of red, green and blue
#include "com/com_pointer.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"
#include "library/fingers_windows.h"

#include <initguid.h> // defines the identifiers of the engine's interfaces

#include <activscp.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
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
        : prefix_(std::move(prefix)), events_(std::move(events)) {}
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
        return code;
    }

  private:
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

HRESULT connect(IDispatch* object, const std::wstring& prefix) {
    const auto classInfo = query<IProvideClassInfo2>(object, IID_IProvideClassInfo2);
    const auto container = query<IConnectionPointContainer>(object, IID_IConnectionPointContainer);
    IID id{};
    Pointer<ITypeInfo> type, events;
    Pointer<ITypeLib> library;
    Pointer<IConnectionPoint> point;
    UINT index = 0;
    DWORD cookie = 0;
    if (!classInfo || !container || FAILED(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &id)) ||
        FAILED(classInfo->GetClassInfo(type.put())) ||
        FAILED(type->GetContainingTypeLib(library.put(), &index)) ||
        FAILED(library->GetTypeInfoOfGuid(id, events.put())) ||
        FAILED(container->FindConnectionPoint(id, point.put())))
        return E_FAIL;
    return point->Advise(new Sink(prefix, std::move(events)), &cookie);
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
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        Words words;
        for (UINT i = given->cArgs; i-- > 0;)
            words.push_back(text(given->rgvarg[i]));
        if (id == 0)
            return create(words, result);
        const std::wstring answer = Members[id].act(words);
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
        {L"Color", color}};
    static HRESULT create(const Words& words, VARIANT* result) {
        CLSID classId{};
        Pointer<IDispatch> object;
        HRESULT code = CLSIDFromProgID(words[0].c_str(), &classId);
        if (SUCCEEDED(code))
            code = CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
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

} // namespace

int main(int count, char** arguments) {
    if (count < 2)
        return 2;
    if (count > 2)
        hostArgument = kova::com::wide(arguments[2]);
    std::ifstream file(arguments[1], std::ios::binary);
    const std::string code((std::istreambuf_iterator(file)), {});
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    CLSID language{};
    CLSIDFromProgID(std::string_view(arguments[1]).ends_with(".js") ? L"JScript" : L"VBScript", &language);
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
    engine->Close();
    return errors;
}
