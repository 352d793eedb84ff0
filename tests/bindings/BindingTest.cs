using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.Globalization;
using System.Linq;
using System.Runtime.InteropServices;
using System.Threading;
using Kova.Drawer;

/// <summary>The binding against the real library, on a thread that is not the process's first.</summary>
static class BindingTest
{
    static int failures;

    static void Expect(bool condition, string what)
    {
        if (condition)
            return;
        ++failures;
        Console.Error.WriteLine("FAILED: " + what);
    }

    static E Thrown<E>(Action call) where E : Exception
    {
        try
        {
            call();
        }
        catch (E exception)
        {
            return exception;
        }
        throw new Exception("no " + typeof(E));
    }

    static MovementEventArgs Movement()
    {
        return new MovementEventArgs
        {
            IdPagamento = 1, Importo = 12.5, Valuta = "€", Note = "Prüfung", Cassetto = 2, TipoIncasso = 9
        };
    }

    static string Line(MovementEventArgs movement)
    {
        return string.Format(CultureInfo.InvariantCulture, "{0} {1} {2} {3} {4} {5} {6}", movement.IdPagamento,
            movement.Importo, movement.Valuta, movement.Note, movement.Cassetto, movement.TipoIncasso,
            movement.IsIncasso);
    }

    static void Members(DrawerMan drawer)
    {
        drawer.IdCassa = 7;
        drawer.ChiusuraAutomatica = true;
        drawer.ValutaAziendale = "Fr. – 𝄞";
        Expect(drawer.IdCassa == 7 && drawer.ChiusuraAutomatica && drawer.ValutaAziendale == "Fr. – 𝄞",
            "properties keep what is set");
        drawer.Set("IDCASSA", "12");
        drawer.Set(Member.ChiusuraAutomatica, 0);
        Expect(drawer.Get(Member.IdCassa).Equals(12) && drawer.Get("ChiusuraAutomatica").Equals(false) &&
            drawer.Get("valutaaziendale").Equals("Fr. – 𝄞"), "by name and id, too");
        Expect(Thrown<KovaException>(() => drawer.Get("Missing")).Number == 438, "a member that there is not");
        Expect(Thrown<DatabaseException>(() => new Database("Driver=none")).SqlState.Length == 5,
            "a database that refuses");
        var day = KovaLibrary.ParseDate("16/11/2026");
        Expect(day != null && KovaLibrary.FormatDate(day.Value) == "16/11/2026" &&
            KovaLibrary.ParseDate("31/02/2026") == null && KovaLibrary.FormatAmount(-1234.565, 2) == "-1.234,57",
            "dates and amounts are the dialog's");
    }

    static void Events(DrawerMan drawer)
    {
        var seen = new List<string>();
        Exception failing = null, told = null;
        EventHandler<MovementEventArgs> save = (sender, movement) =>
        {
            seen.Add(Line(movement));
            movement.IdPagamento += 1;
            movement.Importo += 1;
            movement.Valuta = "CHF";
            movement.Note += "𝄞";
            movement.Cassetto += 1;
            movement.TipoIncasso += 1;
            movement.IsIncasso = !movement.IsIncasso;
            if (failing != null)
                throw failing;
        };
        drawer.SalvaPagamento += save;
        drawer.SalvaPagamento += save;
        drawer.HandlerFailed += (sender, failed) => told = failed.Exception;
        drawer.Stampa += (sender, args) => args.DataOperazione = "17/11/2026";
        var saved = Movement();
        drawer.RaiseSalvaPagamento(saved);
        Expect(seen.SequenceEqual(new[] {"1 12.5 € Prüfung 2 9 False", "2 13.5 CHF Prüfung𝄞 3 10 True"}) &&
            Line(saved) == "3 14.5 CHF Prüfung𝄞𝄞 4 11 False", "values are written back: " + Line(saved));
        failing = new InvalidOperationException("The period is closed");
        var failure = Thrown<KovaException>(() => drawer.RaiseSalvaPagamento(saved));
        Expect(failure.InnerException == failing && told == failing && failure.Number == 513 &&
            failure.Message == "The period is closed" && seen.Count == 3 && Line(saved).StartsWith("4 15.5"),
            "a handler's exception is its failure");
        failing = new KovaException(77, "Ha già chiuso");
        failure = Thrown<KovaException>(() => drawer.RaiseSalvaPagamento(saved));
        Expect(failure.Number == 77 && failure.Message == "Ha già chiuso", "with a number of its own");
        var arguments = new object[] {1, 2, 3, 4, 5, 6, 1};
        Thrown<KovaException>(() => drawer.Invoke("salvapagamento", arguments));
        Expect(arguments.SequenceEqual(new object[] {2, 3.0, "CHF", "4𝄞", (short)6, 7, false}),
            "by name, too: " + string.Join(" ", arguments));
        var day = new DayEventArgs("16/11/2026");
        drawer.RaiseStampa(day);
        Expect(day.DataOperazione == "17/11/2026", "a day is written back");
        drawer.Stampa += (sender, args) => drawer.Dispose();
        drawer.RaiseStampa(day);
        Expect(Thrown<KovaException>(() => drawer.RaiseStampa(day)).Status == KovaStatus.InvalidHandle,
            "a handler disposes of the component");
    }

