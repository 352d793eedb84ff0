#pragma once
#include "shop.h"

#include <chrono>
#include <filesystem>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace kova::bench {

/// Bytes on the heap, as the C library counts them.
inline double heapInUse() {
    const auto info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

inline double seconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

/// A database file with a day of so many movements: seven columns in the list, of which one is a date-time,
/// one money, and the rest texts. A plain table stands in for the shop's view, so that reading it costs as
/// little as it can.
class DayFile {
  public:
    static constexpr const char* Day = "02/11/2026";

    explicit DayFile(std::int64_t rows) : database(create(name_)) {
        database.createSchema();
        database.loadSample();
        const std::string count = std::to_string(rows);
        database.execute(
            "DROP VIEW Report_Drawer_Operation; "
            "CREATE TABLE Report_Drawer_Operation([Data Operazione] datetime, [Tipo Operazione] text, "
            "[Tipo Pagamento] text, importo money, Valuta text, [Note Movimento] text, Ordinamento int, "
            "[Operatore] text, idCassa int, idUtente int)");
        database.execute(
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " + count +
            ") INSERT INTO Report_Drawer_Operation SELECT datetime('2026-11-02', (i * 86399 / " + count +
            ") || ' seconds'), substr('Prelievo   Versamento EccedenzaCa', 1 + 11 * (i % 3), 11), "
            "substr('Contanti    Carta credito', 1 + 12 * (i % 2), 12), "
            "(i * 7919 % 200000 - 100000) / 100.0, iif(i % 5, '€', 'CHF'), "
            "'Nota del movimento ' || (i % 1000), 10, 'Operatore ' || (i % 7), 1, 1 FROM n");
    }
    DayFile(const DayFile&) = delete;
    DayFile& operator=(const DayFile&) = delete;
    ~DayFile() { std::filesystem::remove(name_); }

    [[nodiscard]] const std::string& name() const { return name_; }
    /// What the list asks for, in SQLite's own dialect.
    [[nodiscard]] static std::string query() {
        return "SELECT [Data Operazione], [Tipo Operazione], [Tipo Pagamento], importo, Valuta, [Note "
               "Movimento], "
               "[Operatore] FROM Report_Drawer_Operation WHERE [Data Operazione] BETWEEN '2026-11-02 "
               "00:00:00' AND "
               "'2026-11-02 23:59:59' ORDER BY Ordinamento, [Data operazione]";
    }

  private:
    static ShopDatabase create(const std::string& name) {
        std::filesystem::remove(name);
        return ShopDatabase::openFile(name);
    }
    std::string name_ = (std::filesystem::temp_directory_path() /
                         ("kova-movements-bench-" + std::to_string(getpid()) + ".sqlite"))
                            .string();

  public:
    ShopDatabase database;
};

/// The list on the movements tab of a dialog that reads such a file.
class MovementsTab {
  public:
    MovementsTab(Shop& shop, const std::shared_ptr<DatabaseConnection>& day) : shop_(shop) {
        shop_.component().Inizializza(day);
        shop_.component().SetSoftwareName("FALCA");
        shop_.component().Show(0);
        shop_.control<TabControl>("TabControl").touchTab(1);
        shop_.control<DateField>("comboData").paste(DayFile::Day);
    }
    void load() { shop_.control<PushButton>("cmdCaricaMovimenti").press(); }
    ReportGrid& grid() { return shop_.control<ReportGrid>("grd_mov_giornata"); }

  private:
    Shop& shop_;
};

/// Columns of the list.
inline constexpr std::size_t ActivityColumn = 1, AmountColumn = 3;

} // namespace kova::bench
