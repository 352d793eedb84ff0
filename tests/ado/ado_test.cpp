#include "../database/database_contract.h"
#include "adapters/ado/ado_database.h"
#include "adapters/databases/databases.h"
#include "adapters/qt/user_interface.h"
#include "ado_stand_in.h"

#include <limits>

namespace kova {
namespace {

using test::AdoStandIn;
using test::Refusal;
using Lines = std::vector<std::string>;

/// A connection to a shop through ADO, which it keeps.
struct Shop {
    explicit Shop(const ShopDatabase& host) : ado(host.connection()) {}
    AdoStandIn ado;
    std::shared_ptr<DatabaseConnection> connection;
};

template <bool Own>
std::shared_ptr<DatabaseConnection> open(const ShopDatabase& host) {
    const auto shop = std::make_shared<Shop>(host);
    shop->connection =
        Own ? openAdo("Provider=SQLOLEDB;Data Source=shop") : shareAdo(shop->ado.connection().get());
    return {shop, shop->connection.get()};
}

class Ado : public testing::Test {
  protected:
    Ado() { host.execute("CREATE TABLE cash(amount money); INSERT INTO cash VALUES(0.05), (12.5)"); }
    DatabaseError failure(const std::string& text = "SELECT amount FROM cash") {
        return databaseErrorOf([&] { (void)shareAdo(given.get())->query({text}); });
    }

