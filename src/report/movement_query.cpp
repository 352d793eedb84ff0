#include "report/movement_query.h"

#include "base/ascii_text.h"
#include "services/conversions.h"
#include "services/message_box.h"
#include "services/parent_component.h"
#include "services/process_state.h"
#include "widgets/report_grid.h"

#include <array>

namespace kova {
namespace {

constexpr std::int32_t CriticalIcon = 16;
constexpr int ColumnWidth = 20; ///< characters
constexpr double RowPoints = 10;
constexpr std::size_t TimeField = 0; ///< of a movement, in each query

bool readsViews(const std::string& softwareName) {
    return softwareName == "FALCA" || softwareName == "MIRANTE";
}

/// The restriction to a till and to a user, as the component's options ask.
std::string filterSuffix(const ComponentOptions& options) {
    std::string suffix;
    if (options.idCassa != -1)
        suffix += " AND idCassa = " + std::to_string(options.idCassa);
    if (options.VisualizzaMovimentiUtenteLoggato)
        suffix += " AND idUtente = " + std::to_string(options.idUtente);
    return suffix;
}

/// Today's movements have a view of their own.
std::string viewOf(DateTime day, DateTime now) {
    return day == std::chrono::floor<std::chrono::days>(now) ? "[Report_Drawer_Daily_Operation]"
                                                             : "[Report_Drawer_Operation]";
}

std::string between(const SqlDateFormatter& formatter, const std::string& date) {
    return " BETWEEN " + formatter.FormatSqlDate(date) + " and " +
           formatter.FormatSqlDate(date + " 23:59.59");
}

std::string viewQuery(const std::string& view, const std::string& date, const SqlDateFormatter& formatter,
                      const ComponentOptions& options) {
    return " SELECT [Data Operazione] as [Data-Ora Aggiornamento], [Tipo Operazione], [Tipo Pagamento], "
           "importo, Valuta, [Note Movimento], [Operatore] "
           " FROM [dbo]." +
           view +
           " "
           " WHERE [dbo]." +
           view + ".[Data Operazione]" + between(formatter, date) + filterSuffix(options) +
           " ORDER BY Ordinamento , [Data operazione] ";
}

std::string unionQuery(const std::string& view, const std::string& date, const SqlDateFormatter& formatter,
                       const ComponentOptions& options) {
    std::string text = "SELECT"
                       " [Data-Ora Aggiornamento] , [Tipo Operazione], [Tipo Pagamento], Importo, Valuta, "
                       "[Note Movimento], [Operatore]"
                       " FROM ("
                       " SELECT [Data Operazione] as [Data-Ora Aggiornamento],  [Tipo Operazione], "
                       "[Tipo Pagamento], importo, Valuta, [Note Movimento] ,Ordinamento, [Operatore]  "
                       "FROM [dbo]." +
                       view + " WHERE [dbo]." + view + ".[Data Operazione]" + between(formatter, date);
    text += filterSuffix(options);
    text += " UNION"
            " SELECT [Data Operazione] as [Data-Ora Aggiornamento], [Tipo Operazione], [Tipo Pagamento], "
            "importo, Valuta, [Note Movimento] ,Ordinamento, [Operatore]  "
            "FROM [dbo].[Report_NonFiscale_Operation]"
            " WHERE [dbo].[Report_NonFiscale_Operation].[Data Operazione]" +
            between(formatter, date);
    text += filterSuffix(options);
    return text + " ) AS T"
                  " ORDER BY T.Ordinamento, T.[Data-Ora Aggiornamento]";
}

std::string isoDate(DateTime time) {
    const std::chrono::year_month_day day(std::chrono::floor<std::chrono::days>(time));
    return std::to_string(static_cast<int>(day.year())) + '-' +
           twoDigits(static_cast<unsigned>(day.month())) + '-' + twoDigits(static_cast<unsigned>(day.day()));
}

Query movementQuery(ProcessState& process, const std::string& date, DateTime when,
                    const ComponentOptions& options) {
    auto& formatter = process.sqlDateFormatter();
    formatter.SetMode(1);
    if (!readsViews(process.SoftwareName))
        return {
            " SELECT [Data-Ora Aggiornamento] ,[Cassetto],[Tipo Operazione],[Tipo Pagamento],importo,valuta,"
            "[Note Movimento], [Operatore] from [dbo].[GetDailyOperation](?)",
            CursorType::Static,
            LockType::ReadOnly,
            {{"Data", date, std::chrono::floor<std::chrono::days>(when)}}};
    const std::string view = viewOf(when, process.platform.clock.now());
    return {options.AttivaVisualizzazionePrecontiDefinitivi ? unionQuery(view, date, formatter, options)
                                                            : viewQuery(view, date, formatter, options)};
}

/// The labels that the shops' views know in Italian only.
std::string_view inGerman(std::string_view cell) {
    struct Label {
        std::string_view italian, german;
    };
    static constexpr std::array<Label, 4> Labels{{{"scontrini incassati", "Empfangen Gesammelt"},
                                                  {"fatture incassate", "Rechnungen Gesammelt"},
                                                  {"ricevute incassate", "Quittungen Gesammelt"},
                                                  {"non fiscale", "Nicht-Steuer"}}};
    for (const auto& label : Labels)
        if (equalIgnoringCase(cell, label.italian))
            return label.german;
    return cell;
}

/// A cell as it is listed; one that is no text is written into `buffer`.
std::string_view textOf(const Value& value, std::string& buffer, const RegionalSettings& regional) {
    if (const auto* const text = std::get_if<std::string_view>(&value))
        return *text;
    buffer.clear();
    appendText(buffer, value, regional);
    return buffer;
}

/// What is listed, apart from the list: it is filled beside the user interface's thread.
struct Movements {
    std::vector<std::string> captions;
    TextTable records;
    std::optional<std::size_t> newest;
};

void addMovements(Movements& movements, Recordset rows, const RegionalSettings& regional, bool german) {
    const std::size_t fields = rows.fieldCount();
    for (std::size_t i = 0; i < fields; ++i)
        movements.captions.push_back(rows.fieldName(i));
    std::string buffer;
    DateTime newest = DateTime::min();
    for (std::size_t j = 0; !rows.endOfFile(); ++j, rows.moveNext()) {
        movements.records.addRecord();
        for (std::size_t i = 0; i < fields; ++i) {
            const Value value = rows.field(i);
            const auto* const time = i == TimeField ? std::get_if<DateTime>(&value) : nullptr;
            if (time != nullptr && *time >= newest) {
                newest = *time;
                movements.newest = j;
            }
            const std::string_view cell = textOf(value, buffer, regional);
            movements.records.addItem(j, german ? inGerman(cell) : cell);
        }
    }
}

/// Reads the movements into the emptied list; as far as they came when it fails.
void fillGrid(ProcessState& process, ReportGrid& grid, Query query) {
    Movements movements{.captions = {}, .records = grid.takeRecords(), .newest = {}};
    ended(
        [&] {
            process.query(std::move(query), Word::ReadingMovements, [&](Recordset rows) {
                addMovements(movements, std::move(rows), process.platform.regional,
                             process.CurrentLanguageId == language::German);
            });
        },
        [&] {
            for (const std::string& caption : movements.captions)
                grid.addColumn(static_cast<int>(grid.columns().size()), caption, ColumnWidth, true);
            grid.giveRecords(std::move(movements.records));
            if (movements.newest)
                grid.setNewest(*movements.newest);
        });
}

} // namespace

void carica_Movimenti_Giornata(ProcessState& process, ReportGrid& grid, const std::string& date,
                               const ComponentOptions& options) {
    trapped(process, "carica_Movimenti_Giornata", [&] {
        const auto when = parseDate(date, process.platform.regional);
        if (!when) {
            ShowMessage(process, "Impostare correttamente la data selezionata", CriticalIcon, "Messaggio");
            return;
        }
        grid.deleteRecords();
        grid.deleteColumns();
        try {
            fillGrid(process, grid, movementQuery(process, date, *when, options));
        } catch (...) {
            grid.breakOff();
            throw;
        }
        grid.setFileName("movimenti-" + isoDate(*when) + ".csv");
        grid.populate();
        grid.setRowPoints(RowPoints);
    });
}

std::string movementRequest(ProcessState& process, const std::string& date, const ComponentOptions& options) {
    const auto when = parseDate(date, process.platform.regional);
    if (!when)
        return {};
    const Query query = movementQuery(process, date, *when, options);
    std::string request = query.text;
    for (const DateParameter& parameter : query.parameters)
        request += isoDate(parameter.value);
    return request;
}

} // namespace kova
