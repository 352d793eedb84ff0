using System;

namespace Kova.Drawer
{
    /// <summary>What kind of refusal a KovaException is.</summary>
    public enum KovaStatus
    {
        Failed = 1,
        DatabaseFailed = 2,
        InvalidArgument = 3,
        InvalidHandle = 4,
        WrongThread = 5,
        OutOfMemory = 6
    }

    /// <summary>A call that the component refused. Thrown by a handler, its number and message are the handler's
    /// failure.</summary>
    public class KovaException : Exception
    {
        /// <summary>A handler's failure. The number is the host's own and not 0.</summary>
        public KovaException(int number, string message) : this(KovaStatus.Failed, number, message, null)
        {
        }

        internal KovaException(KovaStatus status, int number, string message, Exception inner) : base(message, inner)
        {
            Status = status;
            Number = number;
        }

        public KovaStatus Status { get; private set; }

        /// <summary>5 invalid call, 6 overflow, 13 type mismatch, 438 no such member, 450 wrong number of arguments, a
        /// handler's own number, or that of a database's error; 0 where there is none.</summary>
        public int Number { get; private set; }

        internal static void Check(int status, Exception inner = null)
        {
            if (status == 0)
                return;
            string message = Utf8.Text(Native.kova_last_error());
            int number = Native.kova_last_error_number();
            if (status == (int)KovaStatus.DatabaseFailed)
                throw new DatabaseException(number, message, Utf8.Text(Native.kova_last_sql_state()));
            throw new KovaException((KovaStatus)status, number, message, inner);
        }
    }

    /// <summary>A database that refused.</summary>
    public sealed class DatabaseException : KovaException
    {
        internal DatabaseException(int number, string message, string sqlState)
            : base(KovaStatus.DatabaseFailed, number, message, null)
        {
            SqlState = sqlState;
        }

        /// <summary>The five characters of ISO 9075.</summary>
        public string SqlState { get; private set; }
    }
}
