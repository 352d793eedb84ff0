package kova.drawer;

/** What a host does about the component's requests. Calls come on the thread that uses the component, which waits for
 *  their return.
 *
 *  <p>A handler that throws has not done what was asked: handlers connected later are not called, the cashier keeps
 *  what was entered and reads the exception's message, and the component's log gets one record. Where the host itself
 *  raised the event, the exception is the cause of the {@link KovaException} that it gets. */
public interface DrawerEvents {
    /** Store one movement before returning. In a double movement the withdrawal comes first; if it fails, the deposit
     *  does not come. */
    default void salvaPagamento(Movement movement) throws Exception {}

    /** Print the movements of a day. The text is as the cashier left it and need not be a date; {@link Kova#parseDate}
     *  reads it as the dialog does. */
    default void stampa(Text dataOperazione) throws Exception {}

    /** Show a print preview of the movements of a day. */
    default void anteprima(Text dataOperazione) throws Exception {}

    /** Open the cash drawer. */
    default void apriCassetto() throws Exception {}

    /** A handler of this object has thrown: of the exception, the dialog and the component's log get the message
     *  alone. Unless a host does better, the whole goes to the system logger "kova.drawer". */
    default void failed(String event, Throwable failure) {
        System.getLogger("kova.drawer").log(System.Logger.Level.WARNING, event + " failed", failure);
    }
}
