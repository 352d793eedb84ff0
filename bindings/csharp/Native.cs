using System;
using System.Runtime.InteropServices;
using System.Text;

namespace Kova.Drawer
{
    /// <summary>The library's functions beside those of the members; see kova_drawer_man_c.h. Handles are numbers in
    /// the dress of a pointer, which are never followed.</summary>
    static partial class Native
    {
        const string Library = "Kova_Drawer_Man";
        const CallingConvention Cdecl = CallingConvention.Cdecl;

        [UnmanagedFunctionPointer(Cdecl)]
        internal delegate int SaveHandler(IntPtr user, ref int idpagamento, ref double importo, IntPtr valuta,
            IntPtr note, ref short cassetto, ref int tipoIncasso, ref int isIncasso);

        [UnmanagedFunctionPointer(Cdecl)]
        internal delegate int DayHandler(IntPtr user, IntPtr dataOperazione);

        [UnmanagedFunctionPointer(Cdecl)]
        internal delegate int PlainHandler(IntPtr user);

        [UnmanagedFunctionPointer(Cdecl)]
        internal delegate void Notice(IntPtr user);

        [StructLayout(LayoutKind.Sequential)]
        internal struct Handlers
        {
            internal uint Size;
            internal IntPtr User, SalvaPagamento, Stampa, Anteprima, ApriCassetto, Released;
        }

        [StructLayout(LayoutKind.Sequential)]
        internal struct Value
        {
            internal int Kind, Integer;
            internal double Number;
            internal IntPtr Text, Database;
        }

        [DllImport(Library, CallingConvention = Cdecl)] internal static extern IntPtr kova_last_error();
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_last_error_number();
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern IntPtr kova_last_sql_state();
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_version();

        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_create(out IntPtr component);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_release(IntPtr component);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_is_open(IntPtr component, out int open);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_on_closed(IntPtr component, IntPtr handler, IntPtr user);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_connect(IntPtr component, ref Handlers handlers, out IntPtr sink);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_disconnect(IntPtr sink);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_fail(byte[] words);

        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_text_create(byte[] content, out IntPtr text);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_text_release(IntPtr text);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_text_get(IntPtr text, out IntPtr content);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_text_set(IntPtr text, byte[] content);

        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_get(IntPtr component, byte[] name, out Value value);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_get_by_id(IntPtr component, int id, out Value value);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_set(IntPtr component, byte[] name, ref Value value);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_set_by_id(IntPtr component, int id, ref Value value);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_invoke(IntPtr component, byte[] name, [In, Out] Value[] arguments, int count,
            out Value result);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_invoke_by_id(IntPtr component, int id, [In, Out] Value[] arguments, int count,
            out Value result);

        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_database_open(byte[] connection, out IntPtr database);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_database_from_odbc(IntPtr connectionHandle, out IntPtr database);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_database_release(IntPtr database);

        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_set_language(int id, byte[] name);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_get_language(out int id);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_set_screen_aids(int amountReadBack, int direction, int confirmation);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_set_sounds(int wanted);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_set_waiting_sign(int wanted);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_set_parent_window(ulong window);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_set_decimal_key(int key);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_set_log_folder(byte[] folder);
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_shut_down();
        [DllImport(Library, CallingConvention = Cdecl)] internal static extern int kova_process_events();
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_event_descriptor(out int descriptor);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_parse_date(byte[] text, out int year, out int month, out int day);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_format_date(int year, int month, int day, out IntPtr text);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_format_amount(double amount, int decimals, out IntPtr text);
        [DllImport(Library, CallingConvention = Cdecl)]
        internal static extern int kova_font_family(out IntPtr family);
    }

    /// <summary>Texts as the library has them. Older runtimes marshal none of this kind by themselves.</summary>
    static class Utf8
    {
        /// <summary>With the zero byte at the end; null is the empty text.</summary>
        internal static byte[] Bytes(string text)
        {
            return Encoding.UTF8.GetBytes((text ?? "") + '\0');
        }

        /// <summary>A copy of what the library has handed out.</summary>
        internal static string Text(IntPtr text)
        {
            if (text == IntPtr.Zero)
                return "";
            int length = 0;
            while (Marshal.ReadByte(text, length) != 0)
                ++length;
            var bytes = new byte[length];
            Marshal.Copy(text, bytes, 0, length);
            return Encoding.UTF8.GetString(bytes);
        }

        /// <summary>Of a text by reference.</summary>
        internal static string Content(IntPtr text)
        {
            IntPtr content;
            KovaException.Check(Native.kova_text_get(text, out content));
            return Text(content);
        }
    }
}
