#pragma once
#include "kova_drawer_man_c.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

// Failures and values of the C++ interface; included by kova_drawer_man.h.
namespace kova {

/// A failure as the error log records it: a number and a description.
class Error : public std::runtime_error {
  public:
    Error(std::int32_t number, const std::string& description)
        : std::runtime_error(description), number_(number) {}
    [[nodiscard]] std::int32_t number() const { return number_; }

  private:
    std::int32_t number_;
};

/// A database failure. `number()` is the provider's error number, `sqlState()` the five characters of ISO
/// 9075.
class DatabaseError : public Error {
  public:
    DatabaseError(std::int32_t number, const std::string& description, std::string sqlState)
        : Error(number, description), sqlState_(std::move(sqlState)) {}
    [[nodiscard]] const std::string& sqlState() const { return sqlState_; }

  private:
    std::string sqlState_;
};

namespace detail {

/// What a handler threw, for the program's own call that raised the event; on the user-interface thread
/// alone.
inline std::exception_ptr& thrownByHandler() {
    static std::exception_ptr thrown;
    return thrown;
}

inline void check(kova_status status) {
    if (status == KOVA_OK)
        return;
    if (status == KOVA_DATABASE_FAILED)
        throw DatabaseError(kova_last_error_number(), kova_last_error(), kova_last_sql_state());
    if (status == KOVA_OUT_OF_MEMORY)
        throw std::bad_alloc();
    throw Error(kova_last_error_number(), kova_last_error());
}

/// Of a call that raised an event: what a handler threw goes on as what it is.
inline void checkRaised(kova_status status) {
    if (status == KOVA_FAILED)
        if (const std::exception_ptr thrown = std::exchange(thrownByHandler(), nullptr))
            std::rethrow_exception(thrown);
    check(status);
}

/// A text of the program's that handlers may change.
class Text {
  public:
    explicit Text(std::string& text) : text_(text) { check(kova_text_create(text.c_str(), &handle_)); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() {
        const char* changed = nullptr;
        if (kova_text_get(handle_, &changed) == KOVA_OK && changed != text_)
            text_ = changed;
        kova_text_release(handle_);
    }
    [[nodiscard]] kova_text handle() const { return handle_; }

  private:
    std::string& text_;
    kova_text handle_ = nullptr;
};

inline std::string contentOf(kova_text text) {
    const char* content = nullptr;
    check(kova_text_get(text, &content));
    return content;
}

inline void assign(kova_text text, const std::string& content) {
    if (content != contentOf(text))
        check(kova_text_set(text, content.c_str()));
}

} // namespace detail

/// A connection to the host's database, as `openDatabase` and `hostOdbcConnection` make them.
class DatabaseConnection {
  public:
    /// Takes the handle over.
    explicit DatabaseConnection(kova_database handle) : handle_(handle) {}
    DatabaseConnection(const DatabaseConnection&) = delete;
    DatabaseConnection& operator=(const DatabaseConnection&) = delete;
    ~DatabaseConnection() { kova_database_release(handle_); }
    [[nodiscard]] kova_database handle() const { return handle_; }

  private:
    kova_database handle_;
};

/// A value of a late-bound call: empty, or one of the kinds that the interface uses.
using Variant = std::variant<std::monostate, std::int16_t, std::int32_t, double, bool, std::string,
                             std::shared_ptr<DatabaseConnection>>;

namespace detail {

template <class Body>
struct AtEnd {
    Body body;
    explicit AtEnd(Body given) : body(std::move(given)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() {
        try {
            body();
        } catch (...) { // NOLINT(bugprone-empty-catch): what cannot be written stays as it was
        }
    }
};

/// The body of one handler; what it throws becomes its failure.
template <class Body>
std::int32_t handled(const Body& body) noexcept {
    constexpr std::int32_t Failed = -2147467259; // anything without a number of its own
    try {
        body();
        return 0;
    } catch (const Error& error) {
        thrownByHandler() = std::current_exception();
        kova_fail(error.what());
        return error.number() != 0 ? error.number() : Failed;
    } catch (const std::exception& error) {
        thrownByHandler() = std::current_exception();
        kova_fail(error.what());
    } catch (...) {
        thrownByHandler() = std::current_exception();
        kova_fail("Unknown error");
    }
    return Failed;
}
template <class Body>
std::int32_t handledText(kova_text text, const Body& body) noexcept {
    return handled([&] {
        std::string content = contentOf(text);
        const AtEnd takeBack{[&] { assign(text, content); }};
        body(content);
    });
}

/// The text, and the connection, are the variant's.
inline kova_value valueOf(const Variant& variant) {
    kova_value value{};
    value.kind = static_cast<std::int32_t>(variant.index());
    if (const auto* small = std::get_if<std::int16_t>(&variant))
        value.integer = *small;
    else if (const auto* integer = std::get_if<std::int32_t>(&variant))
        value.integer = *integer;
    else if (const auto* number = std::get_if<double>(&variant))
        value.number = *number;
    else if (const auto* flag = std::get_if<bool>(&variant))
        value.integer = *flag ? 1 : 0;
    else if (const auto* text = std::get_if<std::string>(&variant))
        value.text = text->c_str();
    else if (const auto* database = std::get_if<std::shared_ptr<DatabaseConnection>>(&variant))
        value.database = *database ? (*database)->handle() : nullptr;
    return value;
}
/// A connection stays the one that was given.
inline Variant variantOf(const kova_value& value, const Variant& given) {
    switch (value.kind) {
    case KOVA_INT16:
        return static_cast<std::int16_t>(value.integer);
    case KOVA_INT32:
        return value.integer;
    case KOVA_DOUBLE:
        return value.number;
    case KOVA_BOOLEAN:
        return value.integer != 0;
    case KOVA_TEXT:
        return std::string(value.text);
    case KOVA_DATABASE:
        return given;
    default:
        return {};
    }
}
template <class Call>
Variant invoked(std::vector<Variant>& arguments, const Call& call) {
    std::vector<kova_value> values;
    for (const auto& argument : arguments)
        values.push_back(valueOf(argument));
    kova_value result{};
    thrownByHandler() = nullptr;
    const kova_status status = call(values.data(), static_cast<std::int32_t>(values.size()), &result);
    if (status == KOVA_OK || status == KOVA_FAILED)
        for (std::size_t i = 0; i < values.size(); ++i)
            arguments[i] = variantOf(values[i], arguments[i]);
    checkRaised(status);
    return variantOf(result, {});
}

} // namespace detail

} // namespace kova
