using System;
using System.Data;
using System.Globalization;
using Kova.Drawer;
using Mono.Data.Sqlite;

/// <summary>A till of two cashiers, who work one after the other: it stores their movements in its database, books in
/// francs, and once the day has been printed asks again before it takes more. mono Till.exe SHOP.db</summary>
sealed class Till
{
    const int Number = 1, PaidIn = 30;

    readonly IDbConnection database;
    bool periodClosed;

    Till(IDbConnection database)
    {
        this.database = database;
    }

    /// <summary>The cashier keeps what was entered and reads the message when this throws.</summary>
    void Save(object sender, MovementEventArgs movement)
    {
        Console.WriteLine("event SalvaPagamento idpagamento={0} importo={1} Valuta=\"{2}\" note=\"{3}\" cassetto={4} " +
            "tipoIncasso={5} isIncasso={6}", movement.IdPagamento, Amount(movement.Importo), movement.Valuta,
            movement.Note, movement.Cassetto, movement.TipoIncasso, movement.IsIncasso);
        movement.Valuta = "CHF"; // stays chosen
        movement.TipoIncasso = PaidIn;
        if (periodClosed)
        {
            periodClosed = false;
            throw new InvalidOperationException("Il periodo è chiuso");
        }
        Store(movement);
    }

    void Print(object sender, DayEventArgs day)
    {
        Console.WriteLine("event Stampa DataOperazione=\"{0}\"", day.DataOperazione);
        Print(day.DataOperazione);
        periodClosed = true;
    }

    void Preview(object sender, DayEventArgs day)
    {
        Console.WriteLine("event Anteprima DataOperazione=\"{0}\"", day.DataOperazione);
        Print(day.DataOperazione);
    }

    void Store(MovementEventArgs movement)
    {
        using (var insert = Command("INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione, " +
            "idpagamento, Coefficiente, ImportoIncassato, Valuta, Note, Cassetto, idCassa) VALUES (?, ?, ?, ?, ?, ?, ?, " +
            "?, ?)", DateTime.Now.ToString("yyyy-MM-dd HH:mm:ss", CultureInfo.InvariantCulture), movement.TipoIncasso,
            movement.IdPagamento, movement.IsIncasso ? 1 : -1, movement.Importo, movement.Valuta, movement.Note,
            movement.Cassetto, Number))
            insert.ExecuteNonQuery();
    }

    /// <summary>What the cashier left in the list's date field need not be a date.</summary>
    void Print(string text)
    {
        DateTime? day = KovaLibrary.ParseDate(text);
        if (day == null)
            return;
        Console.WriteLine("Till {0}, {1}", Number, KovaLibrary.FormatDate(day.Value));
        using (var sums = Command("SELECT Valuta, count(*), sum(Coefficiente * ImportoIncassato) FROM " +
            "tabPagamentiScontriniBackoffice WHERE date(DataOperazione) = ? AND idCassa = ? GROUP BY Valuta",
            day.Value.ToString("yyyy-MM-dd", CultureInfo.InvariantCulture), Number))
        using (var row = sums.ExecuteReader())
            while (row.Read())
                Console.WriteLine("{0} {1} ({2})", row[0], KovaLibrary.FormatAmount(Convert.ToDouble(row[2]), 2), row[1]);
    }

    void ListStored()
    {
        using (var query = Command("SELECT idpagamento, ImportoIncassato, Valuta, Note, Cassetto, TipoOperazione, " +
            "Coefficiente FROM tabPagamentiScontriniBackoffice ORDER BY id"))
        using (var row = query.ExecuteReader())
            while (row.Read())
                Console.WriteLine("row {0} {1} {2} {3} {4} {5} {6}", row[0], Amount(Convert.ToDouble(row[1])), row[2],
                    row[3], row[4], row[5], row[6]);
    }

    IDbCommand Command(string text, params object[] values)
    {
        var command = database.CreateCommand();
        command.CommandText = text;
        foreach (var value in values)
        {
            var parameter = command.CreateParameter();
            parameter.Value = value;
            command.Parameters.Add(parameter);
        }
        return command;
    }

    static string Amount(double amount)
    {
        return amount.ToString(CultureInfo.InvariantCulture);
    }

    static int Main(string[] arguments)
    {
        try
        {
            using (var database = new SqliteConnection("Data Source=" + arguments[0]))
            using (var drawer = new DrawerMan())
            // InizializzaByConnString would keep a failure to itself; a database of our own tells it.
            using (var catalogues = new Database("Data Source=" + arguments[0]))
            {
                database.Open();
                var till = new Till(database);
                drawer.SalvaPagamento += till.Save;
                drawer.Stampa += till.Print;
                drawer.Anteprima += till.Preview;
                drawer.ApriCassetto += (sender, nothing) => Console.WriteLine("event ApriCassetto");
                drawer.HandlerFailed += (sender, failed) =>
                    Console.Error.WriteLine("{0} refused: {1}", failed.EventName, failed.Exception.Message);
                drawer.Inizializza(catalogues);
                drawer.IdCassa = Number;

                KovaLibrary.SetLanguage(KovaLibrary.Italian, "Italiano");
                drawer.Show(); // returns when the first cashier has closed it

                KovaLibrary.SetLanguage(KovaLibrary.German, "Deutsch");
                drawer.SetSoftwareName("Cassa");
                drawer.DoppioInserimentoObbligatorio = true;
                drawer.Show();
                till.ListStored();
            }
            return 0;
        }
        catch (KovaException failure)
        {
            Console.Error.WriteLine("{0} ({1})", failure.Message, failure.Number);
            return 1;
        }
    }
}
