package kova.drawer;

import static kova.drawer.CInterface.LIBRARY;
import static kova.drawer.Component.check;

import com.sun.jna.Pointer;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import java.time.LocalDate;
import java.util.Optional;

/** What all components of the process share. */
public final class Kova {
    public static final int ITALIAN = 1040;
    public static final int GERMAN = 1031;
    public static final int ENGLISH = 9;

    private static final int TYPE_MISMATCH = 13;

    /** What the decimal key of the amount enters: a comma, as at first, or the region's decimal separator. */
    public enum DecimalKey { COMMA, OF_REGION }

    private Kova() {}

    /** Of the library's interface: 410 is 4.10. */
    public static int version() {
        return LIBRARY.kova_version();
    }

    /** The language that the user works in from now on, in open dialogs too, by its Windows language identifier:
     *  {@link #ITALIAN}, {@link #GERMAN}, {@link #ENGLISH}; any other shows Italian. */
    public static void setLanguage(int id, String name) {
        check(LIBRARY.kova_set_language(id, name));
    }

    /** 0 where the environment names none. */
    public static int getLanguage() {
        final IntByReference id = new IntByReference();
        check(LIBRARY.kova_get_language(id));
        return id.getValue();
    }

    /** What the entry screen says beside its controls: the typed amount and all else that would be sent, with what
     *  contradicts itself or is missing; whether the money goes in or out; a short notice of what was sent. */
    public static void setScreenAids(boolean amountReadBack, boolean direction, boolean confirmation) {
        check(LIBRARY.kova_set_screen_aids(amountReadBack ? 1 : 0, direction ? 1 : 0, confirmation ? 1 : 0));
    }

    /** Whether the cashier hears keys, saves and refusals; at first not. */
    public static void setSounds(boolean wanted) {
        check(LIBRARY.kova_set_sounds(wanted ? 1 : 0));
    }

    /** Whether a sign says what the cashier waits for when the server is slow, or dead; at first it does. */
    public static void setWaitingSign(boolean wanted) {
        check(LIBRARY.kova_set_waiting_sign(wanted ? 1 : 0));
    }

    /** The host's window that dialogs stand in front of: an X11 window id or an HWND; 0 for none. Of an AWT window that
     *  is shown: {@code com.sun.jna.Native.getWindowID(window)}. */
    public static void setParentWindow(long window) {
        check(LIBRARY.kova_set_parent_window(window));
    }

    public static void setDecimalKey(DecimalKey key) {
        check(LIBRARY.kova_set_decimal_key(key.ordinal()));
    }

    /** The folder of {@code logfile.log} from now on, unless KOVA_LOG names a file. */
    public static void setLogFolder(String folder) {
        check(LIBRARY.kova_set_log_folder(folder));
    }

    /** Closes open dialogs and ends what the first component began; the next one starts again. On the thread that uses
     *  the component. */
    public static void shutDown() {
        check(LIBRARY.kova_shut_down());
    }

    /** Handles the events that wait, and always returns: what a host calls every few milliseconds while a dialog that was
     *  shown by {@code show(0)} is open. */
    public static void processEvents() {
        check(LIBRARY.kova_process_events());
    }

    /** A file descriptor that can be read when {@link #processEvents} has something to do, for hosts that wait in native
     *  code; -1 on Windows. */
    public static int eventDescriptor() {
        final IntByReference descriptor = new IntByReference();
        check(LIBRARY.kova_event_descriptor(descriptor));
        return descriptor.getValue();
    }

    /** The date that a text of {@code stampa} or {@code anteprima} names; empty when it is none. Any thread. */
    public static Optional<LocalDate> parseDate(String text) {
        final IntByReference year = new IntByReference();
        final IntByReference month = new IntByReference();
        final IntByReference day = new IntByReference();
        final int status = LIBRARY.kova_parse_date(text, year, month, day);
        if (status != 0 && LIBRARY.kova_last_error_number() == TYPE_MISMATCH)
            return Optional.empty();
        check(status);
        return Optional.of(LocalDate.of(year.getValue(), month.getValue(), day.getValue()));
    }

    /** In the region's short form, such as 16/11/2026. Any thread. */
    public static String formatDate(LocalDate date) {
        final PointerByReference text = new PointerByReference();
        check(LIBRARY.kova_format_date(date.getYear(), date.getMonthValue(), date.getDayOfMonth(), text));
        return string(text);
    }

    /** With the region's separators, rounded half away from zero to [0-15] decimals. Any thread. */
    public static String formatAmount(double amount, int decimals) {
        final PointerByReference text = new PointerByReference();
        check(LIBRARY.kova_format_amount(amount, decimals, text));
        return string(text);
    }

    /** The font family that the dialog is drawn with; empty before the first component. */
    public static String fontFamily() {
        final PointerByReference family = new PointerByReference();
        check(LIBRARY.kova_font_family(family));
        return string(family);
    }

    /** What was handed out is the library's: it is copied. */
    static String string(PointerByReference text) {
        final Pointer handedOut = text.getValue();
        return handedOut == null ? "" : handedOut.getString(0, "UTF-8");
    }
}
