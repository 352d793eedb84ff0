package kova.drawer;

/** A database that refused. */
public final class DatabaseException extends KovaException {
    private static final long serialVersionUID = 1;
    private final String sqlState;

    DatabaseException(int number, String message, String sqlState) {
        super(Status.DATABASE_FAILED, number, message, null);
        this.sqlState = sqlState;
    }

    /** The five characters of ISO 9075. */
    public String getSqlState() {
        return sqlState;
    }
}
