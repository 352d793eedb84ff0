#include "com/com_values.h"

#include <new>
#include <utility>

namespace kova::com {

std::wstring wide(std::string_view text) {
    const auto length = static_cast<int>(text.size());
    std::wstring result(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), static_cast<int>(result.size()));
    return result;
}

std::string narrow(std::wstring_view text) {
    const auto length = static_cast<int>(text.size());
    std::string result(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr,
                                                                    0, nullptr, nullptr)),
                       '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), static_cast<int>(result.size()),
                        nullptr, nullptr);
    return result;
}

std::string narrow(BSTR text) {
    return text == nullptr ? std::string() : narrow(std::wstring_view(text, SysStringLen(text)));
}

BSTR makeBstr(std::string_view text) {
    const std::wstring characters = wide(text);
    BSTR result = SysAllocStringLen(characters.data(), static_cast<UINT>(characters.size()));
    if (result == nullptr)
        throw std::bad_alloc();
    return result;
}

ReferredText::~ReferredText() {
    if (text == before_)
        return;
    const std::wstring characters = wide(text);
    if (BSTR changed = SysAllocStringLen(characters.data(), static_cast<UINT>(characters.size())))
        SysFreeString(std::exchange(variable_, changed));
}

} // namespace kova::com
