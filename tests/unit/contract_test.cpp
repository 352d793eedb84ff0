#include "component/type_description.h"
#include "player/trace.h"
#include "ports/host_calls.h"
#include "test_world.h"
#include "trace_file.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>

namespace kova::test {
namespace {

namespace td = type_description;

const char* const types[] = {"none", "int16", "int32", "double", "boolean", "string", "connection"};

std::string signatureOf(std::string_view name, std::span<const td::Parameter> parameters) {
    std::string text = std::string(name) + "(";
    for (const auto& parameter : parameters)
        text.append(text.ends_with('(') ? "" : ", ")
            .append(parameter.optional ? "optional " : "")
            .append(types[static_cast<int>(parameter.type)])
            .append(" ")
            .append(parameter.name);
    return text + ")";
}

std::string wholeDescription() {
    static const char* const kinds[] = {"method", "read", "write"};
    const auto& library = td::library();
    std::ostringstream text;
    text << "library " << library.name << ' ' << library.version << " locale " << library.locale << ' '
         << library.identifier << '\n'
         << "class " << library.coclass << ' ' << library.coclassIdentifier << ' ' << library.programmaticId
         << '\n'
         << "interface " << library.interfaceName << ' ' << library.interfaceIdentifier << '\n';
    for (const auto& member : td::members())
        text << std::setw(2) << member.slot << std::setw(3) << member.dispatchId << ' '
             << kinds[static_cast<int>(member.kind)] << ' ' << signatureOf(member.name, member.parameters)
             << ' ' << types[static_cast<int>(member.result)] << '\n';
    text << "events " << library.eventInterfaceName << ' ' << library.eventInterfaceIdentifier << '\n';
    for (const auto& event : td::events())
        text << event.dispatchId << ' ' << signatureOf(event.name, event.parameters) << '\n';
    text << "enumeration " << library.enumerationName << '\n';
    for (const auto& one : td::enumeration())
        text << one.value << ' ' << one.name << '\n';
    return text.str();
}

TEST(TypeDescription, IsTheFrozenOne) {
    expectTrace("type_description", wholeDescription());
}

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

TEST(Events, PassArgumentsByReferenceThroughEverySinkInOrder) {
    struct Appending final : RecordingSink {
        void SalvaPagamento(std::int32_t&, double& importo, std::string& Valuta, std::string&, std::int16_t&,
                            std::int32_t&, bool&) override {
            importo *= 2;
            Valuta += "!";
        }
    } first, second;
    World world;
    const auto one = world.component->connect(first);
    const auto two = world.component->connect(second);
    std::vector<Variant> arguments{std::int32_t{1}, 1.5, std::string("€"), std::string("n"), std::int16_t{2},
                                   std::int32_t{3}, true};
    world.component->invoke("salvapagamento", arguments);
    EXPECT_EQ(arguments[1], Variant(6.0));
    EXPECT_EQ(arguments[2], Variant("€!!"));
    EXPECT_EQ(world.sink.movements.at(0).importo, 1.5) << "the sink that was first saw the value as sent";
}

} // namespace
} // namespace kova::test
