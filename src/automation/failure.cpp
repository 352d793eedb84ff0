#include "automation/failure.h"

#include "com/com_pointer.h"
#include "com/com_values.h"

#include <new>

namespace kova::automation {
namespace {

constexpr std::int32_t MostNumbers = 0xFFFF;
constexpr const char* OwnSource = "Kova_Drawer_Man";

HRESULT codeOf(std::int32_t number) {
    if (number > 0 && number <= MostNumbers)
        return com::NumberedErrors | number;
    return number < 0 ? number : E_FAIL;
}

} // namespace

Failure::Failure(HRESULT code, std::string source, const std::string& description)
    : Error(com::errorNumber(code), description), code_(code), source_(std::move(source)) {}

Outcome currentOutcome() noexcept {
    try {
        throw;
    } catch (const Failure& failure) {
        return {failure.code(), failure.source(), failure.what()};
    } catch (const Error& error) {
        return {codeOf(error.number()), OwnSource, error.what()};
    } catch (const std::bad_alloc&) {
        return {E_OUTOFMEMORY, {}, {}};
    } catch (const std::exception& error) {
        return {E_FAIL, OwnSource, error.what()};
    } catch (...) {
        return {E_UNEXPECTED, {}, {}};
    }
}

HRESULT tellThread(const Outcome& outcome, const IID& interfaceId) noexcept {
    com::Pointer<ICreateErrorInfo> details;
    if (SUCCEEDED(outcome.code) || FAILED(CreateErrorInfo(details.put())))
        return outcome.code;
    try {
        details->SetGUID(interfaceId);
        details->SetSource(com::wide(outcome.source).data());
        details->SetDescription(com::wide(outcome.description).data());
        SetErrorInfo(0, com::query<IErrorInfo>(details.get(), IID_IErrorInfo).get());
    } catch (const std::bad_alloc&) { // the code alone says enough
    }
    return outcome.code;
}

HRESULT tellCaller(const Outcome& outcome, EXCEPINFO* details) noexcept {
    if (SUCCEEDED(outcome.code))
        return S_OK;
    if (details == nullptr)
        return DISP_E_EXCEPTION;
    *details = {};
    details->scode = outcome.code;
    try {
        details->bstrSource = com::makeBstr(outcome.source);
        details->bstrDescription = com::makeBstr(outcome.description);
    } catch (const std::bad_alloc&) { // the code alone says enough
    }
    return DISP_E_EXCEPTION;
}

} // namespace kova::automation