    [StructLayout(LayoutKind.Sequential)]
    struct Mallinfo
    {
        internal UIntPtr Arena, Ordblks, Smblks, Hblks, Hblkhd, Usmblks, Fsmblks, Uordblks, Fordblks, Keepcost;
    }

    [DllImport("libc.so.6")] static extern Mallinfo mallinfo2();

    /// <summary>Bytes that this process has from malloc, where all threads share one arena.</summary>
    static long Allocated()
    {
        for (int i = 0; i < 2; ++i)
        {
            GC.Collect();
            GC.WaitForPendingFinalizers();
        }
        var all = mallinfo2();
        return (long)(all.Uordblks.ToUInt64() + all.Hblkhd.ToUInt64());
    }

    static void ManyEvents(DrawerMan drawer)
    {
        int count = 0, failed = 0;
        drawer.SalvaPagamento += (sender, movement) =>
        {
            ++count;
            movement.IdPagamento += 1;
            movement.Note = "n" + movement.IdPagamento;
            if (movement.IdPagamento % 1000 == 0)
                GC.Collect(); // with the library's calls on the stack
            if (movement.IdPagamento % 100 == 0)
                throw new Exception("every hundredth");
        };
        drawer.HandlerFailed += (sender, args) => { };
        var saved = Movement();
        Action events = () =>
        {
            saved.IdPagamento = 0;
            for (int i = 1; i <= 10000; ++i)
            {
                try
                {
                    drawer.RaiseSalvaPagamento(saved);
                }
                catch (KovaException)
                {
                    ++failed;
                }
                if (saved.IdPagamento != i || saved.Note != "n" + i)
                    throw new Exception("lost at " + i);
            }
        };
        events();
        count = failed = 0;
        long before = Allocated(), heapBefore = GC.GetTotalMemory(true);
        var watch = Stopwatch.StartNew();
        events();
        watch.Stop();
        long grown = Allocated() - before, heapGrown = GC.GetTotalMemory(true) - heapBefore;
        Console.WriteLine("10000 events: {0} ms, memory {1} bytes, heap {2}", watch.ElapsedMilliseconds, grown, heapGrown);
        Expect(count == 10000 && failed == 100, "events are lost");
        Expect(grown < 200000 && heapGrown < 200000, "memory grows");
    }

    /// <summary>Components that nothing knows any more.</summary>
    static List<WeakReference> Left()
    {
        var left = new List<WeakReference>();
        for (int i = 0; i < 20; ++i)
        {
            using (var drawer = new DrawerMan())
            {
                GC.Collect();
                drawer.RaiseApriCassetto();
                left.Add(new WeakReference(drawer));
            }
        }
        return left;
    }

    static void Dialog(DrawerMan drawer, string shop)
    {
        int closed = 0;
        using (var database = new Database("Data Source=" + shop))
            drawer.Inizializza(database);
        drawer.Closed += (sender, args) => ++closed;
        drawer.Show(0);
        Expect(drawer.IsOpen, "a dialog opens");
        GC.Collect();
        drawer.DiscardForm();
        var watch = Stopwatch.StartNew();
        while (closed == 0 && watch.ElapsedMilliseconds < 5000)
            KovaLibrary.ProcessEvents();
        Expect(!drawer.IsOpen && closed == 1, "and closes, which the host hears");
        Expect(KovaLibrary.EventDescriptor >= 0 && KovaLibrary.FontFamily != "", "what hosts with a loop need");
    }

    static void Test(string shop)
    {
        try
        {
            using (DrawerMan drawer = new DrawerMan(), another = new DrawerMan())
            {
                Members(drawer);
                Events(drawer);
                ManyEvents(another);
                Dialog(another, shop);
                var left = Left();
                Allocated();
                Expect(left.Count(reference => reference.IsAlive) < 5, "components are let go"); // a stack may look so
                var stray = new Thread(() => Expect(
                    Thrown<KovaException>(() => another.Show(0)).Status == KovaStatus.WrongThread,
                    "another thread is refused"));
                stray.Start();
                stray.Join();
            }
            KovaLibrary.ShutDown();
        }
        catch (Exception exception)
        {
            ++failures;
            Console.Error.WriteLine(exception);
        }
    }

    static int Main(string[] arguments)
    {
        var drawerThread = new Thread(() => Test(arguments[0]));
        drawerThread.Start();
        drawerThread.Join();
        return failures == 0 ? 0 : 1;
    }
}
