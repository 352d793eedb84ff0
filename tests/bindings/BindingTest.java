import com.sun.jna.Native;
import com.sun.jna.NativeLibrary;
import java.lang.ref.WeakReference;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Objects;
import kova.drawer.Connection;
import kova.drawer.DatabaseException;
import kova.drawer.DrawerEvents;
import kova.drawer.DrawerMan;
import kova.drawer.DrawerMembers.Member;
import kova.drawer.Database;
import kova.drawer.Kova;
import kova.drawer.KovaException;
import kova.drawer.Movement;
import kova.drawer.Text;

/** The binding against the real library, on a thread that is not the process's first. */
final class BindingTest {
    private static int failures;

    private static void expect(boolean condition, String what) {
        if (!condition) {
            ++failures;
            System.err.println("FAILED: " + what);
        }
    }

    private static <E extends Throwable> E thrown(Class<E> kind, Runnable call) {
        try {
            call.run();
        } catch (Throwable failure) {
            if (kind.isInstance(failure))
                return kind.cast(failure);
            failure.printStackTrace();
        }
        throw new AssertionError("no " + kind.getName());
    }

    private static Movement movement() {
        final Movement movement = new Movement();
        movement.setIdpagamento(1);
        movement.setImporto(12.5);
        movement.setValuta("€");
        movement.setNote("Prüfung");
        movement.setCassetto(2);
        movement.setTipoIncasso(9);
        return movement;
    }

    private static String line(Movement movement) {
        return movement.getIdpagamento() + " " + movement.getImporto() + " " + movement.getValuta() + " "
            + movement.getNote() + " " + movement.getCassetto() + " " + movement.getTipoIncasso() + " "
            + movement.isIncasso();
    }

    private static class Till implements DrawerEvents {
        final List<String> seen = new ArrayList<>();
        Exception failing;
        Throwable told;

        @Override
        public void salvaPagamento(Movement movement) throws Exception {
            seen.add(line(movement));
            movement.setIdpagamento(movement.getIdpagamento() + 1);
            movement.setImporto(movement.getImporto() + 1);
            movement.setValuta("CHF");
            movement.setNote(movement.getNote() + "𝄞");
            movement.setCassetto(movement.getCassetto() + 1);
            movement.setTipoIncasso(movement.getTipoIncasso() + 1);
            movement.setIncasso(!movement.isIncasso());
            if (failing != null)
                throw failing;
        }

        @Override
        public void stampa(Text day) {
            seen.add("print " + day);
            day.set("17/11/2026");
        }

        @Override
        public void failed(String event, Throwable failure) {
            told = failure;
        }
    }

    private static void members(DrawerMan drawer) {
        drawer.setIdCassa(7);
        drawer.setChiusuraAutomatica(true);
        drawer.setValutaAziendale("Fr. – 𝄞");
        expect(drawer.getIdCassa() == 7 && drawer.isChiusuraAutomatica() && drawer.getValutaAziendale().equals("Fr. – 𝄞"),
            "properties keep what is set");
        drawer.set("IDCASSA", "12");
        drawer.set(Member.ChiusuraAutomatica, 0);
        expect(Objects.equals(drawer.get(Member.idCassa), 12) && Objects.equals(drawer.get("ChiusuraAutomatica"), false)
            && Objects.equals(drawer.get("valutaaziendale"), "Fr. – 𝄞"), "by name and id, too");
        expect(thrown(KovaException.class, () -> drawer.get("Missing")).getNumber() == 438, "a member that there is not");
        expect(thrown(DatabaseException.class, () -> Database.open("Driver=none")).getSqlState().length() == 5,
            "a database that refuses");
        expect(Kova.parseDate("16/11/2026").map(Kova::formatDate).orElse("").equals("16/11/2026")
            && Kova.parseDate("31/02/2026").isEmpty() && Kova.formatAmount(-1234.565, 2).equals("-1.234,57"),
            "dates and amounts are the dialog's");
    }

