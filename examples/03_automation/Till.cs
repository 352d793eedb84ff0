// Untried: Mono's compiler has compiled it, and nobody has run it yet.
// A till in C#, single-threaded apartment. Its argument is a connection text.
//
// Late bound below, without any reference, for .NET Framework and .NET 8 alike; the events need the interface of
// the assembly that tlbimp makes, or the few lines of it that stand here.
using System;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;

// What the type library says of the events: the same identifier, dispatch ids and order of arguments.
[ComVisible(true), Guid("7FB8BCEC-157A-4CEE-8FC2-CB7A3539810F"), InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
public interface IDrawerEvents
{
    [DispId(1)]
    void SalvaPagamento(ref int idpagamento, ref double importo, [MarshalAs(UnmanagedType.BStr)] ref string Valuta,
        [MarshalAs(UnmanagedType.BStr)] ref string note, ref short cassetto, ref int tipoIncasso,
        [MarshalAs(UnmanagedType.VariantBool)] ref bool isIncasso);
    [DispId(2)] void Stampa([MarshalAs(UnmanagedType.BStr)] ref string DataOperazione);
    [DispId(3)] void Anteprima([MarshalAs(UnmanagedType.BStr)] ref string DataOperazione);
    [DispId(4)] void ApriCassetto();
}

[ComVisible(true), ClassInterface(ClassInterfaceType.None)]
public sealed class Till : IDrawerEvents
{
    private readonly System.Text.StringBuilder stored = new System.Text.StringBuilder();

    // Store the movement here; throw if you cannot, and the cashier keeps the entry and reads why. What is written
    // into an argument reaches the component.
    public void SalvaPagamento(ref int idpagamento, ref double importo, ref string Valuta, ref string note,
        ref short cassetto, ref int tipoIncasso, ref bool isIncasso)
    {
        if (importo > 1000)
        {
            Console.WriteLine("refused " + importo);
            throw new InvalidOperationException("More than 1000 is the manager's");
        }
        stored.Append($"\n{(isIncasso ? "in" : "out")} {importo} {Valuta}, payment {idpagamento}, drawer {cassetto}, " +
            $"activity {tipoIncasso}: {note}");
    }

    public void Stampa(ref string DataOperazione) => Console.WriteLine("print " + DataOperazione);
    public void Anteprima(ref string DataOperazione) => Console.WriteLine("preview " + DataOperazione);
    public void ApriCassetto() => Console.WriteLine("open the drawer");

    [STAThread]
    public static void Main(string[] arguments)
    {
        Console.OutputEncoding = System.Text.Encoding.UTF8;
        var till = new Till();
        dynamic drawer = Activator.CreateInstance(
            Type.GetTypeFromProgID("Kova_Drawer_Man.cls_Kova_Drawer_Man", true));
        var events = typeof(IDrawerEvents).GUID;
        ((IConnectionPointContainer)drawer).FindConnectionPoint(ref events, out IConnectionPoint point);
        point.Advise(till, out int cookie);
        drawer.InizializzaByConnString(arguments[0]);
        drawer.idCassa = 1;
        drawer.Show(); // returns when the dialog has been closed
        Console.WriteLine("stored:" + till.stored);
        point.Unadvise(cookie);
        Marshal.ReleaseComObject(drawer);
    }
}

// With the assembly of tlbimp, .NET Framework, instead of the interface and the lines of Main above:
//
//   tlbimp Kova_Drawer_Man.tlb /out:Interop.Kova_Drawer_Man.dll
//
//   var drawer = new Kova_Drawer_Man.cls_Kova_Drawer_Man();
//   drawer.SalvaPagamento += (ref int payment, ref double amount, ref string currency, …) => { … };
//
// The class has the method and the event SalvaPagamento under one name, which C# takes for the method; the event is reached
// by a cast to the event interface that tlbimp generates, __cls_Kova_Drawer_Man_Event.
