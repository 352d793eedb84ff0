#include "ado_stand_in.h"

#include "base/overloaded.h"
#include "com/dispatch_object.h"

#include <algorithm>

namespace kova::test {
namespace {

/// A cell as ADO has it.
com::Value cellOf(const Value& value) {
    com::Value cell;
    const auto become = [&](VARTYPE type) -> VARIANT& {
        cell->vt = type;
        return *cell;
    };
    std::visit(Overloaded{
                   [&](Null) { become(VT_NULL); },
                   [&](bool flag) { become(VT_BOOL).boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE; },
                   [&](std::int64_t number) { become(VT_I4).lVal = static_cast<LONG>(number); },
                   [&](double number) { become(VT_R8).dblVal = number; },
                   [&](Decimal number) { become(VT_CY).cyVal.int64 = number.unscaled; },
                   [&](std::string_view text) { become(VT_BSTR).bstrVal = com::makeBstr(text); },
                   [&](DateTime time) { become(VT_DATE).date = com::Value(time)->date; },
                   [&](LongDecimal) { become(VT_ERROR); },
               },
               value);
    return cell;
}

AdoMember gives(const std::string& text) {
    return [text](AdoCall& call) { call.give(text); };
}

AdoMembers errorOf(const std::string& number, const std::string& text, const std::string& state) {
    return {{L"Number", gives(number)},
            {L"Description", gives(text)},
            {L"SQLState", gives(state)},
            {L"NativeError", gives("7")}};
}

std::string described(VARIANT& value) {
    if (value.vt == VT_DISPATCH || value.vt == VT_ERROR)
        return value.vt == VT_ERROR ? "left out" : "object";
    com::Value text;
    VariantChangeTypeEx(&text, &value, LOCALE_INVARIANT, 0, VT_BSTR);
    return com::narrow(text->bstrVal);
}

} // namespace

/// Of a record set and of those that follow it.
struct AdoStandIn::Records {
    Records(int& openOnes, int counts) : countOfOpen(openOnes), rowCounts(counts) {}
    Records(const Records&) = delete;
    Records& operator=(const Records&) = delete;
    ~Records() { setOpen(false); }
    void setOpen(bool now) { countOfOpen += int{now} - int{std::exchange(open, now)}; }
    void getRows(AdoCall& call, std::vector<com::Value>* given);

    int& countOfOpen;
    int rowCounts;
    bool open = false;
    std::unique_ptr<Recordset> rows;
    std::int32_t read = 0;
};

void AdoStandIn::Records::getRows(AdoCall& call, std::vector<com::Value>* given) {
    const auto count = std::min<std::int32_t>(call.arguments.at(0)->lVal, rows->recordCount() - read);
    const auto columns = static_cast<ULONG>(rows->fieldCount());
    SAFEARRAYBOUND bounds[] = {{columns, 0}, {static_cast<ULONG>(count), 0}};
    SAFEARRAY* const array = SafeArrayCreate(VT_VARIANT, 2, bounds);
    auto* cell = static_cast<VARIANT*>(array->pvData);
    for (const auto end = read + count; read < end; ++read, rows->moveNext())
        for (ULONG i = 0; i < columns; ++i)
            *cell++ = std::exchange(given != nullptr ? *given->at(i) : *cellOf(rows->field(i)), VARIANT{});
    call.result->vt = VT_ARRAY | VT_VARIANT;
    call.result->parray = array;
}

class AdoStandIn::Object final : public com::DispatchObject {
  public:
    Object(AdoStandIn& ado, AdoMembers members) : ado_(ado), members_(std::move(members)) { ++ado_.objects; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
        if (ado_.refuses())
            return ado_.refuse(nullptr);
        const auto found = members_.find(*names);
        *ids = static_cast<DISPID>(std::distance(members_.begin(), found));
        return found == members_.end() ? DISP_E_UNKNOWNNAME : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                                     EXCEPINFO* details, UINT*) override {
        if (ado_.refuses())
            return ado_.refuse(details);
        if (static_cast<std::size_t>(id) >= members_.size())
            return DISP_E_MEMBERNOTFOUND;
        AdoCall call{{}, result};
        for (UINT i = given->cArgs; i-- > 0;)
            call.arguments.push_back(&given->rgvarg[i]);
        try {
            std::next(members_.begin(), id)->second(call);
            return S_OK;
        } catch (HRESULT code) {
            return code;
        } catch (const DatabaseError& error) {
            details->scode = error.number();
            details->bstrDescription = com::makeBstr(error.what());
            ado_.errors_.push_back(errorOf(std::to_string(error.number()), error.what(), error.sqlState()));
            return DISP_E_EXCEPTION;
        }
    }

