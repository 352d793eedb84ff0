// Untried: nobody has compiled or run this yet.
// A till in Delphi, a console program. Its argument is a connection text.
program Till;
{$APPTYPE CONSOLE}

uses
  System.SysUtils, System.Variants, System.Win.ComObj, Winapi.ActiveX, Winapi.Windows;

const
  DrawerEvents: TGUID = '{7FB8BCEC-157A-4CEE-8FC2-CB7A3539810F}';

type
  // What the component asks of the till. Arguments come from the last to the first, each by reference: what is written into
  // them reaches the component.
  TTill = class(TInterfacedObject, IDispatch)
  private
    FStored: string;
    function Save(const Arguments: PVariantArgList; Failure: PExcepInfo): HResult;
  public
    function GetTypeInfoCount(out Count: Integer): HResult; stdcall;
    function GetTypeInfo(Index, LocaleID: Integer; out TypeInfo): HResult; stdcall;
    function GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: Integer; DispIDs: Pointer): HResult; stdcall;
    function Invoke(DispID: Integer; const IID: TGUID; LocaleID: Integer; Flags: Word; var Params;
      VarResult, ExcepInfo, ArgErr: Pointer): HResult; stdcall;
    property Stored: string read FStored;
  end;

function TTill.GetTypeInfoCount(out Count: Integer): HResult;
begin
  Count := 0;
  Result := S_OK;
end;

function TTill.GetTypeInfo(Index, LocaleID: Integer; out TypeInfo): HResult;
begin
  Result := E_NOTIMPL;
end;

function TTill.GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: Integer; DispIDs: Pointer): HResult;
begin
  Result := E_NOTIMPL;
end;

function TTill.Save(const Arguments: PVariantArgList; Failure: PExcepInfo): HResult;
var
  Direction: string;
begin
  // The cashier keeps the entry and reads why.
  if Arguments^[5].pdblVal^ > 1000 then
  begin
    Writeln('refused ', Arguments^[5].pdblVal^:0:0);
    Failure^.bstrSource := SysAllocString('Till');
    Failure^.bstrDescription := SysAllocString('More than 1000 is the manager''s');
    Failure^.scode := E_ACCESSDENIED;
    Exit(DISP_E_EXCEPTION);
  end;
  if Arguments^[0].pbool^ then Direction := 'in' else Direction := 'out';
  FStored := FStored + Format('%s%s %g %s, payment %d, drawer %d, activity %d: %s', [sLineBreak, Direction,
    Arguments^[5].pdblVal^, string(Arguments^[4].pbstrVal^), Arguments^[6].plVal^, Arguments^[2].piVal^,
    Arguments^[1].plVal^, string(Arguments^[3].pbstrVal^)]);
  Result := S_OK;
end;

function TTill.Invoke(DispID: Integer; const IID: TGUID; LocaleID: Integer; Flags: Word; var Params;
  VarResult, ExcepInfo, ArgErr: Pointer): HResult;
var
  Arguments: PVariantArgList;
begin
  Arguments := TDispParams(Params).rgvarg;
  Result := S_OK;
  case DispID of
    1: Result := Save(Arguments, ExcepInfo);
    2: Writeln('print ', string(Arguments^[0].pbstrVal^));
    3: Writeln('preview ', string(Arguments^[0].pbstrVal^));
    4: Writeln('open the drawer');
  end;
end;

procedure Work;
var
  Drawer: OleVariant;
  Till: TTill;
  Sink: IUnknown;
  Cookie: Integer;
begin
  Till := TTill.Create;
  Sink := Till;
  Drawer := CreateOleObject('Kova_Drawer_Man.cls_Kova_Drawer_Man');
  InterfaceConnect(Drawer, DrawerEvents, Sink, Cookie);
  Drawer.InizializzaByConnString(ParamStr(1));
  Drawer.idCassa := 1;
  Drawer.Show; // returns when the dialog has been closed
  Writeln('stored:', Till.Stored);
  InterfaceDisconnect(Drawer, DrawerEvents, Cookie);
end;

begin
  SetConsoleOutputCP(CP_UTF8);
  CoInitialize(nil);
  try
    Work;
  except
    on E: Exception do Writeln(E.Message);
  end;
  CoUninitialize;
end.
