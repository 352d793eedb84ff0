package kova.drawer;

import com.sun.jna.Callback;
import com.sun.jna.Library;
import com.sun.jna.Native;
import com.sun.jna.Platform;
import com.sun.jna.Pointer;
import com.sun.jna.Structure;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import java.util.Map;

/** The library's functions beside those of the members; see kova_drawer_man_c.h. Handles are numbers in the dress of
 *  a pointer, which are never followed. */
interface CInterface extends DrawerMembers.Functions {
    CInterface LIBRARY = load();

    /** The file that the environment variable KOVA_LIBRARY names, or the one that the system finds. */
    private static CInterface load() {
        final String named = System.getenv("KOVA_LIBRARY");
        final String usual = Platform.isWindows() ? "Kova_Drawer_Man" : "libKova_Drawer_Man.so.4";
        return Native.load(named == null || named.isEmpty() ? usual : named, CInterface.class,
            Map.of(OPTION_STRING_ENCODING, "UTF-8"));
    }

    interface SaveHandler extends Callback {
        int call(Pointer user, Pointer idpagamento, Pointer importo, Pointer valuta, Pointer note, Pointer cassetto,
            Pointer tipoIncasso, Pointer isIncasso);
    }

    interface DayHandler extends Callback {
        int call(Pointer user, Pointer dataOperazione);
    }

    interface PlainHandler extends Callback {
        int call(Pointer user);
    }

    interface Notice extends Callback {
        void call(Pointer user);
    }

    @Structure.FieldOrder({"size", "user", "SalvaPagamento", "Stampa", "Anteprima", "ApriCassetto", "released"})
    class Handlers extends Structure {
        public int size;
        public Pointer user;
        public SaveHandler SalvaPagamento;
        public DayHandler Stampa;
        public DayHandler Anteprima;
        public PlainHandler ApriCassetto;
        public Notice released;
    }

    @Structure.FieldOrder({"kind", "integer", "number", "text", "database"})
    class Value extends Structure {
        public int kind;
        public int integer;
        public double number;
        public Pointer text;
        public Pointer database;
    }

    String kova_last_error();
    int kova_last_error_number();
    String kova_last_sql_state();
    int kova_version();

    int kova_create(PointerByReference component);
    int kova_release(Pointer component);
    int kova_is_open(Pointer component, IntByReference open);
    int kova_on_closed(Pointer component, Notice handler, Pointer user);
    int kova_connect(Pointer component, Handlers handlers, PointerByReference sink);
    int kova_disconnect(Pointer sink);
    int kova_fail(String words);

    int kova_text_create(String content, PointerByReference text);
    int kova_text_release(Pointer text);
    int kova_text_get(Pointer text, PointerByReference content);
    int kova_text_set(Pointer text, String content);

    int kova_get(Pointer component, String name, Value value);
    int kova_get_by_id(Pointer component, int id, Value value);
    int kova_set(Pointer component, String name, Value value);
    int kova_set_by_id(Pointer component, int id, Value value);
    int kova_invoke(Pointer component, String name, Value[] arguments, int count, Value result);
    int kova_invoke_by_id(Pointer component, int id, Value[] arguments, int count, Value result);

    int kova_database_open(String connection, PointerByReference database);
    int kova_database_from_odbc(Pointer connectionHandle, PointerByReference database);
    int kova_database_release(Pointer database);

    int kova_set_language(int id, String name);
    int kova_get_language(IntByReference id);
    int kova_set_screen_aids(int amountReadBack, int direction, int confirmation);
    int kova_set_sounds(int wanted);
    int kova_set_waiting_sign(int wanted);
    int kova_set_parent_window(long window);
    int kova_set_decimal_key(int key);
    int kova_set_log_folder(String folder);
    int kova_shut_down();
    int kova_process_events();
    int kova_event_descriptor(IntByReference descriptor);
    int kova_parse_date(String text, IntByReference year, IntByReference month, IntByReference day);
    int kova_format_date(int year, int month, int day, PointerByReference text);
    int kova_format_amount(double amount, int decimals, PointerByReference text);
    int kova_font_family(PointerByReference family);
}
