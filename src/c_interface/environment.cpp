// Components, texts and databases come and go; what all components share.
#include "c_interface/held_component.h"
#include "library/library.h"

#include <chrono>

using namespace kova;
using namespace kova::c_interface;

namespace {

constexpr std::int32_t TypeMismatch = 13;
constexpr std::int32_t MostDecimals = 15;

} // namespace

kova_status kova_create(kova_component* component) {
    return guarded([&] {
        wanted(component) = nullptr;
        *component = components().add(std::make_shared<HeldComponent>(createComponent()));
    });
}

kova_status kova_release(kova_component component) {
    return guarded([&] {
        const auto released = held(component, "kova_release")->observed();
        components().remove(component);
        if (const auto kept = released.lock()) // by a handler of its dialog, which may wait for an answer
            kept->DiscardForm();
    });
}

kova_status kova_is_open(kova_component component, int32_t* open) {
    return guarded([&] { wanted(open) = held(component, "kova_is_open")->open() ? 1 : 0; });
}

kova_status kova_on_closed(kova_component component, kova_closed_handler handler, void* user) {
    return guarded([&] { held(component, "kova_on_closed")->onClosed(handler, user); });
}

kova_status kova_text_create(const char* content, kova_text* text) {
    return guarded([&] {
        auto created = std::make_shared<ReferredText>();
        created->own = textOf(content);
        wanted(text) = texts().add(std::move(created));
    });
}

kova_status kova_text_release(kova_text text) {
    return guarded([&] {
        const auto kept = keptText(text);
        if (kept->content != &kept->own)
            refuseArgument("The text is the event's");
        texts().remove(text);
    });
}

kova_status kova_text_get(kova_text text, const char** content) {
    return guarded([&] { wanted(content) = handedOut(*keptText(text)->content); });
}

kova_status kova_text_set(kova_text text, const char* content) {
    return guarded([&] { *keptText(text)->content = textOf(content); });
}

kova_status kova_database_open(const char* connection, kova_database* database) {
    return guarded([&] {
        wanted(database) = nullptr;
        *database = databases().add(
            std::make_shared<std::shared_ptr<DatabaseConnection>>(openDatabase(textOf(connection))));
    });
}

kova_status kova_database_from_odbc(void* connection_handle, kova_database* database) {
    return guarded([&] {
        wanted(database) = nullptr;
        if (connection_handle == nullptr)
            refuseArgument("The connection handle is null");
        *database = databases().add(
            std::make_shared<std::shared_ptr<DatabaseConnection>>(hostOdbcConnection(connection_handle)));
    });
}

kova_status kova_database_release(kova_database database) {
    return guarded([&] {
        if (!databases().remove(database))
            throw Refusal(KOVA_INVALID_HANDLE, "Not a database");
    });
}

kova_status kova_set_language(int32_t id, const char* name) {
    return guarded([&] { setLanguage(id, textOf(name)); });
}

kova_status kova_get_language(int32_t* id) {
    return guarded([&] { wanted(id) = languageId(); });
}

kova_status kova_set_screen_aids(int32_t amount_read_back, int32_t direction, int32_t confirmation) {
    return guarded([&] { setScreenAids({amount_read_back != 0, direction != 0, confirmation != 0}); });
}

kova_status kova_set_sounds(int32_t wanted) {
    return guarded([&] { setSounds(wanted != 0); });
}

kova_status kova_set_waiting_sign(int32_t wanted) {
    return guarded([&] { setWaitingSign(wanted != 0); });
}

kova_status kova_set_parent_window(uint64_t window) {
    return guarded([&] { setParentWindow(window); });
}

kova_status kova_set_decimal_key(int32_t key) {
    return guarded([&] {
        if (key != KOVA_DECIMAL_COMMA && key != KOVA_DECIMAL_OF_REGION)
            refuseArgument("No such decimal key");
        setDecimalKey(key == KOVA_DECIMAL_COMMA ? DecimalKey::Comma : DecimalKey::Region);
    });
}

kova_status kova_set_log_folder(const char* folder) {
    return guarded([&] { setLogFolder(textOf(folder)); });
}

kova_status kova_shut_down() {
    return guarded([] { shutDown(); });
}

kova_status kova_process_events() {
    return guarded([] { processEvents(); });
}

kova_status kova_event_descriptor(int32_t* descriptor) {
    return guarded([&] { wanted(descriptor) = eventDescriptor(); });
}

kova_status kova_font_family(const char** family) {
    return guarded([&] { wanted(family) = handedOut(fontFamily()); });
}

kova_status kova_parse_date(const char* text, int32_t* year, int32_t* month, int32_t* day) {
    return guarded([&] {
        auto &y = wanted(year), &m = wanted(month), &d = wanted(day);
        const auto parsed = parseDate(textOf(text));
        if (!parsed)
            throw Error(TypeMismatch, "Not a date");
        const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(*parsed));
        y = int{date.year()};
        m = static_cast<std::int32_t>(unsigned{date.month()});
        d = static_cast<std::int32_t>(unsigned{date.day()});
    });
}

kova_status kova_format_date(int32_t year, int32_t month, int32_t day, const char** text) {
    return guarded([&] {
        const std::chrono::year_month_day date(std::chrono::year(year),
                                               std::chrono::month(static_cast<unsigned>(month)),
                                               std::chrono::day(static_cast<unsigned>(day)));
        if (!date.ok() || year < 100 || year > 9999)
            throw Error(InvalidCall, "No such day");
        wanted(text) = handedOut(formatDate(std::chrono::local_days(date)));
    });
}

kova_status kova_format_amount(double amount, int32_t decimals, const char** text) {
    return guarded([&] {
        if (decimals < 0 || decimals > MostDecimals)
            refuseArgument("Decimals are beyond 0 to 15");
        wanted(text) = handedOut(formatAmount(amount, static_cast<std::int16_t>(decimals)));
    });
}
