// A script of a host, run by Windows' own script engine:
//
//   script_host FILE.vbs|FILE.js
//
// It has WScript.Echo and WScript.CreateObject(name, prefix): events of that object call the script's
// functions that are named by the prefix and the event's name.
#include "com/com_pointer.h"
#include "com/com_values.h"
#include "com/dispatch_object.h"

#include <initguid.h> // defines the identifiers of the engine's interfaces

#include <activscp.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using kova::com::Pointer;
using kova::com::query;
using kova::com::Value;

Pointer<IActiveScript> engine;
int errors = 0;
int runningHandlers = 0;
EXCEPINFO failedHandler{}; ///< what the engine said of the last failure inside one

/// The engine writes back through references to VARIANTs alone: each argument by reference gets one, whose
/// value goes back into the component's own variable afterwards.
class Sink final : public kova::com::DispatchObject {
  public:
    Sink(std::wstring prefix, Pointer<ITypeInfo> events)
        : prefix_(std::move(prefix)), events_(std::move(events)) {}
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
        return code;
    }

  private:
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

class ScriptEnvironment final : public kova::com::DispatchObject {
  public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        ids[0] = _wcsicmp(names[0], L"Echo") == 0 ? 1 : _wcsicmp(names[0], L"CreateObject") == 0 ? 2 : -1;
        return ids[0] > 0 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        std::vector<std::wstring> words;
        for (UINT i = given->cArgs; i-- > 0;)
            words.push_back(text(given->rgvarg[i]));
        if (id == 1) {
            std::string line;
            for (const auto& word : words)
                line += (line.empty() ? "" : " ") + kova::com::narrow(word);
            std::printf("%s\n", line.c_str());
            return S_OK;
        }
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
    if (count != 2)
        return 2;
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
    engine->SetScriptState(SCRIPTSTATE_CONNECTED);
    engine->Close();
    return errors;
}
