using System;

namespace Kova.Drawer
{
    /// <summary>One movement to store. What a handler sets reaches the handlers connected later and the dialog.</summary>
    public sealed class MovementEventArgs : EventArgs
    {
        /// <summary>The payment.</summary>
        public int IdPagamento { get; set; }

        /// <summary>In units of the currency, as typed: not signed by direction.</summary>
        public double Importo { get; set; }

        /// <summary>The currency. What a handler sets stays selected.</summary>
        public string Valuta { get; set; }

        public string Note { get; set; }

        /// <summary>The drawer [0-4], 0 for none chosen.</summary>
        public short Cassetto { get; set; }

        /// <summary>The activity's id.</summary>
        public int TipoIncasso { get; set; }

        /// <summary>Whether the money enters the drawer.</summary>
        public bool IsIncasso { get; set; }
    }

    /// <summary>A day whose movements are asked for.</summary>
    public sealed class DayEventArgs : EventArgs
    {
        public DayEventArgs(string dataOperazione)
        {
            DataOperazione = dataOperazione;
        }

        /// <summary>As the cashier left it: it need not be a date. KovaLibrary.ParseDate reads it as the dialog
        /// does.</summary>
        public string DataOperazione { get; set; }
    }

    /// <summary>A handler that has thrown.</summary>
    public sealed class HandlerFailedEventArgs : EventArgs
    {
        internal HandlerFailedEventArgs(string eventName, Exception exception)
        {
            EventName = eventName;
            Exception = exception;
        }

        public string EventName { get; private set; }
        public Exception Exception { get; private set; }
    }
}
