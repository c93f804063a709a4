; The installer for Windows: for one user, without rights of an administrator. scripts/windows_zip.sh runs it.
;
; makensis -DVERSION=1.0.0 -DSTAGE=FOLDER -DHELPERS=FOLDER -DOUT=setup.exe fenmark.nsi
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off
Name "Fenmark ${VERSION}"
OutFile "${OUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Fenmark"
ShowInstDetails nevershow
XPStyle on

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Fenmark"
; Entries below this name show on files of that extension, whichever program opens them by a double click.
!define ENTRY "Software\Classes\SystemFileAssociations\.sim\shell\Fenmark"

LoadLanguageFile "${NSISDIR}/Contrib/Language files/English.nlf"
LoadLanguageFile "${NSISDIR}/Contrib/Language files/Japanese.nlf"
LangString NoPath ${LANG_ENGLISH} "The search path for programs could not be changed. Start fenmark by its whole path, or add this folder yourself:$\n$INSTDIR"
LangString NoPath ${LANG_JAPANESE} "環境変数 Path を変更できませんでした。fenmark をフルパスで実行するか、次のフォルダーをご自分で追加してください。$\n$INSTDIR"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Section
  SetOutPath "$INSTDIR"
  File /r "${STAGE}/*"
  File "${HELPERS}/path_entry.exe"
  nsExec::Exec '"$INSTDIR\path_entry.exe" add "$INSTDIR"'
  Pop $0
  StrCmp $0 "0" onPath
  MessageBox MB_OK|MB_ICONEXCLAMATION "$(NoPath)" /SD IDOK
onPath:
  WriteRegStr HKCU "${ENTRY}" "" "Fenmarkで読み込む"
  WriteRegStr HKCU "${ENTRY}\command" "" 'cmd.exe /c ""$INSTDIR\fenmark-import.cmd" "%1""'
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Fenmark"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  WriteUninstaller "$INSTDIR\uninstall.exe"
SectionEnd

; Files that the user put into the folder stay, and the folder with them.
Section Uninstall
  nsExec::Exec '"$INSTDIR\path_entry.exe" remove "$INSTDIR"'
  Pop $0
  DeleteRegKey HKCU "${ENTRY}"
  DeleteRegKey HKCU "${UNINSTALL}"
  !include "${REMOVALS}"
  Delete "$INSTDIR\path_entry.exe"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
SectionEnd
