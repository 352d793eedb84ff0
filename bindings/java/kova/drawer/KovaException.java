package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

/** A call that the component refused. Thrown by a handler, its number and message are the handler's failure. */
public class KovaException extends RuntimeException {
    private static final long serialVersionUID = 1;

    /** What kind of refusal it is, by the numbers of the C interface. */
    public enum Status {
        FAILED(1), DATABASE_FAILED(2), INVALID_ARGUMENT(3), INVALID_HANDLE(4), WRONG_THREAD(5), OUT_OF_MEMORY(6);

        private final int number;

        Status(int number) {
            this.number = number;
        }

        static Status of(int number) {
            for (Status status : values())
                if (status.number == number)
                    return status;
            return FAILED;
        }
    }

    private final Status status;
    private final int number;

    /** A handler's failure. The number is the host's own and not 0. */
    public KovaException(int number, String message) {
        this(Status.FAILED, number, message, null);
    }

    KovaException(Status status, int number, String message, Throwable cause) {
        super(message, cause);
        this.status = status;
        this.number = number;
    }

    public Status getStatus() {
        return status;
    }

    /** 5 invalid call, 6 overflow, 13 type mismatch, 438 no such member, 450 wrong number of arguments, a handler's
     *  own number, or that of a database's error; 0 where there is none. */
    public int getNumber() {
        return number;
    }

    /** The calling thread's last error. */
    static KovaException last(int status, Throwable cause) {
        final Status known = Status.of(status);
        final String message = LIBRARY.kova_last_error();
        final int number = LIBRARY.kova_last_error_number();
        return known == Status.DATABASE_FAILED ? new DatabaseException(number, message, LIBRARY.kova_last_sql_state())
                                               : new KovaException(known, number, message, cause);
    }
}
