{ What a host in Pascal relies on; each part in a process of its own: pascal_test PART. }
program pascal_test;

{$mode objfpc}{$H+}{$codepage utf8}

uses
  cthreads, cwstring, Classes, Math, SysUtils, KovaDrawerMan;

const
  Euro: UTF8String = '€';
  Umlaut: UTF8String = 'ü';
  Odd: UTF8String = 'Fr. ü€';

type
  THost = class
    Heard, Refusals, Faults, Closings: Integer;
    Error: string;
    Drawer: TKovaDrawerMan;
    procedure Save(Sender: TObject; var idpagamento: LongInt; var importo: Double; var Valuta: UTF8String;
      var note: UTF8String; var cassetto: SmallInt; var tipoIncasso: LongInt; var isIncasso: Boolean);
    procedure Print(Sender: TObject; var day: UTF8String);
    procedure Leave(Sender: TObject);
    procedure Fault(Sender: TObject; E: Exception);
    procedure Closed(Sender: TObject);
  end;

  TShower = class(TThread)
    Drawer: TKovaDrawerMan;
    Status: LongInt;
    procedure Execute; override;
  end;

  { A movement as the host's variables hold it. }
  TMovement = record
    Payment, Activity: LongInt;
    Amount: Double;
    Currency, Note: UTF8String;
    Compartment: SmallInt;
    Incoming: Boolean;
  end;

procedure Expect(fact: Boolean; const words: string);
begin
  if fact then
    Exit;
  WriteLn('not so: ', words);
  Halt(1);
end;

procedure THost.Save(Sender: TObject; var idpagamento: LongInt; var importo: Double; var Valuta: UTF8String;
  var note: UTF8String; var cassetto: SmallInt; var tipoIncasso: LongInt; var isIncasso: Boolean);
begin
  Inc(Heard);
  Inc(idpagamento);
  importo := importo + 1;
  Valuta := 'CHF';
  note := note + Umlaut;
  Inc(cassetto);
  tipoIncasso := 30;
  isIncasso := not isIncasso;
  if Error = 'fault' then
    raise EConvertError.Create('a fault');
  if Error <> '' then
    raise ERefusal.Create(Error, 700);
  if Heard mod 10 = 0 then
    raise ERefusal.Create('decimo');
end;

procedure THost.Print(Sender: TObject; var day: UTF8String);
begin
  day := day + Error;
end;

procedure THost.Leave(Sender: TObject);
begin
  FreeAndNil(Drawer);
  raise EConvertError.Create('a fault');
end;

procedure THost.Fault(Sender: TObject; E: Exception);
begin
  Expect(E.Message = 'a fault', 'the exception itself');
  Inc(Faults);
end;

procedure THost.Closed(Sender: TObject);
begin
  Inc(Closings);
end;

procedure TShower.Execute;
begin
  try
    Drawer.Show;
  except
    on E: EKovaError do
      Status := E.Status;
  end;
end;

procedure Start(out m: TMovement);
begin
  m.Payment := 1;
  m.Amount := 12.5;
  m.Currency := Euro;
  m.Note := 'nota';
  m.Compartment := 2;
  m.Activity := 9;
  m.Incoming := False;
end;

procedure Raised(host: THost; var m: TMovement);
begin
  host.Drawer.SalvaPagamento(m.Payment, m.Amount, m.Currency, m.Note, m.Compartment, m.Activity, m.Incoming);
end;

{ The number of the failure; 0 for none. }
function Failure(host: THost; var m: TMovement; const words: string): LongInt;
begin
  Result := 0;
  try
    Raised(host, m);
  except
    on E: EKovaError do
    begin
      Expect(E.Message = words, 'words: ' + E.Message);
      Result := E.Number;
    end;
  end;
end;

procedure Members(host: THost);
var
  shower: TShower;
  number: LongInt;
  zero: Double;
begin
  with host.Drawer do
  begin
    Expect((idCassa = -1) and (ValutaAziendale = Euro) and not ChiusuraAutomatica, 'the first values');
    idCassa := Low(LongInt);
    ValutaAziendale := Odd;
    ChiusuraAutomatica := True;
    ActiveColorMetroStyle := True;
    Expect((idCassa = Low(LongInt)) and (ValutaAziendale = Odd) and ChiusuraAutomatica, 'what was written');
  end;
  number := 0;
  try
    KovaParseDate('31/02/2026');
  except
    on E: EKovaError do
      number := E.Number;
  end;
  Expect(number = 13, 'the number of an error');
  zero := 0;
  Expect(IsInfinite(1 / zero), 'no exception of floating-point numbers');
  Expect(KovaFormatDate(KovaParseDate('2026-11-16')) = '16/11/2026', 'dates');
  Expect(KovaFormatAmount(-1234.565) = '-1.234,57', 'amounts');
  try
    TKovaDatabase.Create('DSN=none').Free;
    Expect(False, 'a database that is not there');
  except
    on E: EKovaDatabaseError do
      Expect(E.SqlState = 'IM002', 'the state of a database''s error');
  end;
  shower := TShower.Create(True);
  shower.Drawer := host.Drawer;
  shower.Start;
  shower.WaitFor;
  Expect(shower.Status = 5, 'another thread is refused');
  shower.Free;
end;

procedure Events(host: THost);
var
  m: TMovement;
  day: UTF8String;
begin
  Start(m);
  Raised(host, m);
  Expect((m.Payment = 2) and (m.Amount = 13.5) and (m.Currency = 'CHF') and (m.Note = 'nota' + Umlaut) and
    (m.Compartment = 3) and (m.Activity = 30) and m.Incoming, 'what was written back');
  host.Error := 'Chiuso';
  Expect(Failure(host, m, 'Chiuso') = 700, 'the number of a refusal');
  Expect((m.Payment = 3) and (m.Note = 'nota' + Umlaut + Umlaut) and not m.Incoming, 'what was written before the refusal');
  host.Error := 'fault';
  Expect((Failure(host, m, 'a fault') = KovaFailed) and (host.Faults = 1), 'a fault is told');
  day := 'oggi';
  host.Error := '!';
  host.Drawer.Stampa(day);
  host.Drawer.Anteprima(day);
  Expect(day = 'oggi!', 'a text comes back');
  host.Drawer.Show(0);
  Expect(host.Drawer.IsOpen, 'a modeless dialog');
  host.Drawer.DiscardForm;
  while host.Closings = 0 do
  begin
    KovaProcessEvents;
    Sleep(1);
  end;
  try
    host.Drawer.ApriCassetto; { frees the component }
    Expect(False, 'a handler that fails');
  except
    on E: EKovaError do
      Expect((E.Message = 'a fault') and (host.Drawer = nil), 'freed inside its event');
  end;
  Expect(host.Faults = 1, 'nobody is told who is gone');
end;

function Resident: Int64;
var
  fields: TStringList;
begin
  fields := TStringList.Create;
  fields.LoadFromFile('/proc/self/statm');
  fields.Delimiter := ' ';
  fields.DelimitedText := fields[0];
  Result := StrToInt64(fields[1]) * 4096;
  fields.Free;
end;

procedure Save(host: THost; count: Integer);
var
  i: Integer;
  m: TMovement;
begin
  for i := 1 to count do
  begin
    Start(m);
    m.Amount := i;
    if Failure(host, m, 'decimo') <> 0 then
      Inc(host.Refusals);
    Expect((m.Amount = i + 1) and (m.Note = 'nota' + Umlaut) and (m.Currency = 'CHF'), 'what was written back');
  end;
end;

procedure Many(host: THost);
var
  heap, size: Int64;
begin
  Save(host, 2000);
  heap := GetFPCHeapStatus.CurrHeapUsed;
  size := Resident;
  Save(host, 10000);
  heap := GetFPCHeapStatus.CurrHeapUsed - heap;
  size := Resident - size;
  WriteLn(host.Heard, ' events, ', host.Refusals, ' refused, ', heap, ' bytes of the heap, ', size, ' resident');
  Expect((host.Heard = 12000) and (host.Refusals = 1200), 'every event');
  Expect((heap < 100000) and (size < 1 shl 21), 'memory is level');
end;

var
  host: THost;

begin
  SetMultiByteConversionCodePage(CP_UTF8);
  host := THost.Create;
  host.Drawer := TKovaDrawerMan.Create;
  host.Drawer.OnSalvaPagamento := @host.Save;
  host.Drawer.OnStampa := @host.Print;
  host.Drawer.OnApriCassetto := @host.Leave;
  host.Drawer.OnHandlerException := @host.Fault;
  host.Drawer.OnClosed := @host.Closed;
  case ParamStr(1) of
    'members': Members(host);
    'events': Events(host);
    'many': Many(host);
  else
    Halt(2);
  end;
  host.Drawer.Free;
  host.Free;
end.
