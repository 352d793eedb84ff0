import java.math.BigDecimal;
import java.sql.Connection;
import java.sql.DriverManager;
import java.sql.PreparedStatement;
import java.sql.ResultSet;
import java.sql.SQLException;
import java.sql.Statement;
import java.time.LocalDate;
import java.time.LocalDateTime;
import java.time.format.DateTimeFormatter;
import java.util.Optional;
import kova.drawer.Database;
import kova.drawer.DrawerEvents;
import kova.drawer.DrawerMan;
import kova.drawer.Kova;
import kova.drawer.KovaException;
import kova.drawer.Movement;
import kova.drawer.Text;

/** A till of two cashiers, who work one after the other: it stores their movements in its database, books in francs,
 *  and once the day has been printed asks again before it takes more.
 *
 *  <pre>java -cp kova-drawer.jar:jna.jar:sqlite-jdbc.jar:. Till SHOP.db</pre> */
final class Till implements DrawerEvents {
    private static final int NUMBER = 1;
    private static final int PAID_IN = 30;
    private static final DateTimeFormatter STORED_TIME = DateTimeFormatter.ofPattern("yyyy-MM-dd HH:mm:ss");

    private final Connection database;
    private boolean periodClosed;

    private Till(Connection database) {
        this.database = database;
    }

    /** The cashier keeps what was entered and reads the message when this throws. */
    @Override
    public void salvaPagamento(Movement movement) throws Exception {
        System.out.printf("event SalvaPagamento idpagamento=%d importo=%s Valuta=\"%s\" note=\"%s\" cassetto=%d "
            + "tipoIncasso=%d isIncasso=%s%n", movement.getIdpagamento(), amount(movement.getImporto()),
            movement.getValuta(), movement.getNote(), movement.getCassetto(), movement.getTipoIncasso(),
            movement.isIncasso() ? "True" : "False");
        movement.setValuta("CHF"); // stays chosen
        movement.setTipoIncasso(PAID_IN);
        if (periodClosed) {
            periodClosed = false;
            throw new Exception("Il periodo è chiuso");
        }
        store(movement);
    }

    @Override
    public void stampa(Text day) throws SQLException {
        System.out.printf("event Stampa DataOperazione=\"%s\"%n", day);
        print(day);
        periodClosed = true;
    }

    @Override
    public void anteprima(Text day) throws SQLException {
        System.out.printf("event Anteprima DataOperazione=\"%s\"%n", day);
        print(day);
    }

    @Override
    public void apriCassetto() {
        System.out.println("event ApriCassetto");
    }

    @Override
    public void failed(String event, Throwable failure) {
        System.err.println(event + " refused: " + failure.getMessage());
    }

    private void store(Movement movement) throws SQLException {
        try (PreparedStatement insert = database.prepareStatement("INSERT INTO tabPagamentiScontriniBackoffice("
                + "DataOperazione, TipoOperazione, idpagamento, Coefficiente, ImportoIncassato, Valuta, Note, Cassetto, "
                + "idCassa) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)")) {
            insert.setString(1, LocalDateTime.now().format(STORED_TIME));
            insert.setInt(2, movement.getTipoIncasso());
            insert.setInt(3, movement.getIdpagamento());
            insert.setInt(4, movement.isIncasso() ? 1 : -1);
            insert.setDouble(5, movement.getImporto());
            insert.setString(6, movement.getValuta());
            insert.setString(7, movement.getNote());
            insert.setInt(8, movement.getCassetto());
            insert.setInt(9, NUMBER);
            insert.executeUpdate();
        }
    }

    /** What the cashier left in the list's date field need not be a date. */
    private void print(Text text) throws SQLException {
        final Optional<LocalDate> day = Kova.parseDate(text.get());
        if (day.isEmpty())
            return;
        try (PreparedStatement sums = database.prepareStatement("SELECT Valuta, count(*), "
                + "sum(Coefficiente * ImportoIncassato) FROM tabPagamentiScontriniBackoffice "
                + "WHERE date(DataOperazione) = ? AND idCassa = ? GROUP BY Valuta")) {
            sums.setString(1, day.get().toString());
            sums.setInt(2, NUMBER);
            System.out.println("Till " + NUMBER + ", " + Kova.formatDate(day.get()));
            for (ResultSet row = sums.executeQuery(); row.next();)
                System.out.printf("%s %s (%d)%n", row.getString(1), Kova.formatAmount(row.getDouble(3), 2), row.getInt(2));
        }
    }

    private void listStored() throws SQLException {
        try (Statement query = database.createStatement();
                ResultSet row = query.executeQuery("SELECT idpagamento, ImportoIncassato, Valuta, Note, Cassetto, "
                    + "TipoOperazione, Coefficiente FROM tabPagamentiScontriniBackoffice ORDER BY id")) {
            while (row.next())
                System.out.printf("row %d %s %s %s %d %d %d%n", row.getInt(1), amount(row.getDouble(2)),
                    row.getString(3), row.getString(4), row.getInt(5), row.getInt(6), row.getInt(7));
        }
    }

    private static String amount(double amount) {
        return BigDecimal.valueOf(amount).stripTrailingZeros().toPlainString();
    }

    public static void main(String[] arguments) throws SQLException {
        final String file = arguments[0];
        // InizializzaByConnString would keep a failure to itself; a database of our own tells it.
        try (Connection database = DriverManager.getConnection("jdbc:sqlite:" + file);
                DrawerMan drawer = new DrawerMan();
                Database catalogues = Database.open("Data Source=" + file)) {
            final Till till = new Till(database);
            drawer.connect(till);
            drawer.inizializza(catalogues);
            drawer.setIdCassa(NUMBER);

            Kova.setLanguage(Kova.ITALIAN, "Italiano");
            drawer.show(); // returns when the first cashier has closed it

            Kova.setLanguage(Kova.GERMAN, "Deutsch");
            drawer.setSoftwareName("Cassa");
            drawer.setDoppioInserimentoObbligatorio(true);
            drawer.show();
            till.listStored();
        } catch (KovaException failure) {
            System.err.println(failure.getMessage() + " (" + failure.getNumber() + ")");
            System.exit(1);
        }
    }
}
