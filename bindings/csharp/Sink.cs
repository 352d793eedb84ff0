using System;
using System.Collections.Generic;
using System.Runtime.InteropServices;

namespace Kova.Drawer
{
    /// <summary>The way from the library to a host's handlers. The functions that the library calls are there once and
    /// for ever; whose handlers are meant, it says by a number, so that nothing which the garbage collector moves or
    /// takes is in its hands.</summary>
    static class Sink
    {
        /// <summary>Of an exception that has no number of its own.</summary>
        const int HandlerFailed = 513;

        static readonly Native.SaveHandler salvaPagamento = SalvaPagamento;
        static readonly Native.DayHandler stampa = (user, day) =>
            Deliver("Stampa", user, drawer => WithDay(day, drawer.OnStampa));
        static readonly Native.DayHandler anteprima = (user, day) =>
            Deliver("Anteprima", user, drawer => WithDay(day, drawer.OnAnteprima));
        static readonly Native.PlainHandler apriCassetto = user =>
            Deliver("ApriCassetto", user, drawer => drawer.OnApriCassetto());
        static readonly Native.Notice closed = user =>
            Deliver("Closed", user, drawer => drawer.OnClosed());
        static readonly Native.Notice released = user =>
        {
            lock (connected)
                connected.Remove(user);
        };

        static readonly Dictionary<IntPtr, DrawerMan> connected = new Dictionary<IntPtr, DrawerMan>();
        static long lastNumber;
        /// <summary>What a handler has thrown, for the call of the host's that raised the event.</summary>
        [ThreadStatic] static Exception thrown;

        internal static IntPtr Connect(DrawerMan drawer)
        {
            var handlers = new Native.Handlers
            {
                Size = (uint)Marshal.SizeOf(typeof(Native.Handlers)),
                SalvaPagamento = Marshal.GetFunctionPointerForDelegate(salvaPagamento),
                Stampa = Marshal.GetFunctionPointerForDelegate(stampa),
                Anteprima = Marshal.GetFunctionPointerForDelegate(anteprima),
                ApriCassetto = Marshal.GetFunctionPointerForDelegate(apriCassetto),
                Released = Marshal.GetFunctionPointerForDelegate(released)
            };
            lock (connected)
            {
                handlers.User = new IntPtr(++lastNumber);
                connected.Add(handlers.User, drawer);
            }
            IntPtr sink;
            int status = Native.kova_connect(drawer.Handle, ref handlers, out sink);
            if (status != 0)
                released(handlers.User);
            KovaException.Check(status);
            KovaException.Check(Native.kova_on_closed(drawer.Handle, Marshal.GetFunctionPointerForDelegate(closed),
                handlers.User));
            return sink;
        }

        /// <summary>A call that raises an event. Throws with what was thrown in it inside.</summary>
        internal static void CheckRaised(Func<int> call)
        {
            Exception before = thrown; // of an event in whose handler this is
            thrown = null;
            try
            {
                KovaException.Check(call(), thrown);
            }
            finally
            {
                thrown = before;
            }
        }

        /// <summary>Nothing that is thrown may leave it: between the library's functions it would end the
        /// process.</summary>
        static int Deliver(string eventName, IntPtr user, Action<DrawerMan> body)
        {
            DrawerMan drawer = null;
            try
            {
                lock (connected)
                    drawer = connected[user];
                body(drawer);
                return 0;
            }
            catch (Exception exception)
            {
                thrown = exception;
                try
                {
                    drawer.OnHandlerFailed(eventName, exception);
                }
                catch (Exception another)
                {
                    Console.Error.WriteLine(another);
                }
                string message = string.IsNullOrEmpty(exception.Message) ? exception.GetType().FullName
                                                                         : exception.Message;
                Native.kova_fail(Utf8.Bytes(message));
                var numbered = exception as KovaException;
                return numbered == null || numbered.Number == 0 ? HandlerFailed : numbered.Number;
            }
        }

        static void WithDay(IntPtr handle, Action<DayEventArgs> body)
        {
            var day = new DayEventArgs(Utf8.Content(handle));
            try
            {
                body(day);
            }
            finally // what was written before a failure, too
            {
                KovaException.Check(Native.kova_text_set(handle, Utf8.Bytes(day.DataOperazione)));
            }
        }

        static int SalvaPagamento(IntPtr user, ref int idpagamento, ref double importo, IntPtr valuta, IntPtr note,
            ref short cassetto, ref int tipoIncasso, ref int isIncasso)
        {
            var movement = new MovementEventArgs
            {
                IdPagamento = idpagamento,
                Importo = importo,
                Cassetto = cassetto,
                TipoIncasso = tipoIncasso,
                IsIncasso = isIncasso != 0
            };
            int failure = Deliver("SalvaPagamento", user, drawer =>
            {
                movement.Valuta = Utf8.Content(valuta);
                movement.Note = Utf8.Content(note);
                try
                {
                    drawer.OnSalvaPagamento(movement);
                }
                finally
                {
                    KovaException.Check(Native.kova_text_set(valuta, Utf8.Bytes(movement.Valuta)));
                    KovaException.Check(Native.kova_text_set(note, Utf8.Bytes(movement.Note)));
                }
            });
            idpagamento = movement.IdPagamento;
            importo = movement.Importo;
            cassetto = movement.Cassetto;
            tipoIncasso = movement.TipoIncasso;
            isIncasso = movement.IsIncasso ? 1 : 0;
            return failure;
        }
    }
}
