package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

import com.sun.jna.Pointer;
import com.sun.jna.ptr.DoubleByReference;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import com.sun.jna.ptr.ShortByReference;

/** How a member's call crosses to the library and back. */
abstract class Component {
    interface Call<Result> {
        int apply(Pointer component, Result result);
    }

    interface Raise {
        int apply(Pointer component);
    }

    interface RaiseMovement {
        int apply(Pointer component, IntByReference idpagamento, DoubleByReference importo, Pointer valuta, Pointer note,
            ShortByReference cassetto, IntByReference tipoIncasso, IntByReference isIncasso);
    }

    /** A text that the library keeps while an event is raised with it. */
    private static final class LentText implements AutoCloseable {
        final Pointer handle;

        LentText(String content) {
            final PointerByReference result = new PointerByReference();
            check(LIBRARY.kova_text_create(content, result));
            handle = result.getValue();
        }

        String content() {
            return textOf(handle);
        }

        @Override
        public void close() {
            check(LIBRARY.kova_text_release(handle));
        }
    }

    Component() {}

    /** Null after the component has been closed, which the library refuses as no component. */
    abstract Pointer handle();

    static void check(int status) {
        if (status != 0)
            throw KovaException.last(status, null);
    }

    static String textOf(Pointer text) {
        final PointerByReference content = new PointerByReference();
        check(LIBRARY.kova_text_get(text, content));
        return Kova.string(content);
    }

    int readNumber(Call<IntByReference> read) {
        final IntByReference result = new IntByReference();
        check(read.apply(handle(), result));
        return result.getValue();
    }

    boolean readFlag(Call<IntByReference> read) {
        return readNumber(read) != 0;
    }

    String readText(Call<PointerByReference> read) {
        final PointerByReference result = new PointerByReference();
        check(read.apply(handle(), result));
        return Kova.string(result);
    }

    void raise(Raise raise) {
        Sink.checkRaised(() -> raise.apply(handle()));
    }

    void raise(Call<Pointer> raise, Text text) {
        try (LentText lent = new LentText(text.get())) {
            try {
                Sink.checkRaised(() -> raise.apply(handle(), lent.handle));
            } finally { // what was written before a failure, too
                text.set(lent.content());
            }
        }
    }

    void raise(RaiseMovement raise, Movement movement) {
        final IntByReference idpagamento = new IntByReference(movement.getIdpagamento());
        final DoubleByReference importo = new DoubleByReference(movement.getImporto());
        final ShortByReference cassetto = new ShortByReference(movement.getCassetto());
        final IntByReference tipoIncasso = new IntByReference(movement.getTipoIncasso());
        final IntByReference isIncasso = new IntByReference(movement.isIncasso() ? 1 : 0);
        try (LentText valuta = new LentText(movement.getValuta()); LentText note = new LentText(movement.getNote())) {
            try {
                Sink.checkRaised(() -> raise.apply(handle(), idpagamento, importo, valuta.handle, note.handle, cassetto,
                    tipoIncasso, isIncasso));
            } finally {
                movement.setIdpagamento(idpagamento.getValue());
                movement.setImporto(importo.getValue());
                movement.setValuta(valuta.content());
                movement.setNote(note.content());
                movement.setCassetto(cassetto.getValue());
                movement.setTipoIncasso(tipoIncasso.getValue());
                movement.setIncasso(isIncasso.getValue() != 0);
            }
        }
    }
}