  private:
    ~Object() override { --ado_.objects; }
    AdoStandIn& ado_;
    const AdoMembers members_;
};

class AdoStandIn::Factory final : public com::CountedObject<IClassFactory> {
  public:
    Factory(AdoStandIn& ado, std::function<AdoObject()> make)
        : CountedObject(IID_IClassFactory), ado_(ado), make_(std::move(make)) {}
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** made) override {
        *made = nullptr;
        return ado_.refuses() ? ado_.refuse(nullptr) : make_()->QueryInterface(id, made);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    AdoStandIn& ado_;
    const std::function<AdoObject()> make_;
};

AdoStandIn::AdoStandIn(std::shared_ptr<DatabaseConnection> database) : database_(std::move(database)) {
    offer(L"ADODB.Connection", [this] { return connection(); });
    offer(L"ADODB.Recordset", [this] { return records(std::make_shared<Records>(openRecords, rowCounts)); });
    offer(L"ADODB.Command", [this] { return command(); });
}

AdoStandIn::~AdoStandIn() {
    for (const DWORD registration : registrations_)
        CoRevokeClassObject(registration);
}

/// What a process offers itself comes before what Windows has registered.
void AdoStandIn::offer(const wchar_t* className, std::function<AdoObject()> make) {
    CLSID id{};
    CLSIDFromProgID(className, &id);
    const auto factory = com::Pointer<IClassFactory>::adopt(new Factory(*this, std::move(make)));
    CoRegisterClassObject(id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                          &registrations_.emplace_back());
}

void AdoStandIn::refuseCall(int number, Refusal how) {
    calls = 0;
    refused_ = number;
    refusal_ = how;
}

HRESULT AdoStandIn::refuse(EXCEPINFO* details) {
    if (refusal_ == Refusal::Bare || details == nullptr)
        return E_ACCESSDENIED;
    if (refusal_ == Refusal::ErrorObject) {
        com::Pointer<ICreateErrorInfo> error;
        CreateErrorInfo(error.put());
        error->SetDescription(com::wide(RefusalText).data());
        SetErrorInfo(0, com::query<IErrorInfo>(error.get(), IID_IErrorInfo).get());
        return E_FAIL;
    }
    errors_.push_back(errorOf(std::to_string(E_FAIL), RefusalText, "HYT00"));
    details->scode = E_FAIL;
    details->bstrSource = com::makeBstr("stand-in");
    details->pfnDeferredFillIn = [](EXCEPINFO* asked) -> HRESULT {
        asked->bstrDescription = com::makeBstr(RefusalText);
        return S_OK;
    };
    return DISP_E_EXCEPTION;
}

AdoObject AdoStandIn::object(AdoMembers members) {
    return AdoObject::adopt(new Object(*this, std::move(members)));
}

AdoObject AdoStandIn::collection(const std::vector<AdoMembers>& items) {
    const auto item = [=, this](AdoCall& call) {
        call.give(object(items.at(static_cast<std::size_t>(call.arguments.at(0)->lVal))).get());
    };
    return object({{L"Count", gives(std::to_string(items.size()))}, {L"Item", item}});
}

void AdoStandIn::note(const AdoCall& call, std::string line) {
    for (VARIANT* const argument : call.arguments)
        line += "|" + described(*argument);
    log.push_back(line);
}

AdoObject AdoStandIn::connection() {
    const auto open = [this](AdoCall& call) {
        note(call, "Open");
        if (FAILED(opening))
            throw opening;
    };
    return object({{L"State", [this](AdoCall& call) { call.give(connectionState); }},
                   {L"Errors", [this](AdoCall& call) { call.give(collection(errors_).get()); }},
                   {L"Close", [this](AdoCall& call) { note(call, "Close"); }},
                   {L"CommandTimeout", gives("47")},
                   {L"ConnectionString", [this](AdoCall& call) { note(call, "ConnectionString"); }},
                   {L"Open", open}});
}

AdoObject AdoStandIn::records(const std::shared_ptr<Records>& records) {
    const auto open = [=, this](AdoCall& call) {
        note(call, "Recordset");
        const VARIANT& source = *call.arguments.at(0);
        const Query query = source.vt == VT_BSTR ? Query{com::narrow(source.bstrVal)} : commanded_;
        records->rows = std::make_unique<Recordset>(database_->query(query));
        records->setOpen(records->rowCounts == 0);
    };
    const auto next = [=, this](AdoCall& call) {
        records->setOpen(--records->rowCounts == 0 && !noRows);
        call.give(records->rowCounts < 0 ? nullptr : this->records(records).get());
    };
    const auto fields = [=, this](AdoCall& call) {
        std::vector<AdoMembers> items;
        for (std::size_t i = 0; i < records->rows->fieldCount(); ++i)
            items.push_back({{L"Name", gives(records->rows->fieldName(i))}});
        call.give(collection(items).get());
    };
    return object({{L"Open", open},
                   {L"State", [=](AdoCall& call) { call.give(records->open ? 1 : 0); }},
                   {L"NextRecordset", next},
                   {L"Fields", fields},
                   {L"EOF", [=](AdoCall& call) { *call.result = *cellOf(records->rows->endOfFile()); }},
                   {L"GetRows", [=, this](AdoCall& call) { records->getRows(call, row); }},
                   {L"Close", [=](AdoCall&) { records->setOpen(false); }}});
}

AdoObject AdoStandIn::command() {
    const auto create = [this](AdoCall& call) {
        note(call, "Parameter");
        com::Value date;
        VariantChangeType(&date, call.arguments.at(4), 0, VT_DATE);
        commanded_.parameters = {{"", "", com::dateTimeOf(date->date).value()}};
        call.give(object({}).get());
    };
    const auto parameters = [this](AdoCall& call) {
        call.give(object({{L"Append", [this](AdoCall& given) { note(given, "Append"); }}}).get());
    };
    const auto text = [this](AdoCall& call) { commanded_ = {com::narrow(call.arguments.at(0)->bstrVal)}; };
    return object({{L"ActiveConnection", [this](AdoCall& call) { note(call, "ActiveConnection"); }},
                   {L"CommandText", text},
                   {L"CommandTimeout", [this](AdoCall& call) { note(call, "CommandTimeout"); }},
                   {L"CommandType", [this](AdoCall& call) { note(call, "CommandType"); }},
                   {L"CreateParameter", create},
                   {L"Parameters", parameters}});
}

} // namespace kova::test
