using System;
using System.Data;
using System.Globalization;
using Kova.Drawer;
using Mono.Data.Sqlite;

/// <summary>A till in C#: two cashiers after each other, and a journal of what they did. mono Till.exe SHOP JOURNAL
///
/// SHOP is a file of the embedded database or a connection text; JOURNAL is an SQLite file of the till's own.</summary>
sealed class Till
{
    const string Currency = "CHF"; // in which this till is booked, whatever the dialog proposed
    const int Activity = 30; // under which its movements are booked
    const string Tables = "CREATE TABLE IF NOT EXISTS movements (idpagamento INTEGER, importo REAL, Valuta TEXT, " +
        "note TEXT, cassetto INTEGER, tipoIncasso INTEGER, isIncasso INTEGER);" +
        "CREATE TABLE IF NOT EXISTS requests (event TEXT, day TEXT);";

    readonly IDbConnection journal;
    bool closed;

    Till(IDbConnection journal)
    {
        this.journal = journal;
        Execute(Tables);
    }

    /// <summary>The cashier keeps what was entered and reads the message when this throws.</summary>
    void Save(object sender, MovementEventArgs movement)
    {
        Console.WriteLine("event SalvaPagamento idpagamento={0} importo={1} Valuta=\"{2}\" note=\"{3}\" cassetto={4} " +
            "tipoIncasso={5} isIncasso={6}", movement.IdPagamento, Amount(movement.Importo), movement.Valuta,
            movement.Note, movement.Cassetto, movement.TipoIncasso, movement.IsIncasso);
        movement.Valuta = Currency; // what is written here reaches the dialog
        movement.TipoIncasso = Activity;
        if (closed)
        {
            closed = false; // the entry may be confirmed again
            throw new InvalidOperationException("The day is closed. Confirm again to enter this in the next one.");
        }
        Execute("INSERT INTO movements VALUES (?,?,?,?,?,?,?)", movement.IdPagamento, movement.Importo,
            movement.Valuta, movement.Note, movement.Cassetto, movement.TipoIncasso, movement.IsIncasso);
    }

    void Print(object sender, DayEventArgs day)
    {
        Console.WriteLine("event Stampa DataOperazione=\"{0}\"", day.DataOperazione);
        Request("Stampa", day);
        closed = true;
    }

    void Preview(object sender, DayEventArgs day)
    {
        Console.WriteLine("event Anteprima DataOperazione=\"{0}\"", day.DataOperazione);
        Request("Anteprima", day);
    }

    void OpenDrawer(object sender, EventArgs nothing)
    {
        Console.WriteLine("event ApriCassetto");
        Execute("INSERT INTO requests VALUES (?,?)", "ApriCassetto", null);
    }

    /// <summary>What the cashier left in the list's date field need not be a date: then nothing is printed.</summary>
    void Request(string name, DayEventArgs args)
    {
        DateTime? day = KovaLibrary.ParseDate(args.DataOperazione);
        if (day != null)
            Execute("INSERT INTO requests VALUES (?,?)", name,
                day.Value.ToString("yyyy-MM-dd", CultureInfo.InvariantCulture));
    }

    void Execute(string statement, params object[] values)
    {
        using (var command = journal.CreateCommand())
        {
            command.CommandText = statement;
            foreach (var value in values)
            {
                var parameter = command.CreateParameter();
                parameter.Value = value ?? DBNull.Value;
                command.Parameters.Add(parameter);
            }
            command.ExecuteNonQuery();
        }
    }

    static string Amount(double amount)
    {
        return amount.ToString(CultureInfo.InvariantCulture);
    }

    static int Main(string[] arguments)
    {
        string shop = arguments[0];
        try
        {
            using (var journal = new SqliteConnection("Data Source=" + arguments[1]))
            using (var drawer = new DrawerMan())
            {
                journal.Open();
                var till = new Till(journal);
                drawer.SalvaPagamento += till.Save;
                drawer.Stampa += till.Print;
                drawer.Anteprima += till.Preview;
                drawer.ApriCassetto += till.OpenDrawer;
                drawer.HandlerFailed += (sender, failed) =>
                    Console.Error.WriteLine("{0} refused: {1}", failed.EventName, failed.Exception.Message);
                // InizializzaByConnString would keep a failure to itself; a database of our own tells it.
                using (var database = new Database(shop.Contains("=") ? shop : "Data Source=" + shop))
                    drawer.Inizializza(database);
                drawer.IdCassa = 1;
                KovaLibrary.SetLanguage(KovaLibrary.Italian, "Italiano");
                drawer.Show(); // returns when the first cashier has closed it

                // The next cashier reads German, and pays elsewhere what is taken out here.
                KovaLibrary.SetLanguage(KovaLibrary.German, "Deutsch");
                drawer.SetSoftwareName("Cassa");
                drawer.DoppioInserimentoObbligatorio = true;
                drawer.Show();
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
