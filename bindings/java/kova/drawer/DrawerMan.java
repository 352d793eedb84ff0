package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;

import com.sun.jna.Pointer;
import com.sun.jna.ptr.PointerByReference;
import java.util.ArrayList;
import java.util.List;
import java.util.Map;
import java.util.Objects;
import java.util.concurrent.ConcurrentHashMap;

/** The cash-drawer component. It is used on one thread, which made the first one of the process and on which its
 *  events come; calls on another thread are refused with {@link KovaException.Status#WRONG_THREAD}. It must be closed:
 *  the garbage collector works on a thread of its own and cannot do it. */
public final class DrawerMan extends DrawerMembers implements AutoCloseable {
    /** By handles, which the library never gives twice. */
    private static final Map<Pointer, Runnable> closings = new ConcurrentHashMap<>();
    private static final CInterface.Notice CLOSED = DrawerMan::tellClosed;

    private final List<Connection> connections = new ArrayList<>();
    private Pointer handle;

    /** Throws {@link KovaException} when no windows can be shown. */
    public DrawerMan() {
        final PointerByReference result = new PointerByReference();
        check(LIBRARY.kova_create(result));
        handle = result.getValue();
    }

    @Override
    Pointer handle() {
        return handle;
    }

    /** Handlers are called in the order of their connection. */
    public Connection connect(DrawerEvents events) {
        return new Connection(Sink.connect(handle, Objects.requireNonNull(events)), connections);
    }

    /** Shows the dialog and returns when it has closed. */
    public void show() {
        show(-1);
    }

    /** Whether the dialog is on the screen. */
    public boolean isOpen() {
        return readFlag(LIBRARY::kova_is_open);
    }

    /** Called each time the dialog has closed, whoever closed it: before a modal {@link #show} returns, else from the
     *  event loop. Null ends it. What it throws goes to the thread's handler of uncaught exceptions. */
    public void onClosed(Runnable handler) {
        check(LIBRARY.kova_on_closed(handle, handler == null ? null : CLOSED, handle));
        if (handler == null)
            closings.remove(handle);
        else
            closings.put(handle, handler);
    }

    private static void tellClosed(Pointer component) {
        try {
            final Runnable handler = closings.get(component);
            if (handler != null)
                handler.run();
        } catch (Throwable failure) {
            final Thread thread = Thread.currentThread();
            thread.getUncaughtExceptionHandler().uncaughtException(thread, failure);
        }
    }

    /** Reads a property by name, letter case aside. */
    public Object get(String name) {
        return Values.get(value -> LIBRARY.kova_get(handle, name, value));
    }

    public Object get(Member member) {
        return Values.get(value -> LIBRARY.kova_get_by_id(handle, member.id, value));
    }

    /** Writes a property by name. Values are converted as the old languages do: "12" for a number, 1 for a Boolean. */
    public void set(String name, Object content) {
        Values.set(content, value -> LIBRARY.kova_set(handle, name, value));
    }

    public void set(Member member, Object content) {
        Values.set(content, value -> LIBRARY.kova_set_by_id(handle, member.id, value));
    }

    /** Calls a method by name. What a handler wrote stands in the arguments afterwards, in the types that are declared,
     *  also when the call failed. */
    public Object invoke(String name, Object... arguments) {
        return Values.invoke(arguments,
            (values, result) -> LIBRARY.kova_invoke(handle, name, values, arguments.length, result));
    }

    public Object invoke(Member member, Object... arguments) {
        return Values.invoke(arguments,
            (values, result) -> LIBRARY.kova_invoke_by_id(handle, member.id, values, arguments.length, result));
    }

    /** Closes an open dialog, releases the component and disconnects its handlers; also inside an event, which goes on
     *  until it returns. Doing so again does nothing. */
    @Override
    public void close() {
        if (handle == null)
            return;
        check(LIBRARY.kova_release(handle));
        closings.remove(handle);
        handle = null;
        List.copyOf(connections).forEach(Connection::close);
    }
}
