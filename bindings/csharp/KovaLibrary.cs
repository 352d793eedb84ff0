using System;

namespace Kova.Drawer
{
    /// <summary>What the decimal key of the amount enters: a comma, as at first, or the region's decimal
    /// separator.</summary>
    public enum DecimalKey
    {
        Comma = 0,
        OfRegion = 1
    }

    /// <summary>What all components of the process share.</summary>
    public static class KovaLibrary
    {
        public const int Italian = 1040, German = 1031, English = 9;

        const int TypeMismatch = 13;

        /// <summary>Of the library's interface: 410 is 4.10.</summary>
        public static int Version
        {
            get { return Native.kova_version(); }
        }

        /// <summary>The language that the user works in from now on, in open dialogs too, by its Windows language
        /// identifier; any but these three shows Italian.</summary>
        public static void SetLanguage(int id, string name)
        {
            KovaException.Check(Native.kova_set_language(id, Utf8.Bytes(name)));
        }

        /// <summary>0 where the environment names none.</summary>
        public static int Language
        {
            get
            {
                int id;
                KovaException.Check(Native.kova_get_language(out id));
                return id;
            }
        }

        /// <summary>What the entry screen says beside its controls: the typed amount and all else that would be sent,
        /// with what contradicts itself or is missing; whether the money goes in or out; a short notice of what was
        /// sent.</summary>
        public static void SetScreenAids(bool amountReadBack, bool direction, bool confirmation)
        {
            KovaException.Check(Native.kova_set_screen_aids(amountReadBack ? 1 : 0, direction ? 1 : 0,
                confirmation ? 1 : 0));
        }

        /// <summary>Whether the cashier hears keys, saves and refusals; at first not.</summary>
        public static void SetSounds(bool wanted)
        {
            KovaException.Check(Native.kova_set_sounds(wanted ? 1 : 0));
        }

        /// <summary>Whether a sign says what the cashier waits for when the server is slow, or dead; at first it
        /// does.</summary>
        public static void SetWaitingSign(bool wanted)
        {
            KovaException.Check(Native.kova_set_waiting_sign(wanted ? 1 : 0));
        }

        /// <summary>The host's window that dialogs stand in front of: an X11 window id or an HWND; 0 for
        /// none.</summary>
        public static void SetParentWindow(ulong window)
        {
            KovaException.Check(Native.kova_set_parent_window(window));
        }

        public static void SetDecimalKey(DecimalKey key)
        {
            KovaException.Check(Native.kova_set_decimal_key((int)key));
        }

        /// <summary>The folder of logfile.log from now on, unless KOVA_LOG names a file.</summary>
        public static void SetLogFolder(string folder)
        {
            KovaException.Check(Native.kova_set_log_folder(Utf8.Bytes(folder)));
        }

        /// <summary>Closes open dialogs and ends what the first component began; the next one starts again. On the
        /// thread that uses the component.</summary>
        public static void ShutDown()
        {
            KovaException.Check(Native.kova_shut_down());
        }

        /// <summary>A file descriptor that can be read when ProcessEvents has something to do; -1 on Windows.</summary>
        public static int EventDescriptor
        {
            get
            {
                int descriptor;
                KovaException.Check(Native.kova_event_descriptor(out descriptor));
                return descriptor;
            }
        }

        /// <summary>The font family that the dialog is drawn with; empty before the first component.</summary>
        public static string FontFamily
        {
            get
            {
                IntPtr family;
                KovaException.Check(Native.kova_font_family(out family));
                return Utf8.Text(family);
            }
        }

        /// <summary>Handles the events that wait, and always returns: what a host calls every few milliseconds while a dialog
        /// that was shown by Show(0) is open.</summary>
        public static void ProcessEvents()
        {
            KovaException.Check(Native.kova_process_events());
        }

        /// <summary>The date that a text of Stampa or Anteprima names; null when it is none. Any thread.</summary>
        public static DateTime? ParseDate(string text)
        {
            int year, month, day;
            int status = Native.kova_parse_date(Utf8.Bytes(text), out year, out month, out day);
            if (status != 0 && Native.kova_last_error_number() == TypeMismatch)
                return null;
            KovaException.Check(status);
            return new DateTime(year, month, day);
        }

        /// <summary>In the region's short form, such as 16/11/2026. Any thread.</summary>
        public static string FormatDate(DateTime date)
        {
            IntPtr text;
            KovaException.Check(Native.kova_format_date(date.Year, date.Month, date.Day, out text));
            return Utf8.Text(text);
        }

        /// <summary>With the region's separators, rounded half away from zero to [0-15] decimals. Any
        /// thread.</summary>
        public static string FormatAmount(double amount, int decimals)
        {
            IntPtr text;
            KovaException.Check(Native.kova_format_amount(amount, decimals, out text));
            return Utf8.Text(text);
        }
    }
}
