package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

import com.sun.jna.Pointer;
import com.sun.jna.ptr.PointerByReference;

/** A database to hand to {@link DrawerMan#inizializza}, which keeps what it was given when this is closed. Any thread
 *  may use it. */
public final class Database implements AutoCloseable {
    private Pointer handle;

    private Database(Pointer handle) {
        this.handle = handle;
    }

    /** Opens one: {@code Data Source=FILE} for the embedded database, {@code Driver=…} or {@code DSN=…} for ODBC. */
    public static Database open(String connection) {
        final PointerByReference result = new PointerByReference();
        Component.check(LIBRARY.kova_database_open(connection, result));
        return new Database(result.getValue());
    }

    /** One over an ODBC connection handle that the host has opened: an SQLHDBC, which stays the host's. */
    public static Database fromOdbc(Pointer connectionHandle) {
        final PointerByReference result = new PointerByReference();
        Component.check(LIBRARY.kova_database_from_odbc(connectionHandle, result));
        return new Database(result.getValue());
    }

    /** Null for no database. */
    static Pointer handleOf(Database database) {
        if (database != null && database.handle == null)
            throw new IllegalStateException("The database is closed");
        return database == null ? null : database.handle;
    }

    @Override
    public void close() {
        final Pointer closed = handle;
        handle = null;
        if (closed != null)
            Component.check(LIBRARY.kova_database_release(closed));
    }
}