    private static void events(DrawerMan drawer) {
        final Till first = new Till();
        final Till second = new Till();
        drawer.connect(first);
        final Connection connection = drawer.connect(second);
        final Movement movement = movement();
        drawer.salvaPagamento(movement);
        expect(first.seen.contains("1 12.5 € Prüfung 2 9 false") && second.seen.contains("2 13.5 CHF Prüfung𝄞 3 10 true")
            && line(movement).equals("3 14.5 CHF Prüfung𝄞𝄞 4 11 false"), "values are written back: " + line(movement));
        first.failing = new Exception("The period is closed");
        final KovaException failure = thrown(KovaException.class, () -> drawer.salvaPagamento(movement));
        expect(failure.getCause() == first.failing && first.told == first.failing && failure.getNumber() == 513
            && failure.getMessage().equals("The period is closed") && second.seen.size() == 1
            && line(movement).startsWith("4 15.5"), "a handler's exception is its failure");
        first.failing = new KovaException(77, "Ha già chiuso");
        final KovaException own = thrown(KovaException.class, () -> drawer.salvaPagamento(movement));
        expect(own.getNumber() == 77 && own.getMessage().equals("Ha già chiuso"), "with a number of its own");
        final Object[] arguments = {1, 2, 3, 4, 5, 6, 1};
        thrown(KovaException.class, () -> drawer.invoke("salvapagamento", arguments));
        expect(Arrays.equals(arguments, new Object[] {2, 3.0, "CHF", "4𝄞", (short) 6, 7, false}),
            "by name, too: " + Arrays.toString(arguments));
        connection.close();
        connection.close();
        final Text day = new Text("16/11/2026");
        drawer.stampa(day);
        expect(day.get().equals("17/11/2026") && !second.seen.contains("print 17/11/2026"), "one is disconnected");
        drawer.connect(new Till() {
            @Override
            public void stampa(Text day) {
                drawer.close();
            }

            @Override
            public void apriCassetto() {
                throw new StackOverflowError();
            }
        });
        expect(thrown(KovaException.class, drawer::apriCassetto).getCause() instanceof StackOverflowError,
            "an error is a failure");
        drawer.stampa(day);
        expect(thrown(KovaException.class, () -> drawer.stampa(day)).getStatus() == KovaException.Status.INVALID_HANDLE,
            "a handler closes the component");
    }

    /** Objects with memory outside the heap are found by one collection, and go with the next. */
    private static void collect() throws InterruptedException {
        for (int i = 0; i < 4; ++i) {
            System.gc();
            Thread.sleep(50);
        }
    }

    /** Bytes that this process has from malloc, where all threads share one arena. */
    private static long allocated() {
        final Mallinfo all = Mallinfo.now();
        return all.uordblks + all.hblkhd;
    }

    private static long heap() {
        return Runtime.getRuntime().totalMemory() - Runtime.getRuntime().freeMemory();
    }

    @com.sun.jna.Structure.FieldOrder({"arena", "ordblks", "smblks", "hblks", "hblkhd", "usmblks", "fsmblks", "uordblks",
        "fordblks", "keepcost"})
    public static final class Mallinfo extends com.sun.jna.Structure implements com.sun.jna.Structure.ByValue {
        public long arena, ordblks, smblks, hblks, hblkhd, usmblks, fsmblks, uordblks, fordblks, keepcost;

        static Mallinfo now() {
            return (Mallinfo) NativeLibrary.getInstance("c").getFunction("mallinfo2").invoke(Mallinfo.class,
                new Object[0]);
        }
    }

