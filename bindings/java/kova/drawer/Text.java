package kova.drawer;

import java.util.Objects;

/** A text by reference, such as a day of the list: what a handler sets reaches the handlers connected later and who
 *  raised the event. */
public final class Text {
    private String content;

    public Text(String content) {
        set(content);
    }

    public String get() {
        return content;
    }

    public void set(String content) {
        this.content = Objects.requireNonNull(content);
    }

    @Override
    public String toString() {
        return content;
    }
}
