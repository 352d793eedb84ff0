using System;

namespace Kova.Drawer
{
    /// <summary>A database to hand to DrawerMan.Inizializza, which keeps what it was given when this is disposed of.
    /// Any thread may use it.</summary>
    public sealed class Database : IDisposable
    {
        IntPtr handle;

        /// <summary>Opens one: "Data Source=FILE" for the embedded database, "Driver=…" or "DSN=…" for ODBC.</summary>
        public Database(string connection)
        {
            KovaException.Check(Native.kova_database_open(Utf8.Bytes(connection), out handle));
        }

        /// <summary>One over an ODBC connection handle that the host has opened: an SQLHDBC, which stays the
        /// host's.</summary>
        public Database(IntPtr connectionHandle)
        {
            KovaException.Check(Native.kova_database_from_odbc(connectionHandle, out handle));
        }

        /// <summary>Nothing for no database.</summary>
        internal static IntPtr HandleOf(Database database)
        {
            if (database != null && database.handle == IntPtr.Zero)
                throw new ObjectDisposedException("Database");
            return database == null ? IntPtr.Zero : database.handle;
        }

        public void Dispose()
        {
            IntPtr released = handle;
            handle = IntPtr.Zero;
            if (released != IntPtr.Zero)
                KovaException.Check(Native.kova_database_release(released));
        }
    }
}
