#pragma once
#include "com/com_pointer.h"
#include "com/com_values.h"

#include <array>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>

namespace kova::com {

/// Keeps the thread's component model running; a thread without an apartment gets one.
class Apartment {
  public:
    Apartment() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment() {
        if (entered_)
            CoUninitialize();
    }

  private:
    const bool entered_;
};

/// A call of an object's that failed. `what()` is the object's own description, or says which call it was.
class CallFailure : public std::runtime_error {
  public:
    CallFailure(HRESULT code, const std::string& description)
        : std::runtime_error(description), code_(code) {}
    [[nodiscard]] HRESULT code() const { return code_; }

  private:
    HRESULT code_;
};

/// The ids of the members of one class by their names, which are literals; each is asked for once.
using MemberIds = std::map<const wchar_t*, DISPID, bool (*)(const wchar_t*, const wchar_t*)>;
MemberIds noMemberIds();

/// An object whose members are called by name. All calls throw CallFailure.
class LateBound {
  public:
    /// `ids`, of the object's class, must outlive this.
    LateBound(Pointer<IDispatch> object, MemberIds& ids) : object_(std::move(object)), ids_(&ids) {}
    /// A new object of a class that runs in this process.
    static LateBound create(const wchar_t* className, MemberIds& ids);

    /// Calls a method, or reads a property.
    template <class... Arguments>
    Value call(const wchar_t* member, Arguments&&... arguments) const {
        std::array<Value, sizeof...(Arguments)> values{Value(std::forward<Arguments>(arguments))...};
        return invoke(member, DISPATCH_METHOD | DISPATCH_PROPERTYGET, values);
    }
    template <class... Arguments>
    LateBound object(const wchar_t* member, MemberIds& ids, Arguments&&... arguments) const {
        return {dispatchOf(member, call(member, std::forward<Arguments>(arguments)...)), ids};
    }
    [[nodiscard]] std::int32_t number(const wchar_t* member) const;
    [[nodiscard]] std::string text(const wchar_t* member) const;
    template <class Content>
    void set(const wchar_t* member, const Content& content) const {
        std::array<Value, 1> value{Value(content)};
        const bool isObject = value[0]->vt == VT_DISPATCH;
        invoke(member, isObject ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, value);
    }

    [[nodiscard]] IDispatch* get() const { return object_.get(); }
    explicit operator bool() const { return static_cast<bool>(object_); }

  private:
    Value invoke(const wchar_t* member, int kind, std::span<Value> arguments) const;
    [[nodiscard]] DISPID idOf(const wchar_t* member) const;
    /// Empty for Nothing.
    static Pointer<IDispatch> dispatchOf(const wchar_t* member, Value value);
    Pointer<IDispatch> object_;
    MemberIds* ids_;
};

} // namespace kova::com
