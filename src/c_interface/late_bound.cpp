// Calls of members by name or dispatch id.
#include "c_interface/held_component.h"

#include "base/overloaded.h"
#include "c_interface/thread_state.h"

#include <span>
#include <vector>

namespace kova::c_interface {
namespace {

Variant variantOf(const kova_value& value) {
    switch (value.kind) {
    case KOVA_EMPTY:
        return {};
    case KOVA_INT16:
        return static_cast<std::int16_t>(value.integer);
    case KOVA_INT32:
        return value.integer;
    case KOVA_DOUBLE:
        return value.number;
    case KOVA_BOOLEAN:
        return value.integer != 0;
    case KOVA_TEXT:
        return textOf(value.text);
    case KOVA_DATABASE:
        return databaseOf(value.database);
    default:
        refuseArgument("A value is of no known kind");
    }
}

/// `text` has the words of the value from then on. A database stays the handle that the host gave.
void assign(kova_value& value, const Variant& content, std::string& text) {
    const kova_database database = value.database;
    value = {};
    std::visit(Overloaded{[&](std::monostate) { value.kind = KOVA_EMPTY; },
                          [&](std::int16_t number) {
                              value.kind = KOVA_INT16;
                              value.integer = number;
                          },
                          [&](std::int32_t number) {
                              value.kind = KOVA_INT32;
                              value.integer = number;
                          },
                          [&](double number) {
                              value.kind = KOVA_DOUBLE;
                              value.number = number;
                          },
                          [&](bool flag) {
                              value.kind = KOVA_BOOLEAN;
                              value.integer = flag ? 1 : 0;
                          },
                          [&](const std::string& words) {
                              value.kind = KOVA_TEXT;
                              value.text = (text = words).c_str();
                          },
                          [&](const std::shared_ptr<DatabaseConnection>&) {
                              value.kind = KOVA_DATABASE;
                              value.database = database;
                          }},
               content);
}

template <class Member>
kova_status read(kova_component component, const char* function, Member member, kova_value* value) {
    return call(component, function, [&](auto& drawer) {
        auto& result = wanted(value);
        const Variant content = drawer.get(member);
        result.database = nullptr;
        std::vector<std::string> texts(1);
        assign(result, content, texts.front());
        threadState().answers = std::move(texts);
    });
}

template <class Member>
kova_status write(kova_component component, const char* function, Member member, const kova_value* value) {
    return call(component, function, [&](auto& drawer) {
        if (value == nullptr)
            refuseArgument("The value is null");
        drawer.set(member, variantOf(*value));
    });
}

template <class Member>
kova_status invoke(kova_component component, const char* function, Member member, kova_value* arguments,
                   std::int32_t count, kova_value* result) {
    return call(component, function, [&](auto& drawer) {
        if (count < 0 || (count > 0 && arguments == nullptr))
            refuseArgument("The arguments are null");
        const std::span<kova_value> given(arguments, static_cast<std::size_t>(count));
        std::vector<Variant> values;
        for (const auto& argument : given)
            values.push_back(variantOf(argument));
        std::vector<std::string> texts(given.size() + 1);
        const auto writeBack = [&](const std::vector<Variant>* changed) {
            for (std::size_t i = 0; i < given.size(); ++i)
                assign(given[i], (*changed)[i], texts[i]);
            threadState().answers = std::move(texts); // their characters stay where they are
        };
        const std::unique_ptr<const std::vector<Variant>, decltype(writeBack)> atEnd(&values, writeBack);
        const Variant answer = drawer.invoke(member, values);
        if (result != nullptr)
            assign(*result = {}, answer, texts.back());
    });
}

std::string_view nameOf(const char* name) {
    return name == nullptr ? "" : name;
}

} // namespace
} // namespace kova::c_interface

using namespace kova::c_interface;

kova_status kova_get(kova_component component, const char* name, kova_value* value) {
    return read(component, __func__, nameOf(name), value);
}

kova_status kova_get_by_id(kova_component component, int32_t id, kova_value* value) {
    return read(component, __func__, int{id}, value);
}

kova_status kova_set(kova_component component, const char* name, const kova_value* value) {
    return write(component, __func__, nameOf(name), value);
}

kova_status kova_set_by_id(kova_component component, int32_t id, const kova_value* value) {
    return write(component, __func__, int{id}, value);
}

kova_status kova_invoke(kova_component component, const char* name, kova_value* arguments, int32_t count,
                        kova_value* result) {
    return invoke(component, __func__, nameOf(name), arguments, count, result);
}

kova_status kova_invoke_by_id(kova_component component, int32_t id, kova_value* arguments, int32_t count,
                              kova_value* result) {
    return invoke(component, __func__, int{id}, arguments, count, result);
}
