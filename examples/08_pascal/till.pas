{ A till in Free Pascal: two cashiers after each other, and a journal of what they did.

      till SHOP JOURNAL

  SHOP is a file of the embedded database or a connection text; JOURNAL is a SQLite file of the till's own. }
program till;

{$mode objfpc}{$H+}{$codepage utf8}

uses
  cwstring, Classes, SysUtils, SQLDB, SQLite3Conn, KovaDrawerMan;

const
  Italian = 1040;
  German = 1031;
  Currency = 'CHF'; { in which this till is booked, whatever the dialog proposed }
  Activity = 30; { under which its movements are booked }

type
  TTill = class
  private
    FJournal: TSQLite3Connection;
    FTransaction: TSQLTransaction;
    FQuery: TSQLQuery;
    FClosed: Boolean;
    procedure Prepare(const sql: string);
    procedure Run;
    procedure Request(const event: string; const text: UTF8String = '');
  public
    constructor Create(const journalFile: string);
    destructor Destroy; override;
    procedure SalvaPagamento(Sender: TObject; var idpagamento: LongInt; var importo: Double; var Valuta: UTF8String;
      var note: UTF8String; var cassetto: SmallInt; var tipoIncasso: LongInt; var isIncasso: Boolean);
    procedure Stampa(Sender: TObject; var DataOperazione: UTF8String);
    procedure Anteprima(Sender: TObject; var DataOperazione: UTF8String);
    procedure ApriCassetto(Sender: TObject);
  end;

constructor TTill.Create(const journalFile: string);
begin
  FJournal := TSQLite3Connection.Create(nil);
  FTransaction := TSQLTransaction.Create(nil);
  FQuery := TSQLQuery.Create(nil);
  FJournal.DatabaseName := journalFile;
  FJournal.CharSet := 'UTF8';
  FJournal.Transaction := FTransaction;
  FQuery.DataBase := FJournal;
  Prepare('CREATE TABLE IF NOT EXISTS movements (idpagamento INTEGER, importo REAL, Valuta TEXT, note TEXT, ' +
    'cassetto INTEGER, tipoIncasso INTEGER, isIncasso INTEGER)');
  Run;
  Prepare('CREATE TABLE IF NOT EXISTS requests (event TEXT, day TEXT)');
  Run;
end;

destructor TTill.Destroy;
begin
  FQuery.Free;
  FTransaction.Free;
  FJournal.Free;
  inherited;
end;

procedure TTill.Prepare(const sql: string);
begin
  FQuery.SQL.Text := sql;
end;

procedure TTill.Run;
begin
  FQuery.ExecSQL;
  FTransaction.Commit;
end;

procedure TTill.SalvaPagamento(Sender: TObject; var idpagamento: LongInt; var importo: Double; var Valuta: UTF8String;
  var note: UTF8String; var cassetto: SmallInt; var tipoIncasso: LongInt; var isIncasso: Boolean);
begin
  WriteLn('event SalvaPagamento idpagamento=', idpagamento, ' importo=', FloatToStr(importo), ' Valuta="', Valuta,
    '" note="', note, '" cassetto=', cassetto, ' tipoIncasso=', tipoIncasso, ' isIncasso=',
    BoolToStr(isIncasso, 'True', 'False'));
  Valuta := Currency; { what is written here reaches the dialog }
  tipoIncasso := Activity;
  if FClosed then
  begin
    FClosed := False; { the cashier keeps the entry, and may confirm it again }
    raise ERefusal.Create('The day is closed. Confirm again to enter this in the next one.');
  end;
  Prepare('INSERT INTO movements VALUES (:payment, :amount, :currency, :note, :drawer, :activity, :incoming)');
  FQuery.ParamByName('payment').AsInteger := idpagamento;
  FQuery.ParamByName('amount').AsFloat := importo;
  FQuery.ParamByName('currency').AsUTF8String := Valuta;
  FQuery.ParamByName('note').AsUTF8String := note;
  FQuery.ParamByName('drawer').AsInteger := cassetto;
  FQuery.ParamByName('activity').AsInteger := tipoIncasso;
  FQuery.ParamByName('incoming').AsInteger := Ord(isIncasso);
  Run;
end;

procedure TTill.Request(const event: string; const text: UTF8String);
begin
  Prepare('INSERT INTO requests VALUES (:event, :day)');
  FQuery.ParamByName('event').AsString := event;
  if text <> '' then { raises EKovaError for a text that is no day; then nothing is printed }
    FQuery.ParamByName('day').AsString := FormatDateTime('yyyy-mm-dd', KovaParseDate(text));
  Run;
end;

procedure TTill.Stampa(Sender: TObject; var DataOperazione: UTF8String);
begin
  WriteLn('event Stampa DataOperazione="', DataOperazione, '"');
  Request('Stampa', DataOperazione);
  FClosed := True;
end;

procedure TTill.Anteprima(Sender: TObject; var DataOperazione: UTF8String);
begin
  WriteLn('event Anteprima DataOperazione="', DataOperazione, '"');
  Request('Anteprima', DataOperazione);
end;

procedure TTill.ApriCassetto(Sender: TObject);
begin
  WriteLn('event ApriCassetto');
  Request('ApriCassetto');
end;

procedure Open(drawer: TKovaDrawerMan; shop: UTF8String);
var
  database: TKovaDatabase;
begin
  if Pos('=', shop) = 0 then
    shop := 'Data Source=' + shop;
  database := TKovaDatabase.Create(shop);
  try
    drawer.Inizializza(database);
  finally
    database.Free;
  end;
end;

var
  drawer: TKovaDrawerMan;
  host: TTill;

begin
  if ParamCount <> 2 then
  begin
    WriteLn(StdErr, 'usage: till SHOP JOURNAL');
    Halt(2);
  end;
  SetMultiByteConversionCodePage(CP_UTF8);
  SetTextCodePage(Output, CP_UTF8);
  host := TTill.Create(ParamStr(2));
  drawer := TKovaDrawerMan.Create;
  try
    drawer.OnSalvaPagamento := @host.SalvaPagamento;
    drawer.OnStampa := @host.Stampa;
    drawer.OnAnteprima := @host.Anteprima;
    drawer.OnApriCassetto := @host.ApriCassetto;
    Open(drawer, ParamStr(1));
    drawer.idCassa := 1;
    KovaSetLanguage(Italian);
    drawer.Show;

    { The next cashier reads German, and pays elsewhere what is taken out here. }
    KovaSetLanguage(German);
    drawer.SetSoftwareName('Cassa');
    drawer.DoppioInserimentoObbligatorio := True;
    drawer.Show;
  finally
    drawer.Free;
    host.Free;
  end;
end.
