package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

import com.sun.jna.Pointer;
import com.sun.jna.ptr.PointerByReference;
import java.util.Map;
import java.util.concurrent.ConcurrentHashMap;
import java.util.concurrent.atomic.AtomicLong;
import java.util.function.IntSupplier;

/** The way from the library to a host's handlers. The functions that the library calls are there once and for ever;
 *  whose handlers are meant, it says by a number, so that nothing which the garbage collector moves or takes is in its
 *  hands. */
final class Sink {
    private interface Body {
        void run(DrawerEvents events) throws Exception;
    }

    /** Of an exception that has no number of its own. */
    private static final int HANDLER_FAILED = 513;

    private static final Map<Long, DrawerEvents> connected = new ConcurrentHashMap<>();
    private static final AtomicLong lastNumber = new AtomicLong();
    /** What a handler has thrown, for the call of the host's that raised the event. */
    private static final ThreadLocal<Throwable> thrown = new ThreadLocal<>();

    private static final CInterface.SaveHandler SALVA_PAGAMENTO = (user, idpagamento, importo, valuta, note, cassetto,
        tipoIncasso, isIncasso) -> deliver("SalvaPagamento", user, events -> {
            final Movement movement = new Movement();
            movement.setIdpagamento(idpagamento.getInt(0));
            movement.setImporto(importo.getDouble(0));
            movement.setValuta(Component.textOf(valuta));
            movement.setNote(Component.textOf(note));
            movement.setCassetto(cassetto.getShort(0));
            movement.setTipoIncasso(tipoIncasso.getInt(0));
            movement.setIncasso(isIncasso.getInt(0) != 0);
            try {
                events.salvaPagamento(movement);
            } finally { // what was written before a failure, too
                idpagamento.setInt(0, movement.getIdpagamento());
                importo.setDouble(0, movement.getImporto());
                Component.check(LIBRARY.kova_text_set(valuta, movement.getValuta()));
                Component.check(LIBRARY.kova_text_set(note, movement.getNote()));
                cassetto.setShort(0, movement.getCassetto());
                tipoIncasso.setInt(0, movement.getTipoIncasso());
                isIncasso.setInt(0, movement.isIncasso() ? 1 : 0);
            }
        });
    private static final CInterface.DayHandler STAMPA =
        (user, day) -> deliver("Stampa", user, events -> withDay(day, events::stampa));
    private static final CInterface.DayHandler ANTEPRIMA =
        (user, day) -> deliver("Anteprima", user, events -> withDay(day, events::anteprima));
    private static final CInterface.PlainHandler APRI_CASSETTO =
        user -> deliver("ApriCassetto", user, DrawerEvents::apriCassetto);
    private static final CInterface.Notice RELEASED = user -> connected.remove(Pointer.nativeValue(user));

    private Sink() {}

    static Pointer connect(Pointer component, DrawerEvents events) {
        final long number = lastNumber.incrementAndGet();
        final CInterface.Handlers handlers = new CInterface.Handlers();
        handlers.size = handlers.size();
        handlers.user = new Pointer(number);
        handlers.SalvaPagamento = SALVA_PAGAMENTO;
        handlers.Stampa = STAMPA;
        handlers.Anteprima = ANTEPRIMA;
        handlers.ApriCassetto = APRI_CASSETTO;
        handlers.released = RELEASED;
        final PointerByReference sink = new PointerByReference();
        connected.put(number, events);
        final int status = LIBRARY.kova_connect(component, handlers, sink);
        if (status != 0) {
            connected.remove(number);
            Component.check(status);
        }
        return sink.getValue();
    }

    /** A call that raises an event. Throws what was thrown in it as the cause. */
    static void checkRaised(IntSupplier call) {
        final Throwable before = thrown.get(); // of an event in whose handler this is
        thrown.remove();
        try {
            final int status = call.getAsInt();
            if (status != 0)
                throw KovaException.last(status, thrown.get());
        } finally {
            if (before == null)
                thrown.remove();
            else
                thrown.set(before);
        }
    }

    private interface DayBody {
        void run(Text day) throws Exception;
    }

    private static void withDay(Pointer handle, DayBody body) throws Exception {
        final Text day = new Text(Component.textOf(handle));
        try {
            body.run(day);
        } finally {
            Component.check(LIBRARY.kova_text_set(handle, day.get()));
        }
    }

    /** Nothing that is thrown may leave it: between the library's functions it would end the process. */
    private static int deliver(String event, Pointer user, Body body) {
        DrawerEvents events = null;
        try {
            events = connected.get(Pointer.nativeValue(user));
            body.run(events);
            return 0;
        } catch (Throwable failure) { // errors of the virtual machine among them
            return told(event, events, failure);
        }
    }

    private static int told(String event, DrawerEvents events, Throwable failure) {
        try {
            thrown.set(failure);
            events.failed(event, failure);
        } catch (Throwable another) {
            failure.addSuppressed(another);
        }
        try {
            final String message = failure.getLocalizedMessage();
            LIBRARY.kova_fail(message == null || message.isEmpty() ? failure.getClass().getName() : message);
        } catch (Throwable another) { // the library then finds words of its own
            failure.addSuppressed(another);
        }
        final int number = failure instanceof KovaException ? ((KovaException) failure).getNumber() : 0;
        return number == 0 ? HANDLER_FAILED : number;
    }
}