    ShopDatabase host = ShopDatabase::inMemory();
    AdoStandIn ado{host.connection()};
    com::Pointer<IDispatch> given = ado.connection();
    std::shared_ptr<DatabaseConnection> connection = shareAdo(given.get());
    const Query plain{"SELECT amount FROM cash"};
    Query daily{"SELECT ? AS day",
                CursorType::Static,
                LockType::Optimistic,
                {{"Data", "2026-11-05", dateTime(2026, 11, 5)}}};
};

TEST_F(Ado, GetsTextsAndDaysAsTheyAreAndTheConnectionStaysAsItIs) {
    EXPECT_EQ(rowsOf(connection->query(plain)), (Lines{"0.05", "12.5"}));
    EXPECT_EQ(connection->query(daily).recordCount(), 1);
    daily.parameters[0].text = "as typed";
    EXPECT_EQ(connection->query(daily).recordCount(), 1);
    const Lines made{"Recordset|SELECT amount FROM cash|object|3|1|-1",
                     "ActiveConnection|object",
                     "CommandTimeout|47",
                     "CommandType|1",
                     "Parameter|Data|133|1|0|2026-11-05",
                     "Append|object",
                     "Recordset|object|left out|3|3|-1",
                     "ActiveConnection|object",
                     "CommandTimeout|47",
                     "CommandType|1",
                     "Parameter|Data|133|1|0|11/05/2026",
                     "Append|object",
                     "Recordset|object|left out|3|3|-1"};
    EXPECT_EQ(ado.log, made);
    EXPECT_EQ(connection->timeout().count(), 47);
    connection.reset();
    EXPECT_EQ(ado.objects, 1) << "the host's";
    EXPECT_EQ(ado.openRecords, 0);
}

TEST_F(Ado, CellsOfAllTypesArriveExactly) {
    std::vector<com::Value> row;
    std::vector<Value> expected;
    std::string text = "SELECT 0";
    const auto cell = [&](VARTYPE type, const Value& value, const auto& fill) {
        VARIANT& made = *row.emplace_back();
        fill(made);
        made.vt = type;
        text += expected.empty() ? "" : ", 0";
        expected.push_back(value);
    };
    const auto decimal = [](ULONG high, std::uint64_t low, BYTE scale, BYTE sign = 0) {
        return [=](VARIANT& v) {
            v.decVal.Hi32 = high;
            v.decVal.Lo64 = low;
            v.decVal.scale = scale;
            v.decVal.sign = sign;
        };
    };
    using I = std::int64_t;
    constexpr I Least = std::numeric_limits<I>::min();
    cell(VT_EMPTY, Null{}, [](VARIANT&) {});
    cell(VT_I1, I{-128}, [](VARIANT& v) { v.cVal = -128; });
    cell(VT_UI1, I{255}, [](VARIANT& v) { v.bVal = 255; });
    cell(VT_I2, I{-32768}, [](VARIANT& v) { v.iVal = -32768; });
    cell(VT_UI2, I{65535}, [](VARIANT& v) { v.uiVal = 65535; });
    cell(VT_UI4, I{4294967295}, [](VARIANT& v) { v.ulVal = 4294967295; });
    cell(VT_I8, Least, [](VARIANT& v) { v.llVal = Least; });
    cell(VT_UI8, LongDecimal{"18446744073709551615"}, [](VARIANT& v) { v.ullVal = ~0ULL; });
    cell(VT_R4, 0.1, [](VARIANT& v) { v.fltVal = 0.1F; });
    cell(VT_CY, Decimal{Least, 4}, [](VARIANT& v) { v.cyVal.int64 = Least; });
    cell(VT_DECIMAL, Decimal{-1250, 2}, decimal(0, 1250, 2, DECIMAL_NEG));
    cell(VT_DECIMAL, Decimal{125, 18}, decimal(0, 12500, 20));
    cell(VT_DECIMAL, LongDecimal{"-79228162514264337593543950335"}, decimal(~0UL, ~0ULL, 0, DECIMAL_NEG));
    cell(VT_DECIMAL, LongDecimal{"0.0000000000000000001"}, decimal(0, 1, 19));
    cell(VT_DATE, TimeOfDayDate + std::chrono::hours(18), [](VARIANT& v) { v.date = 0.75; });
    cell(VT_DATE, dateTime(1899, 12, 28, std::chrono::hours(6)), [](VARIANT& v) { v.date = -2.25; });
    cell(VT_DATE, 1e9, [](VARIANT& v) { v.date = 1e9; });
    cell(VT_BSTR, std::string_view(), [](VARIANT& v) { v.bstrVal = nullptr; });
    cell(VT_ARRAY | VT_UI1, std::string_view("07FE"), [](VARIANT& v) {
        v.parray = SafeArrayCreateVector(VT_UI1, 0, 2);
        static_cast<BYTE*>(v.parray->pvData)[0] = 0x07;
        static_cast<BYTE*>(v.parray->pvData)[1] = 0xFE;
    });
    ado.row = &row;
    expectCells(connection->query({text}), {expected});

    row.clear();
    row.emplace_back(ado.object({}).get());
    EXPECT_EQ(failure("SELECT 0").sqlState(), "HY000") << "an object is no cell";
    connection.reset();
    EXPECT_EQ(ado.objects, 1) << "the row has been freed";
}

TEST_F(Ado, AnyCallMayFail) {
    for (const Refusal refusal : {Refusal::Explained, Refusal::ErrorObject, Refusal::Bare}) {
        for (const Query& query : {plain, daily}) {
            int failed = 0, calls = 0;
            for (int number = 1; number <= calls + 1; ++number) {
                connection = shareAdo(given.get()); // which knows no member yet
                ado.refuseCall(number, refusal);
                try {
                    (void)connection->query(query);
                } catch (const DatabaseError& error) {
                    ++failed;
                    const bool bare = error.number() == E_ACCESSDENIED;
                    EXPECT_NE(std::string(error.what()).find(bare ? "0x80070005" : test::RefusalText),
                              std::string::npos)
                        << error.what();
                }
                calls = ado.calls;
                EXPECT_EQ(ado.openRecords, 0) << number;
                ado.refuseCall(0, refusal);
                EXPECT_EQ(rowsOf(connection->query(plain)).size(), 2u) << number;
                connection.reset();
                ASSERT_EQ(ado.objects, 1) << number;
            }
            EXPECT_EQ(failed, calls - 5) << "all but those that close the record set, and the time-out";
        }
    }
}

TEST_F(Ado, FailuresHaveNumberStateAndText) {
    EXPECT_NE(std::string(failure("SELECT * FROM nowhere").what()).find("(SQLSTATE 42S02, native error 7)"),
              std::string::npos);
    ado.refuseCall(2, Refusal::Explained);
    EXPECT_EQ(failure().number(), QueryTimedOut) << "of the provider, behind an older error";
    ado.rowCounts = 2;
    EXPECT_EQ(rowsOf(connection->query(plain)).size(), 2u) << "behind counts of rows";
    ado.noRows = true;
    EXPECT_EQ(failure().sqlState(), "24000");
    ado.connectionState = 0;
    EXPECT_EQ(failure().number(), DatabaseError::NotConnected);
    for (const auto& [code, number] : {std::pair(HRESULT(0x800A0E7D), DatabaseError::NotConnected),
                                       {HRESULT(0x800A0E78), DatabaseError::NotConnected},
                                       {RPC_E_DISCONNECTED, DatabaseError::NotConnected},
                                       {HRESULT(0x800A0CC1), 3265},
                                       {E_FAIL, DatabaseError::Unspecified}}) {
        given = ado.object({{L"State", [code = code](test::AdoCall&) { throw code; }}});
        EXPECT_EQ(failure().number(), number);
    }
    given = ado.object({});
    EXPECT_NE(std::string(failure().what()).find("no Connection of ADO"), std::string::npos);
    EXPECT_EQ(shareAdo(nullptr), nullptr);
}

TEST_F(Ado, ASlowCallHasASignWhileItBlocksTheThreadOfTheWindows) {
    QtEventLoop loop;
    const RegionalSettings regional;
    QtUserInterface userInterface(loop, regional);
    const auto sign = [] { return FindWindowW(L"Static", L"reading"); };
    HWND tooEarly = nullptr;
    RECT place{};
    COLORREF edge = 0;
    const auto slow = [&](test::AdoCall&) {
        Sleep(150);
        tooEarly = sign();
        Sleep(1000);
        GetWindowRect(sign(), &place);
        edge = GetPixel(GetDC(nullptr), place.left, place.bottom - 2);
        throw E_FAIL;
    };
    const auto shared = shareAdo(ado.object({{L"State", slow}}).get());
    const auto words = [](std::chrono::seconds) { return "reading"; };
    const HWND front = GetForegroundWindow();
    EXPECT_THROW(userInterface.await({words, shared->onAnyThread()}, [&] { shared->query(plain); }),
                 DatabaseError);
    EXPECT_EQ(tooEarly, nullptr);
    EXPECT_EQ(edge, RGB(15, 98, 172)) << place.left << ' ' << place.bottom;
    EXPECT_EQ(sign(), nullptr) << "is gone";
    EXPECT_EQ(GetForegroundWindow(), front);
}

TEST_F(Ado, OpensWithTheTextAsItIsOrLeavesItToOthers) {
    const std::string text = " Provider=SQLOLEDB;Password=\"a;'b\"";
    EXPECT_NE(Databases().open(text), nullptr);
    EXPECT_THROW(Databases().open("Provider=MSDASQL;Driver={none}"), DatabaseError);
    EXPECT_EQ(ado.log, (Lines{"ConnectionString|" + text, "Open||||-1"}));
    ado.opening = E_NOTIMPL;
    EXPECT_EQ(openAdo(text), nullptr);
    ado.opening = E_FAIL;
    EXPECT_EQ(databaseErrorOf([&] { openAdo(text); }).number(), DatabaseError::Unspecified);
    EXPECT_EQ(ado.objects, 1) << "the host's";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Ado, DatabaseContract,
                         testing::Values(DatabaseAdapter{"Shared", open<false>},
                                         DatabaseAdapter{"Opened", open<true>}),
                         [](const auto& adapter) { return adapter.param.name; });

} // namespace kova
