import java.math.BigDecimal;
import java.sql.Connection;
import java.sql.DriverManager;
import java.sql.PreparedStatement;
import java.sql.SQLException;
import java.sql.Statement;
import java.time.LocalDate;
import java.util.Optional;
import kova.drawer.Database;
import kova.drawer.DrawerEvents;
import kova.drawer.DrawerMan;
import kova.drawer.Kova;
import kova.drawer.KovaException;
import kova.drawer.Movement;
import kova.drawer.Text;

/** A till in Java: two cashiers after each other, and a journal of what they did.
 *
 *  <pre>java -cp kova-drawer.jar:jna.jar:sqlite-jdbc.jar:. Till SHOP JOURNAL</pre>
 *
 *  SHOP is a file of the embedded database or a connection text; JOURNAL is an SQLite file of the till's own. */
final class Till implements DrawerEvents {
    private static final String CURRENCY = "CHF"; // in which this till is booked, whatever the dialog proposed
    private static final int ACTIVITY = 30; // under which its movements are booked
    private static final String[] TABLES = {
        "CREATE TABLE IF NOT EXISTS movements (idpagamento INTEGER, importo REAL, Valuta TEXT, note TEXT, "
            + "cassetto INTEGER, tipoIncasso INTEGER, isIncasso INTEGER)",
        "CREATE TABLE IF NOT EXISTS requests (event TEXT, day TEXT)"};

    private final Connection journal;
    private boolean closed;

    private Till(Connection journal) throws SQLException {
        this.journal = journal;
        try (Statement statement = journal.createStatement()) {
            for (String table : TABLES)
                statement.execute(table);
        }
    }

    /** The cashier keeps what was entered and reads the message when this throws. */
    @Override
    public void salvaPagamento(Movement movement) throws Exception {
        System.out.printf("event SalvaPagamento idpagamento=%d importo=%s Valuta=\"%s\" note=\"%s\" cassetto=%d "
            + "tipoIncasso=%d isIncasso=%s%n", movement.getIdpagamento(), amount(movement.getImporto()),
            movement.getValuta(), movement.getNote(), movement.getCassetto(), movement.getTipoIncasso(),
            movement.isIncasso() ? "True" : "False");
        movement.setValuta(CURRENCY); // what is written here reaches the dialog
        movement.setTipoIncasso(ACTIVITY);
        if (closed) {
            closed = false; // the entry may be confirmed again
            throw new Exception("The day is closed. Confirm again to enter this in the next one.");
        }
        store("INSERT INTO movements VALUES (?,?,?,?,?,?,?)", movement.getIdpagamento(), movement.getImporto(),
            movement.getValuta(), movement.getNote(), movement.getCassetto(), movement.getTipoIncasso(),
            movement.isIncasso());
    }

    @Override
    public void stampa(Text day) throws SQLException {
        System.out.printf("event Stampa DataOperazione=\"%s\"%n", day);
        request("Stampa", day);
        closed = true;
    }

    @Override
    public void anteprima(Text day) throws SQLException {
        System.out.printf("event Anteprima DataOperazione=\"%s\"%n", day);
        request("Anteprima", day);
    }

    @Override
    public void apriCassetto() throws SQLException {
        System.out.println("event ApriCassetto");
        store("INSERT INTO requests VALUES (?,?)", "ApriCassetto", null);
    }

    /** The binding would log the whole exception. */
    @Override
    public void failed(String event, Throwable failure) {
        System.err.println(event + " refused: " + failure.getMessage());
    }

    /** What the cashier left in the list's date field need not be a date: then nothing is printed. */
    private void request(String event, Text text) throws SQLException {
        final Optional<LocalDate> day = Kova.parseDate(text.get());
        if (day.isPresent())
            store("INSERT INTO requests VALUES (?,?)", event, day.get().toString());
    }

    private void store(String statement, Object... values) throws SQLException {
        try (PreparedStatement insert = journal.prepareStatement(statement)) {
            for (int i = 0; i < values.length; ++i)
                insert.setObject(i + 1, values[i]);
            insert.executeUpdate();
        }
    }

    private static String amount(double amount) {
        return BigDecimal.valueOf(amount).stripTrailingZeros().toPlainString();
    }

    public static void main(String[] arguments) throws SQLException {
        final String shop = arguments[0];
        try (Connection journal = DriverManager.getConnection("jdbc:sqlite:" + arguments[1]);
                DrawerMan drawer = new DrawerMan()) {
            drawer.connect(new Till(journal));
            // InizializzaByConnString would keep a failure to itself; a database of our own tells it.
            try (Database database = Database.open(shop.contains("=") ? shop : "Data Source=" + shop)) {
                drawer.inizializza(database);
            }
            drawer.setIdCassa(1);
            Kova.setLanguage(Kova.ITALIAN, "Italiano");
            drawer.show(); // returns when the first cashier has closed it

            // The next cashier reads German, and pays elsewhere what is taken out here.
            Kova.setLanguage(Kova.GERMAN, "Deutsch");
            drawer.setSoftwareName("Cassa");
            drawer.setDoppioInserimentoObbligatorio(true);
            drawer.show();
        } catch (KovaException failure) {
            System.err.println(failure.getMessage() + " (" + failure.getNumber() + ")");
            System.exit(1);
        }
    }
}
