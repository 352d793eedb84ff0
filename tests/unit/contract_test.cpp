#include "player/trace.h"
#include "ports/host_calls.h"
#include "test_world.h"
#include "trace_file.h"

#include <gtest/gtest.h>

#include <sstream>

namespace kova::test {
namespace {

/// What becomes of each value as an argument of each type, or the number of the error.
TEST(LateBinding, ConvertsArgumentsAndRefusesWhatDoesNotFit) {
    World world;
    auto& component = *world.component;
    std::ostringstream seen;
    const auto given = [](const Variant& value) {
        return std::visit(
            [](const auto& held) -> std::string {
                if constexpr (requires { traced(held); })
                    return traced(held);
                else
                    return "an object";
            },
            value);
    };
    const auto add = [&](const char* type, const std::function<Variant()>& converted) {
        std::string text;
        const auto error = errorNumber([&] { text = given(converted()); });
        seen << ' ' << type << ' ' << (error != 0 ? "error " + std::to_string(error) : text);
    };
    const std::vector<Variant> values{
        true,   false,   2.5,   1e10, std::int32_t{70'000},           std::int16_t{-7}, "7", "2,5",
        "True", "False", "yes", "",   world.process.SharedConnection, Variant()};
    for (const Variant& value : values) {
        seen << given(value) << " is";
        for (const char* property : {"idCassa", "ChiusuraAutomatica", "ValutaAziendale"})
            add(property, [&] {
                component.set(property, value);
                return component.get(property);
            });
        for (const std::size_t index : {1U, 4U})
            add(index == 1 ? "double" : "short", [&] {
                std::vector<Variant> arguments{1, 1.5, "€", "n", 2, 3, true};
                arguments[index] = value;
                component.invoke("SalvaPagamento", arguments);
                return arguments[index];
            });
        add("connection", [&] {
            std::vector<Variant> arguments{value};
            return component.invoke("Inizializza", arguments);
        });
        seen << '\n';
    }
    expectTrace("late_binding", seen.str());
    EXPECT_EQ(errorNumber([&] { component.set("Show", Variant(1)); }), 438);
    EXPECT_EQ(errorNumber([&] { component.invoke("Nothing"); }), 438);
    EXPECT_EQ(errorNumber([&] { component.invoke("Stampa"); }), 450);
    std::vector<Variant> two{1, 2};
    EXPECT_EQ(errorNumber([&] { component.invoke("Show", two); }), 450);
}

TEST(LateBinding, ARefusedCallIsOneRecordUnderItsName) {
    struct NoCalls final : HostCalls {
        void enter(CallKind) override { throw Error(5, "refused"); }
        void leave(CallKind) noexcept override { ADD_FAILURE() << "it never entered"; }
    } none;
    World world;
    world.process.platform.hostCalls = &none;
    auto& c = *world.component;
    std::string text;
    const auto refused = [&](const auto& call) { EXPECT_EQ(errorNumber(call), 5) << world.log.size(); };
    refused([&] { c.get("idCassa"); });
    refused([&] { c.get(1); });
    refused([&] { c.set("idCassa", 1); });
    refused([&] { c.set(1, 1); });
    refused([&] { c.invoke("Show"); });
    refused([&] { c.invoke(1); });
    refused([&] { (void)c.connect(world.sink); });
    refused([&] { c.ApriCassetto(); });
    refused([&] { c.Stampa(text); });
    refused([&] { c.Anteprima(text); });
    Movement m;
    refused([&] {
        c.SalvaPagamento(m.idpagamento, m.importo, m.Valuta, m.note, m.cassetto, m.tipoIncasso, m.isIncasso);
    });
    c.Show(0);
    c.DiscardForm();
    c.Inizializza(nullptr);
    c.InizializzaByConnString("");
    std::string labels;
    for (const LogRecord& record : world.takeLog())
        labels += record.label + "|";
    EXPECT_EQ(labels, "get|get|set|set|invoke|invoke|connect|ApriCassetto|Stampa|Anteprima|SalvaPagamento|"
                      "RicercaCliente.Show: |DiscardForm: |RicercaCliente.Inizializza : |"
                      "InizializzaByConnString: |");
}

} // namespace
} // namespace kova::test
