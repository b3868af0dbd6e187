; Installs for the user who runs it, into folders of his own, without asking for more rights.
; script/installer names VERSION, STAGE (the folder to install), SIZE (its KB), LIST (what deletes it again), OUT.
;   setup.exe /S [/D=FOLDER]     silent; /D last and without quotes
;   uninstall.exe /S [/PURGE]    silent; /PURGE removes settings, logs and backups, too
Unicode true
Target amd64-unicode
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user
SetCompressor /SOLID lzma
!include MUI2.nsh
!include FileFunc.nsh
!include Sections.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\VelmoraWriter"
!define SETTINGS "$LOCALAPPDATA\VelmoraWriter"

Name "Velmora Writer"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\VelmoraWriter"
InstallDirRegKey HKCU "${UNINSTALL}" InstallLocation
BrandingText "Velmora Writer ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "Velmora Writer"
VIAddVersionKey FileDescription "Velmora Writer Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "The Velmora Writer authors"

!define MUI_ICON velmora-writer.ico
!define MUI_UNICON velmora-writer.ico
!define MUI_FINISHPAGE_RUN "$INSTDIR\VelmoraWriter.exe"
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs cannot be replaced or removed.
!macro EndWhileItRuns
  ClearErrors
  ${If} ${FileExists} "$INSTDIR\VelmoraWriter.exe"
    FileOpen $0 "$INSTDIR\VelmoraWriter.exe" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "Velmora Writer is running.  Close it first." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; Another program's claim to a kind of file is left alone: then the user finds this one under Open With.
!macro Associate EXTENSION TYPE WORDS
  WriteRegStr HKCU "Software\Classes\${TYPE}" "" "${WORDS}"
  WriteRegStr HKCU "Software\Classes\${TYPE}\DefaultIcon" "" "$INSTDIR\VelmoraWriter.exe,0"
  WriteRegStr HKCU "Software\Classes\${TYPE}\shell\open\command" "" '"$INSTDIR\VelmoraWriter.exe" "%1"'
  WriteRegNone HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${TYPE}"
  ReadRegStr $0 HKCR "${EXTENSION}" ""
  ${If} $0 == ""
    WriteRegStr HKCU "Software\Classes\${EXTENSION}" "" "${TYPE}"
  ${EndIf}
!macroend
!macro Dissociate EXTENSION TYPE
  ReadRegStr $0 HKCU "Software\Classes\${EXTENSION}" ""
  ${If} $0 == "${TYPE}"
    DeleteRegValue HKCU "Software\Classes\${EXTENSION}" ""
  ${EndIf}
  DeleteRegValue HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${TYPE}"
  DeleteRegKey /ifempty HKCU "Software\Classes\${EXTENSION}\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "Software\Classes\${EXTENSION}"
  DeleteRegKey HKCU "Software\Classes\${TYPE}"
!macroend

Function .onInit
  !insertmacro EndWhileItRuns
FunctionEnd

Section
  ; What an older version had and this one has not goes with the older one.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${STAGE}/*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Velmora Writer.lnk" "$INSTDIR\VelmoraWriter.exe"
  !insertmacro Associate .event VelmoraWriter.event "Velmora events"
  !insertmacro Associate .UPIssue VelmoraWriter.UPIssue "Velmora UP issues"
  ${RefreshShellIcons}
  WriteRegStr HKCU "${UNINSTALL}" DisplayName "Velmora Writer"
  WriteRegStr HKCU "${UNINSTALL}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" Publisher "The Velmora Writer authors"
  WriteRegStr HKCU "${UNINSTALL}" DisplayIcon "$INSTDIR\VelmoraWriter.exe,0"
  WriteRegStr HKCU "${UNINSTALL}" InstallLocation "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" EstimatedSize ${SIZE}
  WriteRegDWORD HKCU "${UNINSTALL}" NoModify 1
  WriteRegDWORD HKCU "${UNINSTALL}" NoRepair 1
SectionEnd

Section "un.Velmora Writer"
  SectionIn RO
  !insertmacro Dissociate .event VelmoraWriter.event
  !insertmacro Dissociate .UPIssue VelmoraWriter.UPIssue
  ${RefreshShellIcons}
  DeleteRegKey HKCU "${UNINSTALL}"
  Delete "$SMPROGRAMS\Velmora Writer.lnk"
  ; One by one: the folder may hold what is not ours.
  !include "${LIST}"
  Delete "$INSTDIR\uninstall.exe"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  RMDir "$LOCALAPPDATA\Programs"
SectionEnd

Section /o "un.Settings, logs and backups" Purge
  RMDir /r "${SETTINGS}"
SectionEnd

Function un.onInit
  !insertmacro EndWhileItRuns
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/PURGE" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${Purge}
  ${EndIf}
FunctionEnd