    private static void manyEvents(DrawerMan drawer) throws InterruptedException {
        final long[] count = {0};
        drawer.connect(new DrawerEvents() {
            @Override
            public void salvaPagamento(Movement movement) throws Exception {
                ++count[0];
                movement.setIdpagamento(movement.getIdpagamento() + 1);
                movement.setNote("n" + movement.getIdpagamento());
                if (movement.getIdpagamento() % 1000 == 0)
                    System.gc(); // with the library's calls on the stack
                if (movement.getIdpagamento() % 100 == 0)
                    throw new Exception("every hundredth");
            }

            @Override
            public void failed(String event, Throwable failure) {}
        });
        final Movement movement = movement();
        final Runnable events = () -> {
            movement.setIdpagamento(0);
            int failed = 0;
            for (int i = 1; i <= 10000; ++i) {
                try {
                    drawer.salvaPagamento(movement);
                } catch (KovaException failure) {
                    ++failed;
                }
                if (movement.getIdpagamento() != i || !movement.getNote().equals("n" + i))
                    throw new AssertionError("lost at " + i);
            }
            if (failed != 100)
                throw new AssertionError(failed + " failures");
        };
        events.run();
        count[0] = 0;
        collect();
        final long before = allocated();
        final long heapBefore = heap();
        final long start = System.nanoTime();
        for (int i = 0; i < 2; ++i)
            events.run();
        final long took = System.nanoTime() - start;
        collect();
        final long grown = allocated() - before;
        final long heapGrown = heap() - heapBefore;
        System.out.println("20000 events: " + took / 1000000 + " ms, memory " + grown + " bytes, heap " + heapGrown);
        expect(count[0] == 20000, "events are lost");
        expect(grown < 1500000 && heapGrown < 2000000, "memory grows"); // the compiler's comes and goes
    }

    /** As a component's handlers, of which nothing but the library knows any more. */
    private static WeakReference<DrawerEvents> left() {
        final DrawerEvents events = new DrawerEvents() {};
        try (DrawerMan drawer = new DrawerMan()) {
            drawer.connect(events);
            System.gc();
            drawer.apriCassetto();
        }
        return new WeakReference<>(events);
    }

    private static int closes(DrawerMan drawer, int[] closed) {
        final int before = closed[0];
        drawer.discardForm();
        final long end = System.nanoTime() + 5_000_000_000L;
        while (closed[0] == before && System.nanoTime() < end)
            Kova.processEvents();
        return closed[0];
    }

    private static void dialog(DrawerMan drawer, String shop) {
        final int[] closed = {0};
        try (Database database = Database.open("Data Source=" + shop)) {
            drawer.inizializza(database);
        }
        drawer.onClosed(() -> {
            ++closed[0];
            drawer.onClosed(() -> closed[0] += 10);
            System.gc(); // nothing but the library knows the one that runs
            drawer.show(0);
        });
        drawer.show(0);
        expect(drawer.isOpen() && closes(drawer, closed) == 1 && drawer.isOpen() && closes(drawer, closed) == 11
            && !drawer.isOpen(), "the host hears of each closing");
        expect(Kova.eventDescriptor() >= 0 && !Kova.fontFamily().isEmpty(), "what hosts with a loop need");
        drawer.onClosed(null);
    }

    private static void test(String shop) {
        try (DrawerMan drawer = new DrawerMan(); DrawerMan another = new DrawerMan()) {
            members(drawer);
            events(drawer);
            manyEvents(another);
            dialog(another, shop);
            final WeakReference<DrawerEvents> left = left();
            collect();
            expect(left.get() == null, "handlers are let go");
            final Thread stray = new Thread(() -> expect(thrown(KovaException.class, () -> another.show(0)).getStatus()
                == KovaException.Status.WRONG_THREAD, "another thread is refused"));
            stray.start();
            stray.join();
        } catch (Throwable failure) {
            ++failures;
            failure.printStackTrace();
        }
        Kova.shutDown();
    }

    /** The thread that uses the component ends before the process, as Java's main thread does, too. */
    private static void threadEnds() {
        try (DrawerMan drawer = new DrawerMan()) {
            drawer.setIdCassa(1);
        }
        Kova.shutDown();
    }

    public static void main(String[] arguments) throws Exception {
        expect(Native.POINTER_SIZE == 8, "64 bits");
        final Thread drawerThread =
            new Thread(arguments.length == 0 ? BindingTest::threadEnds : () -> test(arguments[0]));
        drawerThread.start();
        drawerThread.join();
        System.exit(failures == 0 ? 0 : 1);
    }
}
