-- A small shop near the Swiss border: two tills every day, a third on Saturdays, closed on Sundays, one month up to
-- the morning of Monday 2026-11-16. For the empty tables of schema.sql.

INSERT INTO tabImpostazioni(descrizione, valore) VALUES
    ('ValutaAziendale', '€'),
    ('CifreDecimali', '2'),
    ('CifreDecimaliQuantita', '0'),
    ('idCassettoCausPred_Prelievi', '3'),
    ('idCassettoCausPred_Versamenti', '2'),
    ('Attiva_Gestione_MultiCassetto', '1');

INSERT INTO tabActivityDrawer(id, Description, coefficient, idTypeRow, visible, Sorting, IsAutomaticNote, isOpenECRDrawer)
VALUES
    (1, 'Fondo cassa iniziale', 1, 1, 1, 10, 0, 1),
    (2, 'Versamento', 1, 0, 1, 20, 1, 1),
    (3, 'Prelievo', -1, 0, 1, 30, 1, 1),
    (4, 'Prelievo per versamento in banca', -1, 4, 1, 40, 1, 1),
    (5, 'Spese varie', -1, 0, 1, 50, 0, 1),
    (6, 'Ammanco di cassa', -1, 2, 1, 60, 1, 0),
    (7, 'Esubero di cassa', 1, 3, 1, 70, 1, 0),
    (8, 'Fondo cassa finale', -1, 5, 1, 80, 0, 0),
    (9, 'Acconto fornitore', -1, 0, 0, 90, 0, 0),
    -- Takings come from the till itself, not from a cashier's hand.
    (20, 'Scontrini incassati', 1, 0, 0, 110, 0, 0),
    (21, 'Fatture incassate', 1, 0, 0, 120, 0, 0),
    (22, 'Ricevute incassate', 1, 0, 0, 130, 0, 0),
    (23, 'Non fiscale', 1, 10, 0, 140, 0, 0);

INSERT INTO tabPagamenti(idpagamento, TipoPagamento, IdTipoPagamento, Valuta, idOrdinamento) VALUES
    (1, 'Contanti', 1, '€', 10),
    (2, 'Contanti CHF', 1, 'CHF', 20),
    (3, 'Bancomat', 2, '€', 30),
    (4, 'Carta di credito', 3, '€', 40),
    (5, 'Buoni pasto', 4, '€', 50),
    (6, 'Carta CHF', 3, 'CHF', 60);

INSERT INTO tabValute(Valuta) VALUES ('€'), ('CHF'), ('$');

INSERT INTO tabUtenti(idutente, Nome) VALUES
    (1, 'Giulia Ferri'),
    (2, 'Marco Bianchi'),
    (3, 'Niccolò D''Amico'),
    (4, 'Zoë Hürlimann');

-- A shift is one till on one open day. A till opens with the float that it closed with; floats differ from shift to
-- shift by steps of five euros.
CREATE TEMP TABLE sample_shift AS
WITH RECURSIVE
    calendar(day) AS (
        SELECT '2026-10-16'
        UNION ALL
        SELECT date(day, '+1 day') FROM calendar WHERE day < '2026-11-16'
    ),
    open_day(day, number) AS (
        SELECT day, row_number() OVER (ORDER BY day) FROM calendar WHERE strftime('%w', day) <> '0'
    ),
    till(till, smallest_float, step) AS (VALUES (1, 180, 5), (2, 120, 5), (3, 100, 0))
SELECT
    day,
    number,
    till,
    smallest_float + step * (number * 7 % 9) AS opening,
    smallest_float + step * ((number + 1) * 7 % 9) AS closing
FROM open_day JOIN till ON till < 3 OR strftime('%w', day) = '6';

