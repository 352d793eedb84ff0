{ The cash-drawer component for hosts in Free Pascal and Lazarus.

  A host makes a TKovaDrawerMan, assigns its events, hands it a database, sets options and shows the dialog. All of this
  belongs to one thread, the one that made the first component. A handler that raises an exception has not done what was
  asked: the cashier keeps what was entered, and reads the exception's message. ERefusal is for that; the message of any
  other is also handed to OnHandlerException, or written to standard error.

  Floating-point exceptions are masked from here on, as the library and its window system expect. Texts are UTF-8. }
unit KovaDrawerMan;

{$mode objfpc}{$H+}

interface

uses
  Classes, SysUtils;

const
  KovaLibrary = 'Kova_Drawer_Man';
  { The number of a handler's failure that has none of its own. }
  KovaFailed = 513;

type
  TKovaHandle = Pointer;

  { The component refused; Number is the error's, 0 where there is none, and Status the library's. }
  EKovaError = class(Exception)
  public
    Number, Status: LongInt;
  end;

  { A database refused. }
  EKovaDatabaseError = class(EKovaError)
  public
    SqlState: string[5];
  end;

  { For handlers: what was asked is not done. }
  ERefusal = class(Exception)
  public
    Number: LongInt;
    constructor Create(const words: string; aNumber: LongInt = KovaFailed);
  end;

  { A database to hand to Inizializza. The component keeps what it was given. }
  TKovaDatabase = class
  private
    FHandle: TKovaHandle;
  public
    { Understands the texts of InizializzaByConnString. Raises EKovaDatabaseError. }
    constructor Create(const connection: UTF8String);
    { Over an ODBC connection handle of the host's, which stays the host's. }
    constructor CreateFromOdbc(connectionHandle: Pointer);
    destructor Destroy; override;
  end;

{$define KovaTypes}{$I KovaDrawerManMembers.inc}{$undef KovaTypes}
  { What a handler raised, other than ERefusal. }
  THandlerExceptionEvent = procedure(Sender: TObject; E: Exception) of object;

  { The component. May be freed inside its own events. }
  TKovaDrawerMan = class
  private
    FHandle, FSink: TKovaHandle;
    FListener: TObject;
    FNumber: LongInt;
    FOnSalvaPagamento: TSalvaPagamentoEvent;
    FOnStampa: TStampaEvent;
    FOnAnteprima: TAnteprimaEvent;
    FOnApriCassetto: TApriCassettoEvent;
    FOnClosed: TNotifyEvent;
    FOnHandlerException: THandlerExceptionEvent;
    function GetIsOpen: Boolean;
{$define KovaAccess}{$I KovaDrawerManMembers.inc}{$undef KovaAccess}
  public
    constructor Create;
    destructor Destroy; override;
{$define KovaMembers}{$I KovaDrawerManMembers.inc}{$undef KovaMembers}
    { Whether the dialog is on the screen. }
    property IsOpen: Boolean read GetIsOpen;
    property OnSalvaPagamento: TSalvaPagamentoEvent read FOnSalvaPagamento write FOnSalvaPagamento;
    property OnStampa: TStampaEvent read FOnStampa write FOnStampa;
    property OnAnteprima: TAnteprimaEvent read FOnAnteprima write FOnAnteprima;
    property OnApriCassetto: TApriCassettoEvent read FOnApriCassetto write FOnApriCassetto;
    { The dialog has closed, whoever closed it; it may be shown again. }
    property OnClosed: TNotifyEvent read FOnClosed write FOnClosed;
    property OnHandlerException: THandlerExceptionEvent read FOnHandlerException write FOnHandlerException;
  end;

{ The user's language from now on: 1040 Italian, 1031 German, 9 English; any other shows Italian. }
procedure KovaSetLanguage(id: LongInt; const name: UTF8String = '');
function KovaGetLanguage: LongInt;
{ What the entry screen says beside its controls. }
procedure KovaSetScreenAids(amountReadBack, direction, confirmation: Boolean);
{ Whether the cashier hears keys, saves and refusals; at first not. }
procedure KovaSetSounds(wanted: Boolean);
{ Whether a sign says what the cashier waits for when the server is slow, or dead; at first it does. }
procedure KovaSetWaitingSign(wanted: Boolean);
{ The X11 window id or HWND that dialogs stand in front of; 0 for none. }
procedure KovaSetParentWindow(window: QWord);
{ Whether the decimal key enters the region's separator, and not a comma. }
procedure KovaSetDecimalKey(ofRegion: Boolean);
{ The folder of logfile.log, unless KOVA_LOG names a file. }
procedure KovaSetLogFolder(const folder: UTF8String);
{ Closes open dialogs and ends what all components share. }
procedure KovaShutDown;
{ For hosts with a loop of their own: handles the events that wait, and returns; to be called when the descriptor, which
  is -1 on Windows, can be read. }
procedure KovaProcessEvents;
function KovaEventDescriptor: LongInt;
{ The day that a text of Stampa or Anteprima names; EKovaError with Number 13 for a text that is no date. }
function KovaParseDate(const text: UTF8String): TDateTime;
{ As the dialog writes them. }
function KovaFormatDate(day: TDateTime): UTF8String;
function KovaFormatAmount(amount: Double; decimals: LongInt = 2): UTF8String;
{ What the dialog is drawn with, for windows of the host's beside it. }
function KovaFontFamily: UTF8String;

implementation

uses
  Math;

const
  DatabaseFailed = 2;
  OutOfMemory = 6;

{$I KovaDrawerManImports.inc}
{$define KovaImports}{$I KovaDrawerManMembers.inc}{$undef KovaImports}

type
  { What the library knows of a component's events; lives until the library releases it. }
  TListener = class
    Owner: TKovaDrawerMan; { nil once it is freed }
    { The number of the failure that the exception becomes. }
    function Failed(E: TObject; const event: string): LongInt;
  end;

function Copied(text: PAnsiChar): UTF8String;
begin
  SetString(Result, text, StrLen(text));
end;

function Passed(const text: UTF8String): PAnsiChar;
begin
  if Pos(#0, text) > 0 then
    raise EConvertError.Create('A text ends at its first zero character');
  Result := PAnsiChar(text);
end;

procedure Check(status: LongInt);
var
  error: EKovaError;
begin
  if status = 0 then
    Exit;
  if status = OutOfMemory then
    raise EOutOfMemory.Create(kova_last_error);
  if status = DatabaseFailed then
  begin
    error := EKovaDatabaseError.Create(Copied(kova_last_error));
    EKovaDatabaseError(error).SqlState := Copied(kova_last_sql_state);
  end
  else
    error := EKovaError.Create(Copied(kova_last_error));
  error.Number := kova_last_error_number;
  error.Status := status;
  raise error;
end;

function NewText(const content: UTF8String): TKovaHandle;
begin
  Result := nil;
  Check(kova_text_create(Passed(content), @Result));
end;

function Content(text: TKovaHandle): UTF8String;
var
  value: PAnsiChar;
begin
  Check(kova_text_get(text, @value));
  Result := Copied(value);
end;

{ Reads what handlers left there, and ends it; the last failure stays known. }
procedure TakeText(text: TKovaHandle; out content: UTF8String);
var
  value: PAnsiChar;
begin
  if kova_text_get(text, @value) = 0 then
    content := Copied(value);
  kova_text_release(text);
end;

function HandleOf(database: TKovaDatabase): TKovaHandle;
begin
  if database = nil then
    Result := nil
  else
    Result := database.FHandle;
end;

constructor ERefusal.Create(const words: string; aNumber: LongInt);
begin
  inherited Create(words);
  Number := aNumber;
end;

constructor TKovaDatabase.Create(const connection: UTF8String);
begin
  Check(kova_database_open(Passed(connection), @FHandle));
end;

constructor TKovaDatabase.CreateFromOdbc(connectionHandle: Pointer);
begin
  Check(kova_database_from_odbc(connectionHandle, @FHandle));
end;

destructor TKovaDatabase.Destroy;
begin
  if FHandle <> nil then
    kova_database_release(FHandle);
  inherited;
end;

function TListener.Failed(E: TObject; const event: string): LongInt;
var
  words: UTF8String;
begin
  Result := 0;
  words := E.ClassName;
  if (E is Exception) and (Exception(E).Message <> '') then
    words := Exception(E).Message;
  if E is ERefusal then
    Result := ERefusal(E).Number
  else if E is EKovaError then
    Result := EKovaError(E).Number;
  if Result = 0 then
    Result := KovaFailed;
  if not (E is ERefusal) then
    try
      if (Owner <> nil) and Assigned(Owner.FOnHandlerException) and (E is Exception) then
        Owner.FOnHandlerException(Owner, Exception(E))
      else if IsConsole then
      begin
        WriteLn(StdErr, 'The handler of ', event, ' failed: ', E.ClassName, ': ', words);
        DumpExceptionBackTrace(StdErr);
        Flush(StdErr);
      end;
    except
      { No exception may leave the library's call. }
    end;
  kova_fail(PAnsiChar(words));
end;

function HearSave(user: Pointer; idpagamento: PLongInt; importo: PDouble; Valuta, note: TKovaHandle;
  cassetto: PSmallInt; tipoIncasso, isIncasso: PLongInt): LongInt; cdecl;
var
  listener: TListener;
  currency, remark: UTF8String;
  incoming: Boolean;
begin
  Result := 0;
  listener := TListener(user);
  if (listener.Owner = nil) or not Assigned(listener.Owner.FOnSalvaPagamento) then
    Exit;
  try
    currency := Content(Valuta);
    remark := Content(note);
    incoming := isIncasso^ <> 0;
    try
      listener.Owner.FOnSalvaPagamento(listener.Owner, idpagamento^, importo^, currency, remark, cassetto^,
        tipoIncasso^, incoming);
    except
      kova_text_set(Valuta, PAnsiChar(currency));
      kova_text_set(note, PAnsiChar(remark));
      isIncasso^ := Ord(incoming);
      raise;
    end;
    isIncasso^ := Ord(incoming);
    Check(kova_text_set(Valuta, Passed(currency)));
    Check(kova_text_set(note, Passed(remark)));
  except
    Result := listener.Failed(ExceptObject, 'SalvaPagamento');
  end;
end;

type
  { Events of a text have handlers of one type. }
  TTextEvent = procedure(Sender: TObject; var text: UTF8String) of object;

function HearText(listener: TListener; handler: TTextEvent; text: TKovaHandle; const event: string): LongInt;
var
  value: UTF8String;
begin
  Result := 0;
  if not Assigned(handler) then
    Exit;
  try
    value := Content(text);
    try
      handler(listener.Owner, value);
    except
      kova_text_set(text, PAnsiChar(value));
      raise;
    end;
    Check(kova_text_set(text, Passed(value)));
  except
    Result := listener.Failed(ExceptObject, event);
  end;
end;

function HearPrint(user: Pointer; text: TKovaHandle): LongInt; cdecl;
begin
  Result := 0;
  if TListener(user).Owner <> nil then
    Result := HearText(TListener(user), TTextEvent(TListener(user).Owner.FOnStampa), text, 'Stampa');
end;

function HearPreview(user: Pointer; text: TKovaHandle): LongInt; cdecl;
begin
  Result := 0;
  if TListener(user).Owner <> nil then
    Result := HearText(TListener(user), TTextEvent(TListener(user).Owner.FOnAnteprima), text, 'Anteprima');
end;

function HearOpen(user: Pointer): LongInt; cdecl;
begin
  Result := 0;
  if (TListener(user).Owner <> nil) and Assigned(TListener(user).Owner.FOnApriCassetto) then
    try
      TListener(user).Owner.FOnApriCassetto(TListener(user).Owner);
    except
      Result := TListener(user).Failed(ExceptObject, 'ApriCassetto');
    end;
end;

procedure HearClosed(user: Pointer); cdecl;
begin
  if (TListener(user).Owner <> nil) and Assigned(TListener(user).Owner.FOnClosed) then
    try
      TListener(user).Owner.FOnClosed(TListener(user).Owner);
    except
      TListener(user).Failed(ExceptObject, 'OnClosed');
    end;
end;

procedure HearReleased(user: Pointer); cdecl;
begin
  TListener(user).Free;
end;

constructor TKovaDrawerMan.Create;
var
  handlers: TKovaHandlers;
  listener: TListener;
begin
  Check(kova_create(@FHandle));
  listener := TListener.Create;
  listener.Owner := Self;
  handlers.Size := SizeOf(handlers);
  handlers.User := listener;
  handlers.SalvaPagamento := @HearSave;
  handlers.Stampa := @HearPrint;
  handlers.Anteprima := @HearPreview;
  handlers.ApriCassetto := @HearOpen;
  handlers.Released := @HearReleased;
  try
    Check(kova_connect(FHandle, @handlers, @FSink));
  except
    listener.Free;
    raise;
  end;
  FListener := listener;
  Check(kova_on_closed(FHandle, @HearClosed, listener));
end;

destructor TKovaDrawerMan.Destroy;
begin
  if FListener <> nil then
    TListener(FListener).Owner := nil;
  if FHandle <> nil then
    kova_release(FHandle);
  if FSink <> nil then
    kova_disconnect(FSink);
  inherited;
end;

function TKovaDrawerMan.GetIsOpen: Boolean;
var
  value: LongInt;
begin
  Check(kova_is_open(FHandle, @value));
  Result := value <> 0;
end;

{$define KovaImplementation}{$I KovaDrawerManMembers.inc}{$undef KovaImplementation}
{$I KovaDrawerManShared.inc}

initialization
  SetExceptionMask([exInvalidOp, exDenormalized, exZeroDivide, exOverflow, exUnderflow, exPrecision]);
end.
