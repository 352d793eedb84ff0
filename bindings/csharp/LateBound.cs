using System;
using System.Runtime.InteropServices;

namespace Kova.Drawer
{
    public sealed partial class DrawerMan
    {
        const int Int16Kind = 1, Int32Kind = 2, DoubleKind = 3, BooleanKind = 4, TextKind = 5, DatabaseKind = 6;

        delegate int SetValue(ref Native.Value value);
        delegate int InvokeValues(Native.Value[] arguments, out Native.Value result);

        /// <summary>Reads a property by name, letter case aside.</summary>
        public object Get(string name)
        {
            Native.Value value;
            Check(Native.kova_get(Handle, Utf8.Bytes(name), out value));
            return ObjectOf(value, null);
        }

        public object Get(Member member)
        {
            Native.Value value;
            Check(Native.kova_get_by_id(Handle, (int)member, out value));
            return ObjectOf(value, null);
        }

        /// <summary>Writes a property by name: a short, int, double, bool, string or Database, or null. Values are
        /// converted as the old languages do: "12" for a number, 1 for a Boolean.</summary>
        public void Set(string name, object content)
        {
            Set(content, (ref Native.Value value) => Native.kova_set(Handle, Utf8.Bytes(name), ref value));
        }

        public void Set(Member member, object content)
        {
            Set(content, (ref Native.Value value) => Native.kova_set_by_id(Handle, (int)member, ref value));
        }

        /// <summary>Calls a method by name. What a handler wrote stands in the arguments afterwards, in the types that
        /// are declared, also when the call failed.</summary>
        public object Invoke(string name, params object[] arguments)
        {
            return Invoke(arguments, (Native.Value[] values, out Native.Value result) =>
                Native.kova_invoke(Handle, Utf8.Bytes(name), values, arguments.Length, out result));
        }

        public object Invoke(Member member, params object[] arguments)
        {
            return Invoke(arguments, (Native.Value[] values, out Native.Value result) =>
                Native.kova_invoke_by_id(Handle, (int)member, values, arguments.Length, out result));
        }

        static void Set(object content, SetValue set)
        {
            Native.Value value = ValueOf(content);
            IntPtr text = value.Text;
            try
            {
                Check(set(ref value));
            }
            finally
            {
                Marshal.FreeHGlobal(text);
            }
        }

        static object Invoke(object[] arguments, InvokeValues invoke)
        {
            var values = new Native.Value[arguments.Length];
            var texts = new IntPtr[arguments.Length];
            var result = new Native.Value();
            try
            {
                for (int i = 0; i < values.Length; ++i)
                {
                    values[i] = ValueOf(arguments[i]);
                    texts[i] = values[i].Text;
                }
                try
                {
                    Sink.CheckRaised(() => invoke(values, out result));
                }
                finally
                {
                    for (int i = 0; i < values.Length; ++i)
                        arguments[i] = ObjectOf(values[i], arguments[i]);
                }
            }
            finally
            {
                foreach (var text in texts)
                    Marshal.FreeHGlobal(text);
            }
            return ObjectOf(result, null);
        }

        /// <summary>A text of it must be freed.</summary>
        static Native.Value ValueOf(object content)
        {
            var value = new Native.Value();
            if (content is bool)
            {
                value.Kind = BooleanKind;
                value.Integer = (bool)content ? 1 : 0;
            }
            else if (content is short || content is byte || content is int)
            {
                value.Kind = content is int ? Int32Kind : Int16Kind;
                value.Integer = Convert.ToInt32(content);
            }
            else if (content is double || content is float || content is decimal || content is long)
            {
                value.Kind = DoubleKind;
                value.Number = Convert.ToDouble(content);
            }
            else if (content is string)
            {
                byte[] bytes = Utf8.Bytes((string)content);
                value.Kind = TextKind;
                value.Text = Marshal.AllocHGlobal(bytes.Length);
                Marshal.Copy(bytes, 0, value.Text, bytes.Length);
            }
            else if (content is Database)
            {
                value.Kind = DatabaseKind;
                value.Database = Database.HandleOf((Database)content);
            }
            else if (content != null)
            {
                throw new ArgumentException("No value of the component's: " + content.GetType());
            }
            return value;
        }

        static object ObjectOf(Native.Value value, object before)
        {
            switch (value.Kind)
            {
                case Int16Kind:
                    return (short)value.Integer;
                case Int32Kind:
                    return value.Integer;
                case DoubleKind:
                    return value.Number;
                case BooleanKind:
                    return value.Integer != 0;
                case TextKind:
                    return Utf8.Text(value.Text);
                case DatabaseKind:
                    return before;
                default:
                    return null;
            }
        }
    }
}
