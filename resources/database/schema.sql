-- The host's tables, views and function as the component reads them. The declared types are those of the shops'
-- servers; SQLite keeps what it is given, and the adapter turns it into values of these types.
-- Date-times are texts YYYY-MM-DD HH:MM:SS. Texts compare without regard to letter case.

CREATE TABLE tabImpostazioni(
    descrizione nvarchar(100) COLLATE NOCASE,
    valore nvarchar(255) COLLATE NOCASE
);

-- idTypeRow: 1 initial float, 2 shortage, 3 excess, 4 withdrawal for deposit, 5 final float. Other kinds are the
-- host's own: 0 for a plain movement, 10 for takings without a fiscal receipt.
CREATE TABLE tabActivityDrawer(
    id INTEGER PRIMARY KEY,
    Description nvarchar(100) COLLATE NOCASE,
    coefficient int, -- 1 into the drawer, -1 out of it
    idTypeRow int,
    visible bit,
    Sorting int,
    IsAutomaticNote bit,
    isOpenECRDrawer bit
);

-- IdTipoPagamento: 1 cash; 2 debit card, 3 credit card, 4 vouchers.
CREATE TABLE tabPagamenti(
    idpagamento int,
    TipoPagamento nvarchar(100) COLLATE NOCASE,
    IdTipoPagamento int,
    Valuta nvarchar(10) COLLATE NOCASE,
    idOrdinamento int
);

CREATE TABLE tabValute(
    Valuta nvarchar(10) COLLATE NOCASE
);

CREATE TABLE tabUtenti(
    idutente int,
    Nome nvarchar(100) COLLATE NOCASE
);

-- Every movement of every drawer. TipoOperazione is the activity; idTestata the receipt that closed the movement,
-- Null or -1 while it is open.
CREATE TABLE tabPagamentiScontriniBackoffice(
    id INTEGER PRIMARY KEY,
    DataOperazione datetime,
    TipoOperazione int,
    idpagamento int,
    Coefficiente int,
    ImportoIncassato money,
    Valuta nvarchar(10) COLLATE NOCASE,
    Note nvarchar(500) COLLATE NOCASE,
    Cassetto int,
    idCassa int,
    idutente int,
    idTestata int
);

-- A date-time that arrives with a T between its halves is stored with a blank, so that sorting by text sorts by
-- time.
CREATE TRIGGER movementInserted AFTER INSERT ON tabPagamentiScontriniBackoffice
WHEN NEW.DataOperazione LIKE '____-__-__T%'
BEGIN
    UPDATE tabPagamentiScontriniBackoffice SET DataOperazione = replace(DataOperazione, 'T', ' ') WHERE id = NEW.id;
END;

CREATE TRIGGER movementRedated AFTER UPDATE OF DataOperazione ON tabPagamentiScontriniBackoffice
WHEN NEW.DataOperazione LIKE '____-__-__T%'
BEGIN
    UPDATE tabPagamentiScontriniBackoffice SET DataOperazione = replace(DataOperazione, 'T', ' ') WHERE id = NEW.id;
END;

-- What the views below have in common: a movement with the texts that belong to its numbers.
CREATE VIEW Report_Movement AS
SELECT
    m.DataOperazione AS [Data Operazione],
    m.Cassetto AS [Cassetto],
    a.Description AS [Tipo Operazione],
    p.TipoPagamento AS [Tipo Pagamento],
    m.ImportoIncassato * IFNULL(m.Coefficiente, 1) AS importo,
    m.Valuta AS Valuta,
    m.Note AS [Note Movimento],
    a.Sorting AS Ordinamento,
    u.Nome AS [Operatore],
    m.idCassa AS idCassa,
    m.idutente AS idUtente,
    a.idTypeRow AS idTypeRow
FROM tabPagamentiScontriniBackoffice AS m
LEFT JOIN tabActivityDrawer AS a ON a.id = m.TipoOperazione
LEFT JOIN tabPagamenti AS p ON p.idpagamento = m.idpagamento
LEFT JOIN tabUtenti AS u ON u.idutente = m.idutente;

CREATE VIEW Report_Drawer_Operation AS
SELECT [Data Operazione], [Tipo Operazione], [Tipo Pagamento], importo, Valuta, [Note Movimento], Ordinamento,
    [Operatore], idCassa, idUtente
FROM Report_Movement
WHERE IFNULL(idTypeRow, 0) <> 10;

-- The queries give the day themselves; the same rows make today's list right on any clock.
CREATE VIEW Report_Drawer_Daily_Operation AS
SELECT [Data Operazione], [Tipo Operazione], [Tipo Pagamento], importo, Valuta, [Note Movimento], Ordinamento,
    [Operatore], idCassa, idUtente
FROM Report_Movement
WHERE IFNULL(idTypeRow, 0) <> 10;

CREATE VIEW Report_NonFiscale_Operation AS
SELECT [Data Operazione], [Tipo Operazione], [Tipo Pagamento], importo, Valuta, [Note Movimento], Ordinamento,
    [Operatore], idCassa, idUtente
FROM Report_Movement
WHERE idTypeRow = 10;

-- The function GetDailyOperation(date) reads the rows of its day from here.
CREATE VIEW Daily_Operation AS
SELECT [Data Operazione] AS [Data-Ora Aggiornamento], [Cassetto], [Tipo Operazione], [Tipo Pagamento], importo,
    Valuta AS valuta, [Note Movimento], [Operatore]
FROM Report_Movement
ORDER BY [Data Operazione];
