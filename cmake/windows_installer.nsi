; The installer for tills, made by ../package:
;
;   makensis -DVERSION=4.10 -DOUTPUT=setup.exe -DFILES=files.nsh -DTARGET=amd64-unicode windows_installer.nsi
;
; FILES defines the macros PutFiles and DeleteFiles. Silent: /S with /AllUsers or /CurrentUser, and /D=FOLDER at the end.
; Exit status 32: the files are in use and nothing has been changed; 740: /AllUsers needs an administrator.
Target ${TARGET}
SetCompressor /SOLID lzma
!define KEYS "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define KEY "${KEYS}\Kova_Drawer_Man"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR Kova_Drawer_Man
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME InstallLocation
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME InstallLocation
!include MultiUser.nsh
!include MUI2.nsh
!include "${FILES}"

Name "Kova_Drawer_Man ${VERSION}"
OutFile "${OUTPUT}"
BrandingText " "
ManifestDPIAware true
VIProductVersion ${VERSION}.0.0
VIFileVersion ${VERSION}.0.0
VIAddVersionKey /LANG=0 ProductName Kova_Drawer_Man
VIAddVersionKey /LANG=0 ProductVersion ${VERSION}
VIAddVersionKey /LANG=0 FileVersion ${VERSION}
VIAddVersionKey /LANG=0 FileDescription "Installs Kova_Drawer_Man"
VIAddVersionKey /LANG=0 LegalCopyright ""

!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; As in the component, other languages see Italian.
!insertmacro MUI_LANGUAGE Italian
!insertmacro MUI_LANGUAGE German
!insertmacro MUI_LANGUAGE English
LangString InUse ${LANG_ITALIAN} "Un programma sta usando Kova_Drawer_Man in $INSTDIR. Chiudere il programma e riprovare."
LangString InUse ${LANG_GERMAN} "Ein Programm benutzt Kova_Drawer_Man in $INSTDIR. Bitte beenden Sie es und versuchen Sie es noch einmal."
LangString InUse ${LANG_ENGLISH} "A program is using Kova_Drawer_Man in $INSTDIR. Please close it and try again."
LangString OlderStays ${LANG_ITALIAN} "Non è stato possibile rimuovere la versione installata in $0."
LangString OlderStays ${LANG_GERMAN} "Die in $0 installierte Version lässt sich nicht entfernen."
LangString OlderStays ${LANG_ENGLISH} "The version installed in $0 cannot be removed."
LangString NotRegistered ${LANG_ITALIAN} "Non è stato possibile registrare Kova_Drawer_Man.dll."
LangString NotRegistered ${LANG_GERMAN} "Kova_Drawer_Man.dll lässt sich nicht registrieren."
LangString NotRegistered ${LANG_ENGLISH} "Kova_Drawer_Man.dll cannot be registered."

; Windows lets nobody write into a program or library that is running.
!macro ABORT_IF_IN_USE FILE
  ${Do}
    ${IfNot} ${FileExists} "${FILE}"
      ${Break}
    ${EndIf}
    ClearErrors
    FileOpen $R0 "${FILE}" a
    ${IfNot} ${Errors}
      FileClose $R0
      ${Break}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(InUse)" /SD IDCANCEL IDCANCEL`
      SetErrorLevel 32
      Abort "$(InUse)"
    ${EndIf}
  ${Loop}
!macroend

!macro ABORT_IF_ANY_IN_USE
  !insertmacro ABORT_IF_IN_USE "$INSTDIR\bin\Kova_Drawer_Man.dll"
  !insertmacro ABORT_IF_IN_USE "$INSTDIR\bin\kova-host.exe"
!macroend

; Nobody is there to read a message.
!macro REFUSE_SILENTLY_WITHOUT_RIGHTS UN_FUNCTION UN_SEARCH
  ${If} ${Silent}
    ${${UN_FUNCTION}GetParameters} $R0
    ${${UN_SEARCH}StrStr} $R1 $R0 "/AllUsers"
    UserInfo::GetAccountType
    Pop $R0
    ${If} $R1 != ""
    ${AndIf} $R0 != Admin
      SetErrorLevel 740
      Quit
    ${EndIf}
  ${EndIf}
!macroend

Function .onInit
  !insertmacro REFUSE_SILENTLY_WITHOUT_RIGHTS "" ""
  StrCpy $R2 $INSTDIR ; from /D, or empty
  !insertmacro MULTIUSER_INIT
  ${If} $R2 != ""
    StrCpy $INSTDIR $R2
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro REFUSE_SILENTLY_WITHOUT_RIGHTS un. Un
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

; Registers the component for automation, for whom it is installed, or with "/u " takes that back; $0 is 0 then.
!macro REGISTER HOW
  ${If} $MultiUser.InstallMode == AllUsers
    ExecWait '"$SYSDIR\regsvr32.exe" /s ${HOW}"$INSTDIR\bin\Kova_Drawer_Man.dll"' $0
  ${Else}
    ExecWait '"$SYSDIR\regsvr32.exe" /s ${HOW}/n /i:user "$INSTDIR\bin\Kova_Drawer_Man.dll"' $0
  ${EndIf}
!macroend

Section
  !insertmacro ABORT_IF_ANY_IN_USE

  ; An older version goes by its own list of files, wherever it lies.
  ReadRegStr $0 SHCTX "${KEY}" InstallLocation
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    ExecWait '"$0\uninstall.exe" /S /$MultiUser.InstallMode _?=$0' $1
    ${If} $1 != 0
      SetErrorLevel $1
      Abort "$(OlderStays)"
    ${EndIf}
    Delete "$0\uninstall.exe"
    RMDir "$0"
  ${EndIf}

  !insertmacro PutFiles
  SetOutPath "$INSTDIR\bin"
  CreateShortCut "$SMPROGRAMS\Kova_Drawer_Man.lnk" "$INSTDIR\bin\kova-host.exe"
  !insertmacro REGISTER ""
  ${If} $0 != 0
    SetErrorLevel 2
    Abort "$(NotRegistered)"
  ${EndIf}

  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${KEY}" DisplayName Kova_Drawer_Man
  WriteRegStr SHCTX "${KEY}" DisplayVersion ${VERSION}
  WriteRegStr SHCTX "${KEY}" DisplayIcon "$INSTDIR\bin\kova-host.exe"
  WriteRegStr SHCTX "${KEY}" InstallLocation $INSTDIR
  WriteRegStr SHCTX "${KEY}" UninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${KEY}" NoModify 1
  WriteRegDWORD SHCTX "${KEY}" NoRepair 1
  SectionGetSize 0 $0
  WriteRegDWORD SHCTX "${KEY}" EstimatedSize $0
SectionEnd

; Removes what was installed. What else lies in the folder stays: a till's files, and the log, which may tell of money.
Section un.Uninstall
  !insertmacro ABORT_IF_ANY_IN_USE
  !insertmacro REGISTER "/u "
  Delete "$SMPROGRAMS\Kova_Drawer_Man.lnk"
  !insertmacro DeleteFiles
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath $TEMP ; a folder in use would stay
  RMDir $INSTDIR
  DeleteRegKey SHCTX "${KEY}"
  DeleteRegKey /ifempty HKCU "${KEYS}" ; not every user has one
SectionEnd
