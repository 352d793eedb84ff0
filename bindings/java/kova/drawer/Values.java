package kova.drawer;

import com.sun.jna.Memory;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;
import java.util.function.ToIntBiFunction;
import java.util.function.ToIntFunction;

/** Values of calls by name: null, Short, Integer, Double, Boolean, String and {@link Database}. */
final class Values {
    private static final int INT16 = 1;
    private static final int INT32 = 2;
    private static final int DOUBLE = 3;
    private static final int BOOLEAN = 4;
    private static final int TEXT = 5;
    private static final int DATABASE = 6;

    private Values() {}

    static Object get(ToIntFunction<CInterface.Value> call) {
        final CInterface.Value value = new CInterface.Value();
        Component.check(call.applyAsInt(value));
        return objectOf(value, null);
    }

    static void set(Object content, ToIntFunction<CInterface.Value> call) {
        final CInterface.Value value = new CInterface.Value();
        final Memory text = assign(value, content);
        try {
            Component.check(call.applyAsInt(value));
        } finally {
            java.lang.ref.Reference.reachabilityFence(text);
        }
    }

    static Object invoke(Object[] arguments, ToIntBiFunction<CInterface.Value[], CInterface.Value> call) {
        final CInterface.Value result = new CInterface.Value();
        final CInterface.Value[] values =
            (CInterface.Value[]) new CInterface.Value().toArray(Math.max(1, arguments.length));
        final List<Memory> texts = new ArrayList<>();
        for (int i = 0; i < arguments.length; ++i)
            texts.add(assign(values[i], arguments[i]));
        try {
            Sink.checkRaised(() -> call.applyAsInt(values, result));
        } finally {
            java.lang.ref.Reference.reachabilityFence(texts);
            for (int i = 0; i < arguments.length; ++i)
                arguments[i] = objectOf(values[i], arguments[i]);
        }
        return objectOf(result, null);
    }

    /** The memory that the value's text stands in, or null. */
    private static Memory assign(CInterface.Value value, Object content) {
        if (content instanceof Boolean) {
            value.kind = BOOLEAN;
            value.integer = (Boolean) content ? 1 : 0;
        } else if (content instanceof Short || content instanceof Byte || content instanceof Integer) {
            value.kind = content instanceof Integer ? INT32 : INT16;
            value.integer = ((Number) content).intValue();
        } else if (content instanceof Number) {
            value.kind = DOUBLE;
            value.number = ((Number) content).doubleValue();
        } else if (content instanceof CharSequence) {
            final byte[] bytes = content.toString().getBytes(StandardCharsets.UTF_8);
            final Memory text = new Memory(bytes.length + 1L);
            text.write(0, bytes, 0, bytes.length);
            text.setByte(bytes.length, (byte) 0);
            value.kind = TEXT;
            value.text = text;
            return text;
        } else if (content instanceof Database) {
            value.kind = DATABASE;
            value.database = Database.handleOf((Database) content);
        } else if (content != null) {
            throw new IllegalArgumentException("No value of the component's: " + content.getClass().getName());
        }
        return null;
    }

    private static Object objectOf(CInterface.Value value, Object before) {
        switch (value.kind) {
        case INT16:
            return (short) value.integer;
        case INT32:
            return value.integer;
        case DOUBLE:
            return value.number;
        case BOOLEAN:
            return value.integer != 0;
        case TEXT:
            return value.text == null ? "" : value.text.getString(0, "UTF-8");
        case DATABASE:
            return before;
        default:
            return null;
        }
    }
}
