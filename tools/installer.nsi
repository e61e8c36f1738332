; The installer, for the user alone: no administrator rights, no questions; with /S nothing is shown either.
; tools/make-package calls it with VERSION, SIZE_KB, FILES (the lists of files), ROOT and OUT.

Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user
CRCCheck force

!include LogicLib.nsh
!include "${FILES}"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Vextrel"

Name "Vextrel"
Caption "Vextrel ${VERSION}"
BrandingText " "
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\Vextrel"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
Icon "${ROOT}/assets/vextrel.ico"
UninstallIcon "${ROOT}/assets/vextrel.ico"
ShowInstDetails nevershow
ShowUninstDetails nevershow
AutoCloseWindow true

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Vextrel"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Vextrel installer"
VIAddVersionKey "CompanyName" "The Vextrel developers"
VIAddVersionKey "LegalCopyright" "The Vextrel developers. MIT licence."

Page instfiles
UninstPage instfiles

; A running program cannot be replaced, and ending it would throw away what its user has entered.
!macro RefuseWhileRunning
  ${If} ${FileExists} "$INSTDIR\vextrel.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\vextrel.exe" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "Vextrel is running. Please close it and try again." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Section
  !insertmacro RefuseWhileRunning
  ; Removes what an older version had and this one has not; the settings stay.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Vextrel.lnk" "$INSTDIR\vextrel.exe"
  WriteRegStr HKCU "${KEY}" "DisplayName" "Vextrel"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "Publisher" "The Vextrel developers"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\vextrel.exe"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" ${SIZE_KB}
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  !insertmacro RefuseWhileRunning
  !insertmacro DeleteFiles
  Delete "$INSTDIR\uninstall.exe"
  ; Only when it is empty: settings and a user's own layout files stay.
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Vextrel.lnk"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
