using System;

namespace Kova.Drawer
{
    // It is used on one thread, which made the first one of the process and on which its events come; calls on another
    // thread are refused with KovaStatus.WrongThread. It must be disposed of: a finalizer runs on a thread of its own
    // and cannot do it.
    //
    // A handler that throws has not done what was asked: handlers connected later are not called, the cashier keeps
    // what was entered and reads the exception's message, and the component's log gets one record.
    public sealed partial class DrawerMan : IDisposable
    {
        delegate int Read<T>(IntPtr component, out T result);
        delegate int RaisePlain(IntPtr component);
        delegate int RaiseDay(IntPtr component, IntPtr day);
        delegate int RaiseMovement(IntPtr component, ref int idpagamento, ref double importo, IntPtr valuta,
            IntPtr note, ref short cassetto, ref int tipoIncasso, ref int isIncasso);

        readonly IntPtr sink;

        /// <summary>Throws KovaException when no windows can be shown.</summary>
        public DrawerMan()
        {
            IntPtr created;
            KovaException.Check(Native.kova_create(out created));
            Handle = created;
            sink = Sink.Connect(this);
        }

        /// <summary>Store one movement before returning. In a double movement the withdrawal comes first; if it fails,
        /// the deposit does not come.</summary>
        public event EventHandler<MovementEventArgs> SalvaPagamento;

        /// <summary>Print the movements of a day.</summary>
        public event EventHandler<DayEventArgs> Stampa;

        /// <summary>Show a print preview of the movements of a day.</summary>
        public event EventHandler<DayEventArgs> Anteprima;

        /// <summary>Open the cash drawer.</summary>
        public event EventHandler ApriCassetto;

        /// <summary>A handler has thrown: of the exception, the dialog and the component's log get the message alone.
        /// With nobody connected the whole goes to the error output.</summary>
        public event EventHandler<HandlerFailedEventArgs> HandlerFailed;

        /// <summary>The dialog has closed, whoever closed it: before a modal Show returns, else from the event loop.
        /// What a handler of this throws goes to HandlerFailed.</summary>
        public event EventHandler Closed;

        /// <summary>Shows the dialog and returns when it has closed.</summary>
        public void Show()
        {
            Show(-1);
        }

        /// <summary>Whether the dialog is on the screen.</summary>
        public bool IsOpen
        {
            get { return ReadFlag(Native.kova_is_open); }
        }

        /// <summary>Nothing after the component has been disposed of, which the library refuses as no
        /// component.</summary>
        internal IntPtr Handle { get; private set; }

        /// <summary>Closes an open dialog, releases the component and disconnects its handlers; also inside an event,
        /// which goes on until it returns. Doing so again does nothing.</summary>
        public void Dispose()
        {
            if (Handle == IntPtr.Zero)
                return;
            Check(Native.kova_release(Handle));
            Handle = IntPtr.Zero;
            Check(Native.kova_disconnect(sink));
        }

        internal void OnSalvaPagamento(MovementEventArgs movement)
        {
            var handlers = SalvaPagamento;
            if (handlers != null)
                handlers(this, movement);
        }

        internal void OnStampa(DayEventArgs day)
        {
            var handlers = Stampa;
            if (handlers != null)
                handlers(this, day);
        }

        internal void OnAnteprima(DayEventArgs day)
        {
            var handlers = Anteprima;
            if (handlers != null)
                handlers(this, day);
        }

        internal void OnApriCassetto()
        {
            var handlers = ApriCassetto;
            if (handlers != null)
                handlers(this, EventArgs.Empty);
        }

        internal void OnClosed()
        {
            var handlers = Closed;
            if (handlers != null)
                handlers(this, EventArgs.Empty);
        }

        internal void OnHandlerFailed(string eventName, Exception exception)
        {
            var handlers = HandlerFailed;
            if (handlers != null)
                handlers(this, new HandlerFailedEventArgs(eventName, exception));
            else
                Console.Error.WriteLine("{0} failed: {1}", eventName, exception);
        }

        static void Check(int status)
        {
            KovaException.Check(status);
        }

        int ReadNumber(Read<int> read)
        {
            int result;
            Check(read(Handle, out result));
            return result;
        }

        bool ReadFlag(Read<int> read)
        {
            return ReadNumber(read) != 0;
        }

        string ReadText(Read<IntPtr> read)
        {
            IntPtr result;
            Check(read(Handle, out result));
            return Utf8.Text(result);
        }

        void Raise(RaisePlain raise)
        {
            Sink.CheckRaised(() => raise(Handle));
        }

        void Raise(RaiseDay raise, DayEventArgs day)
        {
            using (var text = new LentText(day.DataOperazione))
            {
                try
                {
                    Sink.CheckRaised(() => raise(Handle, text.Handle));
                }
                finally // what was written before a failure, too
                {
                    day.DataOperazione = text.Content;
                }
            }
        }

        void Raise(RaiseMovement raise, MovementEventArgs movement)
        {
            int idpagamento = movement.IdPagamento, tipoIncasso = movement.TipoIncasso;
            int isIncasso = movement.IsIncasso ? 1 : 0;
            double importo = movement.Importo;
            short cassetto = movement.Cassetto;
            using (LentText valuta = new LentText(movement.Valuta), note = new LentText(movement.Note))
            {
                try
                {
                    Sink.CheckRaised(() => raise(Handle, ref idpagamento, ref importo, valuta.Handle, note.Handle,
                        ref cassetto, ref tipoIncasso, ref isIncasso));
                }
                finally
                {
                    movement.IdPagamento = idpagamento;
                    movement.Importo = importo;
                    movement.Valuta = valuta.Content;
                    movement.Note = note.Content;
                    movement.Cassetto = cassetto;
                    movement.TipoIncasso = tipoIncasso;
                    movement.IsIncasso = isIncasso != 0;
                }
            }
        }

        /// <summary>A text that the library keeps while an event is raised with it.</summary>
        sealed class LentText : IDisposable
        {
            internal readonly IntPtr Handle;

            internal LentText(string content)
            {
                Check(Native.kova_text_create(Utf8.Bytes(content), out Handle));
            }

            internal string Content
            {
                get { return Utf8.Content(Handle); }
            }

            public void Dispose()
            {
                Check(Native.kova_text_release(Handle));
            }
        }
    }
}