-- What happens in a shift, as a rule: on the shifts whose number leaves `phase` when divided by `every`, for an amount
-- of `base` plus up to twelve times `swing`.
CREATE TEMP TABLE sample_event(till, time, operator, activity, payment, base, swing, every, phase, drawer, note);
INSERT INTO sample_event VALUES
    (1, '09:05:00', 1, 20, 1,  96.40, 7.35, 1, 0, 1, NULL),
    (1, '09:40:00', 1, 20, 3, 118.20, 6.15, 1, 0, 1, NULL),
    (1, '10:30:00', 1,  5, 1,  12.50, 1.20, 4, 1, 1, 'Francobolli e cancelleria'),
    (1, '11:20:00', 1, 20, 2,  45.00, 5.00, 2, 0, 1, NULL),
    (1, '12:15:00', 1, 21, 4, 164.00, 9.90, 3, 0, 1, 'Fattura a cliente'),
    (1, '12:50:00', 1,  3, 1,  40.00, 5.00, 3, 1, 1, 'Prelievo'),
    (1, '14:35:00', 2, 20, 1, 132.75, 8.05, 1, 0, 1, NULL),
    (1, '15:30:00', 2,  2, 1,  50.00, 0.00, 5, 2, 1, 'Monete dalla banca'),
    (1, '16:10:00', 2, 20, 4, 201.10, 7.45, 1, 0, 1, NULL),
    (1, '17:45:00', 2, 23, 1,  18.00, 2.50, 2, 1, 1, 'Preconto tavolo 4'),
    (1, '18:20:00', 2, 20, 5,  24.00, 8.00, 2, 1, 1, NULL),
    (1, '19:20:00', 2,  6, 1,   0.50, 0.15, 9, 4, 1, 'Ammanco di cassa'),
    (1, '19:20:00', 2,  7, 1,   0.30, 0.10, 9, 7, 1, 'Esubero di cassa'),
    (2, '09:15:00', 3, 20, 1,  64.90, 4.60, 1, 0, 2, NULL),
    (2, '10:50:00', 3, 20, 3,  83.30, 5.25, 1, 0, 2, NULL),
    (2, '12:30:00', 3, 22, 1,  22.00, 3.00, 4, 2, 2, 'Ricevuta n. 12'),
    (2, '13:10:00', 3, 23, 1,  15.50, 1.50, 3, 2, 2, 'Preconto banco'),
    (2, '15:05:00', 4, 20, 1,  71.15, 6.85, 1, 0, 2, NULL),
    (2, '16:40:00', 4,  5, 1,   8.90, 0.70, 5, 3, 2, 'Caffè e zucchero'),
    (2, '17:30:00', 4, 20, 6,  38.00, 4.00, 3, 1, 2, NULL),
    (2, '18:10:00', 4,  3, 1,  30.00, 5.00, 6, 5, 2, 'Resto per la cassa 1'),
    (3, '10:20:00', 4, 20, 1,  88.00, 6.50, 1, 0, 0, 'Banco del mercato'),
    (3, '11:45:00', 4, 20, 2,  35.00, 5.00, 1, 0, 0, 'Banco del mercato');

CREATE TEMP TABLE sample_movement AS
SELECT
    shift.day || ' ' || event.time AS moment,
    shift.day,
    event.till,
    event.operator,
    event.activity,
    event.payment,
    round(base + swing * ((number * 5 + event.rowid * 3) % 13), 2) AS amount,
    event.drawer,
    event.note
FROM sample_shift AS shift JOIN sample_event AS event ON event.till = shift.till AND number % every = phase;

INSERT INTO sample_movement
SELECT day || ' 08:3' || till || ':00', day, till, CASE till WHEN 1 THEN 1 WHEN 2 THEN 3 ELSE 4 END, 1, 1, opening,
    till % 3, NULL
FROM sample_shift;

-- In the evening the euro notes above the next float go to the bank, and the rest is counted as the final float.
INSERT INTO sample_movement
SELECT
    shift.day || ' 19:4' || shift.till || ':00', shift.day, shift.till, CASE shift.till WHEN 1 THEN 2 ELSE 4 END, 4, 1,
    round(sum(movement.amount * activity.coefficient) - closing, 2), shift.till % 3, 'Prelievo per versamento in banca'
FROM sample_shift AS shift
JOIN sample_movement AS movement ON movement.day = shift.day AND movement.till = shift.till AND movement.payment = 1
JOIN tabActivityDrawer AS activity ON activity.id = movement.activity
GROUP BY shift.day, shift.till;

INSERT INTO sample_movement
SELECT day || ' 19:5' || till || ':00', day, till, CASE till WHEN 1 THEN 2 ELSE 4 END, 8, 1, closing, till % 3, NULL
FROM sample_shift;

-- The last morning is not over yet. A closed shift's movements belong to a receipt; the last shifts' final floats and
-- this morning's movements are still open.
INSERT INTO tabPagamentiScontriniBackoffice(DataOperazione, TipoOperazione, idpagamento, Coefficiente,
    ImportoIncassato, Valuta, Note, Cassetto, idCassa, idutente, idTestata)
SELECT
    movement.moment, movement.activity, movement.payment, activity.coefficient, movement.amount, payment.Valuta,
    movement.note, movement.drawer, movement.till, movement.operator,
    CASE
        WHEN movement.day = '2026-11-16' THEN NULL
        WHEN movement.day = '2026-11-14' AND movement.activity = 8 THEN iif(movement.till = 2, -1, NULL)
        ELSE 10 * shift.number + shift.till
    END
FROM sample_movement AS movement
JOIN sample_shift AS shift ON shift.day = movement.day AND shift.till = movement.till
JOIN tabActivityDrawer AS activity ON activity.id = movement.activity
JOIN tabPagamenti AS payment ON payment.idpagamento = movement.payment
WHERE movement.moment < '2026-11-16 10:00'
ORDER BY movement.moment, movement.till;

DROP TABLE sample_movement;
DROP TABLE sample_event;
DROP TABLE sample_shift;
