; Per user, without rights: the programs go to the user's own folder of programs. What the user has made, in
; %LOCALAPPDATA%\Tessaly and in the sites, is never touched.
Unicode true
Name "Tessaly"
OutFile "${OUTPUT}"
Icon "${ICON}"
UninstallIcon "${ICON}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Tessaly"
SetCompressor /SOLID lzma
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tessaly"
VIAddVersionKey "FileDescription" "Tessaly Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "Copyright 2026 the Tessaly developers"

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tessaly"
!define CLASSES "Software\Classes"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

!macro FileType ENDING CLASS DESCRIPTION
  WriteRegStr HKCU "${CLASSES}\${CLASS}" "" "${DESCRIPTION}"
  WriteRegStr HKCU "${CLASSES}\${CLASS}\DefaultIcon" "" "$INSTDIR\tessaly.exe,0"
  ; Beside whatever else opens files of this ending.
  WriteRegStr HKCU "${CLASSES}\${ENDING}\OpenWithProgids" "${CLASS}" ""
!macroend

Section
  SetShellVarContext current
  SetOutPath "$INSTDIR"
  File /r "${STAGE}\*.*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  IfFileExists "$INSTDIR\tessaly.exe" 0 +2
  CreateShortcut "$SMPROGRAMS\Tessaly.lnk" "$INSTDIR\tessaly.exe"
  !insertmacro FileType ".mac" "Tessaly.Macro" "Control panel macro"
  !insertmacro FileType ".upk" "Tessaly.Keys" "Control panel key file"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Tessaly"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  SetShellVarContext current
  Delete "$SMPROGRAMS\Tessaly.lnk"
  ; By name: the folder may hold what is not ours.
  Delete "$INSTDIR\tessaly.exe"
  Delete "$INSTDIR\tessaly-cli.exe"
  Delete "$INSTDIR\lib*.dll"
  Delete "$INSTDIR\README.md"
  Delete "$INSTDIR\LICENSE"
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\site"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${CLASSES}\Tessaly.Macro"
  DeleteRegKey HKCU "${CLASSES}\Tessaly.Keys"
  DeleteRegValue HKCU "${CLASSES}\.mac\OpenWithProgids" "Tessaly.Macro"
  DeleteRegValue HKCU "${CLASSES}\.upk\OpenWithProgids" "Tessaly.Keys"
  DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
