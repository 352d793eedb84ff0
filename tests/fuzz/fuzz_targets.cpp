// What outsiders write: amounts and dates, connection strings, the settings file, scenarios, and calls by
// name.
#include "fuzz_targets.h"

#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/system/ini_settings_store.h"
#include "base/error.h"
#include "kova_drawer_man_c.h"
#include "scenario/scenario_language.h"
#include "services/conversions.h"
#include "services/number_format.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <unistd.h>
#include <vector>

namespace kova::test {
namespace {

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// Takes one number after the other from the front, the rest is text. Zeros when nothing is left.
class Input {
  public:
    explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    std::uint8_t byte() { return number<std::uint8_t>(); }
    template <class T>
    T number() {
        T result{};
        const std::size_t size = std::min(sizeof result, bytes_.size());
        if (size > 0)
            std::memcpy(&result, bytes_.data(), size);
        bytes_ = bytes_.subspan(size);
        return result;
    }
    std::string text(std::size_t most = SIZE_MAX) {
        const std::size_t size = std::min(most, bytes_.size());
        std::string result(reinterpret_cast<const char*>(bytes_.data()), size);
        bytes_ = bytes_.subspan(size);
        return result;
    }
    [[nodiscard]] bool empty() const { return bytes_.empty(); }

  private:
    std::span<const std::uint8_t> bytes_;
};

void amounts(std::span<const std::uint8_t> bytes) {
    static const std::vector<RegionalSettings> regions = [] {
        std::vector<RegionalSettings> all;
        for (const char* name : {"it-IT", "it-CH", "de-DE", "de-CH", "de-AT", "en-US", "en-GB", "fr-CH"})
            all.push_back(*regionalSettings(name));
        return all;
    }();
    Input input(bytes);
    const RegionalSettings& region = regions[input.byte() % regions.size()];
    const auto decimals = static_cast<std::int16_t>(input.byte() % 16);
    const std::string text = input.text();
    NumberFormat format(region);
    format.SetAmountDecimals(decimals);
    const auto number = parseNumber(text, region);
    require(number.has_value() == isNumeric(text, region), "test and conversion agree");
    if (number && std::isfinite(*number)) {
        require(parseNumber(format.FormatExactly(*number), region) == number,
                "an amount reads back as it was");
        const std::string shown = format.FormatAmount(*number, decimals);
        const auto again = parseNumber(shown, region);
        require(!again || std::abs(*again - *number) <= std::pow(10.0, -decimals) + std::abs(*number) * 1e-14,
                "a shown amount is the rounded one");
        (void)format.FormatSum(*number);
        (void)toText(*number, region);
    }
    if (const auto day = parseDate(text, region)) {
        const auto again = parseDate(shortDate(*day, region), region);
        require(again == DateTime(std::chrono::floor<std::chrono::days>(*day)) ||
                    shortDate(*day, region).size() < 8,
                "a date reads back as it was");
    }
    try {
        const std::string literal = SqlDateFormatter(region).FormatSqlDate(text);
        require(literal.size() == 43 && literal.find_first_not_of("0123456789-:T", 18) == 37,
                "a literal holds a date alone");
    } catch (const Error& error) {
        require(error.number() == 13, "what is no date is error 13");
    }
}

void connections(std::span<const std::uint8_t> bytes) {
    const std::string text = Input(bytes).text();
    if (!namesOdbc(text))
        return;
    try {
        const auto parsed = parseOdbcConnectionText(text, "FreeTDS");
        require(parsed.logInTimeout.count() >= 0 && parsed.queryTimeout.count() >= 0,
                "time-outs are not negative");
        const auto again = parseOdbcConnectionText(parsed.driverText, "FreeTDS");
        require(again.driverText == parsed.driverText && again.driver == parsed.driver,
                "what goes to the driver manager names a driver, and no time-out of ours");
    } catch (const DatabaseError& error) {
        require(error.what()[0] != '\0', "a refusal says why");
    }
}

void settings(std::span<const std::uint8_t> bytes) {
    static const std::string file = "/tmp/kova_fuzz_" + std::to_string(getpid()) + ".ini";
    std::ofstream(file, std::ios::binary) << Input(bytes).text();
    for (const char* name : {"DecimalKey", "Confirmation"})
        if (const auto value = IniSettingsStore(file).read("SOFTWARE\\ZELT\\KOVA", "Screen", name))
            require(value->find('\n') == std::string::npos && (value->empty() || value->back() != ' '),
                    "a value is one trimmed line");
    unlink(file.c_str());
}

std::string quoted(const std::string& word) {
    std::string result = "\"";
    for (const char c : word)
        result += c == '\n'               ? "\\n"
                  : c == '\r'             ? "\\r"
                  : c == '\t'             ? "\\t"
                  : c == '"' || c == '\\' ? std::string{'\\', c}
                                          : std::string{c};
    return result + '"';
}

void scenarios(std::span<const std::uint8_t> bytes) {
    using type_description::Type;
    for (const auto& line : scenarioLines(Input(bytes).text())) {
        try {
            const auto words = scenarioWords(line);
            std::string again;
            for (const auto& word : words)
                again += quoted(word) + ' ';
            require(scenarioWords(again) == words, "quoted words read back as they were");
            for (const auto& word : words)
                for (const Type type : {Type::Int16, Type::Int32, Type::Double, Type::Boolean, Type::String})
                    try {
                        (void)valueFromWord(word, type);
                        (void)Arguments({word}).dateTime(0);
                    } catch (const ScenarioError&) { // NOLINT(bugprone-empty-catch)
                    }
        } catch (const ScenarioError& refusal) {
            require(refusal.what()[0] != '\0', "a refusal says why");
        }
    }
}

/// A host's handlers, which write back and fail as the input says.
struct Handlers {
    std::uint8_t behaviour = 0;
    static std::int32_t text(void* user, kova_text day) {
        const auto& self = *static_cast<Handlers*>(user);
        if ((self.behaviour & 1U) != 0)
            kova_text_set(day, "17/11/2026");
        return self.behaviour & 2U;
    }
};

kova_component component() {
    static Handlers* const handlers = new Handlers;
    static const kova_component made = [] {
        kova_component created = nullptr;
        kova_sink sink = nullptr;
        kova_handlers connected{};
        connected.size = sizeof connected;
        connected.user = handlers;
        connected.Stampa = Handlers::text;
        connected.Anteprima = [](void* user, kova_text day) {
            return ++static_cast<Handlers*>(user)->behaviour, Handlers::text(user, day);
        };
        require(kova_create(&created) == KOVA_OK && kova_connect(created, &connected, &sink) == KOVA_OK,
                "a component is made");
        return created;
    }();
    return made;
}

/// Calls by name or id with any values; nothing opens, since that would wait for a cashier.
void lateCalls(std::span<const std::uint8_t> bytes) {
    Input input(bytes);
    while (!input.empty()) {
        const std::uint8_t kind = input.byte();
        const auto id = static_cast<std::int32_t>(input.byte() % 32);
        std::string name = (kind & 8U) != 0 ? input.text(input.byte() % 40) : "";
        std::vector<std::string> texts(9);
        std::vector<kova_value> values(input.byte() % 9);
        for (std::size_t i = 0; i < values.size(); ++i) {
            values[i].kind = input.byte() % 8;
            values[i].integer = input.number<std::int32_t>();
            values[i].number = (kind & 16U) != 0 ? input.number<double>() : values[i].integer / 4.0;
            texts[i] = input.text(input.byte() % 16);
            values[i].text = (kind & 32U) != 0 ? texts[i].c_str() : nullptr;
        }
        kova_value result{};
        const auto count = static_cast<std::int32_t>(values.size());
        const bool opens =
            id == KOVA_ID_Show || id == KOVA_ID_InizializzaByConnString ||
            std::ranges::any_of(name, [](char c) { return c == 'z' || c == 'Z' || c == 'w' || c == 'W'; });
        if (opens && (kind & 3U) == 2)
            continue;
        kova_status status = KOVA_OK;
        switch (kind & 3U) {
        case 0:
            status = name.empty() ? kova_get_by_id(component(), id, &result)
                                  : kova_get(component(), name.c_str(), &result);
            break;
        case 1:
            status = name.empty() ? kova_set_by_id(component(), id, values.data())
                                  : kova_set(component(), name.c_str(), values.data());
            break;
        default:
            status = name.empty() || opens
                         ? kova_invoke_by_id(component(), opens ? KOVA_ID_Stampa : id, values.data(), count,
                                             &result)
                         : kova_invoke(component(), name.c_str(), values.data(), count, &result);
        }
        require(status >= KOVA_OK && status <= KOVA_INVALID_HANDLE,
                "the status is one of a call on this thread");
        require(status == KOVA_OK || kova_last_error()[0] != '\0', "a failure has words");
        for (const auto& value : values)
            require(value.kind != KOVA_TEXT || value.text == nullptr || std::strlen(value.text) < 64,
                    "texts are alive");
        require(result.kind != KOVA_TEXT || std::strlen(result.text) < 64, "so is the answer");
    }
}

} // namespace

const std::map<std::string, FuzzTarget>& fuzzTargets() {
    static const std::map<std::string, FuzzTarget> targets{{"amounts", amounts},
                                                           {"connections", connections},
                                                           {"settings", settings},
                                                           {"scenarios", scenarios},
                                                           {"late_calls", lateCalls}};
    return targets;
}

} // namespace kova::test
