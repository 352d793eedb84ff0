package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

import com.sun.jna.Pointer;
import java.util.Collection;

/** Connected handlers. They are kept from the garbage collector until this, or the component, is closed. */
public final class Connection implements AutoCloseable {
    private final Collection<Connection> all;
    private Pointer sink;

    /** One of all that a component has, which forget it when it is closed. */
    Connection(Pointer sink, Collection<Connection> all) {
        this.sink = sink;
        this.all = all;
        all.add(this);
    }

    /** Disconnects the handlers, also inside an event; they may outlive the component. Doing so again does nothing. */
    @Override
    public void close() {
        final Pointer closed = sink;
        sink = null;
        all.remove(this);
        if (closed != null)
            Component.check(LIBRARY.kova_disconnect(closed));
    }
}
