; Installs, upgrades and removes ZKR T46 on Windows.
;
; Command line, besides NSIS' own /S (silent) and /D=FOLDER (for manual and uninstaller, comes last):
;   /VST2DIR=FOLDER   where the VST 2 library goes
;   /NOVST2  /NOVST3  does not install that one
; Exit codes: 0 done, 1 cancelled by the user, 2 a file could not be written, 3 a file is in use,
; 4 the command line is wrong. After 2 the files written so far are removed and a previous version
; is restored; after 3 and 4 nothing was changed.
;
; The exit codes, shared with the uninstaller:
!define EXIT_FAILED 2
!define EXIT_IN_USE 3
!define EXIT_USAGE 4

!define LIBRARY "ZKRT46.dll"
!define BUNDLE_LIBRARY "ZKRT46.vst3\Contents\x86_64-win\ZKRT46.vst3"
!define MANUAL "ZKRT46-manual.pdf"
!define PRESETS "$APPDATA\VST3 Presets\${MAKER}\ZKR T46"  ; of all users; hosts look there
!define SHORTCUT "$SMPROGRAMS\ZKR T46 manual.lnk"
!define VENDOR_KEY "SOFTWARE\${SETTINGS_FOLDER}"
!define SETTINGS_KEY "${VENDOR_KEY}\ZKRT46"
!define ENTRY_KEY "SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\ZKRT46"
!define ASIDE ".zkr-aside"  ; suffix of an old file while the new one is written

; A 64-bit program: 32-bit Windows refuses to start it, and it uses the same registry as hosts.
!pragma warning error all
Target amd64-unicode
Name "ZKR T46"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\${MAKER}\ZKR T46"
InstallDirRegKey HKLM "${ENTRY_KEY}" "InstallLocation"
RequestExecutionLevel admin
ManifestDPIAware true
ManifestLongPathAware true
SetCompressor /SOLID lzma
SetDateSave off
AllowSkipFiles off
BrandingText "${MAKER}"

VIProductVersion ${VERSION}
VIFileVersion ${VERSION}
VIAddVersionKey /LANG=1033 CompanyName "${MAKER}"
VIAddVersionKey /LANG=1033 FileDescription "ZKR T46 installer"
VIAddVersionKey /LANG=1033 FileVersion "${VERSION}"
VIAddVersionKey /LANG=1033 LegalCopyright "${COPYRIGHT}"
VIAddVersionKey /LANG=1033 ProductName "ZKR T46"
VIAddVersionKey /LANG=1033 ProductVersion "${VERSION}"

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

Var Vst2Folder
Var Vst3Folder
Var OldHome     ; folders of an installed version; empty for parts that it lacks
Var OldVst2
Var OldVst3
Var HomeCreated ; the topmost folder that was created for each part
Var Vst2Created
Var Vst3Created
Var PresetsCreated
Var Message
Var Begun       ; what a failure must undo: "aside": renamed old files; "written": also new files

; ---- Pages

!define MUI_ICON "${RESOURCES}/icon.ico"
!define MUI_UNICON "${RESOURCES}/icon.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${RESOURCES}/installer-side.bmp"
!define MUI_WELCOMEPAGE_TITLE "ZKR T46 ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "This installs the stereo mastering equaliser ZKR T46 for hosts of VST 2 and VST 3 plug-ins, together with its manual.$\r$\n$\r$\nA version that is installed already is replaced. Your presets and settings stay.$\r$\n$\r$\nClose your host before you go on."
!define MUI_ABORTWARNING
!define MUI_LICENSEPAGE_TEXT_TOP "The software is free: the licence below lets you use, study, change and share it."
!define MUI_LICENSEPAGE_TEXT_BOTTOM "To use it, nothing has to be accepted; the terms are for sharing it."
!define MUI_LICENSEPAGE_BUTTON "&Next >"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\${MANUAL}"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the manual"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED

!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_HEADER_TEXT "Licence"
!define MUI_PAGE_HEADER_SUBTEXT "The GNU General Public License, version 3."
!insertmacro MUI_PAGE_LICENSE "${TREE}/LICENSE.txt"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveComponents
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_DIRECTORYPAGE_VARIABLE $Vst2Folder
!define MUI_PAGE_HEADER_TEXT "VST 2 folder"
!define MUI_PAGE_HEADER_SUBTEXT "Choose where the VST 2 plug-in goes."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Choose a folder that your host searches for VST 2 plug-ins; its settings name it. The VST 3 plug-in needs no choice: all hosts search the same folder."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Folder for VST 2 plug-ins"
!define MUI_PAGE_CUSTOMFUNCTION_PRE EnterVst2Folder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; ---- Shared by installer and uninstaller

; Shows an error (when silent: prints it to stderr) and ends.
!macro Fail Code Text
  StrCpy $Message "${Text}"
  ${If} ${Silent}
    System::Call 'kernel32::GetStdHandle(i -12) p.r9'
    FileWrite $9 "ZKR T46: $Message$\r$\n"
  ${Else}
    MessageBox MB_OK|MB_ICONSTOP "$Message"
  ${EndIf}
  SetErrorLevel ${Code}
  Abort "$Message"
!macroend

!macro SharedFunctions un
; Ends with EXIT_IN_USE if a program has the file $0 open or loaded, as a host has a library or a
; viewer the manual: Windows then refuses to open it for writing.
Function ${un}RefuseInUse
  ${DoWhile} ${FileExists} "$0"
    System::Call 'kernel32::CreateFileW(w r0, i 0x40000000, i 7, p 0, i 3, i 0, p 0) p.r1 ?e'
    Pop $2
    ${If} $1 != -1
      System::Call 'kernel32::CloseHandle(p r1)'
      ${Break}
    ${EndIf}
    ${If} $2 <> 32      ; ERROR_SHARING_VIOLATION
    ${AndIf} $2 <> 1224 ; ERROR_USER_MAPPED_FILE
      ${Break}
    ${EndIf}
    ${IfNot} ${Silent}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "A program is using$\r$\n$\r$\n$0$\r$\n$\r$\nClose it, and every host that has ZKR T46 loaded, then try again." IDRETRY again
      SetErrorLevel ${EXIT_IN_USE}
      Abort "$0 is in use. Nothing was changed."
    ${EndIf}
    !insertmacro Fail ${EXIT_IN_USE} "$0 is in use. Close the program that uses it. Nothing was changed."
    again:
  ${Loop}
FunctionEnd

; Removes the folder $0 and its parents up to $1 while they are empty; nothing if $1 is empty.
Function ${un}RemoveCreated
  ${DoWhile} $1 != ""
    ClearErrors
    RMDir "$0"
    ${If} ${Errors}
    ${OrIf} $0 == $1
      ${Break}
    ${EndIf}
    ${GetParent} "$0" $0
  ${LoopUntil} $0 == ""
FunctionEnd

Function ${un}DeleteFile
  Delete "$0"
FunctionEnd
!macroend
!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."

; ---- Installing

; Sets $1 to the topmost folder of the path $0 that does not exist; empty if all exist.
Function FirstMissing
  StrCpy $1 ""
  StrCpy $2 "$0"
  ${DoUntil} $2 == ""
    ${If} ${FileExists} "$2\*.*"
      ${Break}
    ${EndIf}
    StrCpy $1 "$2"
    ${GetParent} "$2" $2
  ${Loop}
FunctionEnd

; Creates the folder and sets Created to the topmost folder that was created, now or by the old
; version, which recorded it in the registry value Note.
!macro CreateFolder Folder Created Note
  StrCpy $0 "${Folder}"
  Call FirstMissing
  CreateDirectory "${Folder}"
  ReadRegStr $2 HKLM "${ENTRY_KEY}" "${Note}"
  StrLen $3 "$2\"
  StrCpy $3 "${Folder}\" $3
  ${If} $2 != ""
  ${AndIf} $3 == "$2\"
    StrCpy $1 "$2"
  ${EndIf}
  StrCpy ${Created} "$1"
!macroend

!macro CallWith Function File
  StrCpy $0 "${File}"
  Call ${Function}
!macroend

; Calls the function with each file of the product in $0; parts whose folder is empty are skipped.
; Files that later versions no longer have must stay in this list, so that these versions remove them.
!macro ForEachFile Function Home Vst2 Vst3
  ${If} "${Home}" != ""
    !insertmacro CallWith ${Function} "${Home}\uninstall.exe"
    !insertmacro CallWith ${Function} "${Home}\${MANUAL}"
    !insertmacro CallWith ${Function} "${Home}\LICENSE.txt"
    !insertmacro CallWith ${Function} "${Home}\COPYRIGHT.txt"
    !insertmacro CallWith ${Function} "${SHORTCUT}"
  ${EndIf}
  ${If} "${Vst2}" != ""
    !insertmacro CallWith ${Function} "${Vst2}\${LIBRARY}"
  ${EndIf}
  ${If} "${Vst3}" != ""
    !insertmacro ForEachBundleFile ${Function} "${Vst3}"
    !insertmacro ForEachPreset ${Function}
  ${EndIf}
!macroend

!macro ForEachOldFile Function
  !insertmacro ForEachFile ${Function} "$OldHome" "$OldVst2" "$OldVst3"
!macroend

!macro ForEachNewFile Function
  !insertmacro ForEachFile ${Function} "$INSTDIR" "$Vst2Folder" "$Vst3Folder"
!macroend

; Renames the file $0 to make room for a new one. A folder of that name is not ours.
Function SetAside
  ${If} ${FileExists} "$0"
  ${AndIfNot} ${FileExists} "$0\*.*"
    Delete "$0${ASIDE}"
    ClearErrors
    Rename "$0" "$0${ASIDE}"
    ${If} ${Errors}
      !insertmacro Fail ${EXIT_FAILED} "$0 could not be replaced."
    ${EndIf}
  ${EndIf}
FunctionEnd

Function PutBack
  ${If} ${FileExists} "$0${ASIDE}"
    Rename "$0${ASIDE}" "$0"
  ${EndIf}
FunctionEnd

Function DeleteAside
  Delete "$0${ASIDE}"
FunctionEnd

; Existing files, from an old version or copied by hand, are only renamed until the new version is
; complete. The registry is changed only then.
Section "-SetAside"
  Call FindPlaces
  StrCpy $0 "$OldVst2\${LIBRARY}"
  Call RefuseInUse
  StrCpy $0 "$OldVst3\${BUNDLE_LIBRARY}"
  Call RefuseInUse
  StrCpy $0 "$Vst2Folder\${LIBRARY}"
  Call RefuseInUse
  StrCpy $0 "$Vst3Folder\${BUNDLE_LIBRARY}"
  Call RefuseInUse
  StrCpy $0 "$OldHome\${MANUAL}"
  Call RefuseInUse
  StrCpy $0 "$INSTDIR\${MANUAL}"
  Call RefuseInUse

  StrCpy $Begun "aside"
  !insertmacro ForEachOldFile SetAside
  !insertmacro ForEachNewFile SetAside
  StrCpy $Begun "written"
SectionEnd

Section "-Home" Home
  !insertmacro CreateFolder "$INSTDIR" $HomeCreated "HomeCreated"
  SetOutPath "$INSTDIR"
  ClearErrors
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    !insertmacro Fail ${EXIT_FAILED} "$INSTDIR\uninstall.exe could not be written."
  ${EndIf}
  File "${TREE}/${MANUAL}"
  File "${TREE}/LICENSE.txt"
  File "${TREE}/COPYRIGHT.txt"
  CreateShortcut "${SHORTCUT}" "$INSTDIR\${MANUAL}"
SectionEnd

Section "VST 2 plug-in" Vst2
  !insertmacro CreateFolder "$Vst2Folder" $Vst2Created "Vst2Created"
  SetOutPath "$Vst2Folder"
  File "${TREE}/${LIBRARY}"
SectionEnd

Section "VST 3 plug-in" Vst3
  !insertmacro CreateFolder "$Vst3Folder" $Vst3Created "Vst3Created"
  !insertmacro InstallBundle
  ; Explorer looks for a folder's icon only in folders of the system's kind.
  SetFileAttributes "$Vst3Folder\ZKRT46.vst3" SYSTEM
  SetFileAttributes "$Vst3Folder\ZKRT46.vst3\desktop.ini" HIDDEN|SYSTEM
  SetFileAttributes "$Vst3Folder\ZKRT46.vst3\PlugIn.ico" HIDDEN|SYSTEM
  !insertmacro CreateFolder "${PRESETS}" $PresetsCreated "PresetsCreated"
  !insertmacro InstallPresets
SectionEnd

; Removes the folder and the parents that were created for it, while they are empty.
!macro RemoveFolder Folder Created
  StrCpy $0 "${Folder}"
  StrCpy $1 "${Created}"
  Call RemoveCreated
!macroend

; The new version is complete: deletes the renamed files and folders that are now empty.
Section "-RemoveOld"
  SetOutPath "$INSTDIR"
  !insertmacro ForEachOldFile DeleteAside
  !insertmacro ForEachNewFile DeleteAside
  ReadRegStr $2 HKLM "${ENTRY_KEY}" "Vst2Created"
  !insertmacro RemoveFolder "$OldVst2" $2
  ${If} $OldVst3 != ""
    !insertmacro RemoveBundleFolders "$OldVst3"
  ${EndIf}
  ReadRegStr $2 HKLM "${ENTRY_KEY}" "Vst3Created"
  !insertmacro RemoveFolder "$OldVst3" $2
  ReadRegStr $2 HKLM "${ENTRY_KEY}" "PresetsCreated"
  !insertmacro RemoveFolder "${PRESETS}" $2
  ReadRegStr $2 HKLM "${ENTRY_KEY}" "HomeCreated"
  !insertmacro RemoveFolder "$OldHome" $2
SectionEnd

Section "-Register"
  DeleteRegKey HKLM "${ENTRY_KEY}"
  WriteRegStr HKLM "${ENTRY_KEY}" "DisplayName" "ZKR T46"
  WriteRegStr HKLM "${ENTRY_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${ENTRY_KEY}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${ENTRY_KEY}" "Publisher" "${MAKER}"
  WriteRegStr HKLM "${ENTRY_KEY}" "URLInfoAbout" "${WEB_PAGE}"
  WriteRegStr HKLM "${ENTRY_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${ENTRY_KEY}" "HomeCreated" "$HomeCreated"
  WriteRegStr HKLM "${ENTRY_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${ENTRY_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${ENTRY_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${ENTRY_KEY}" "NoRepair" 1
  WriteRegStr HKCU "${SETTINGS_KEY}" "ManualPath" "$INSTDIR\${MANUAL}"
  ${If} $Vst2Folder != ""
    WriteRegStr HKLM "${ENTRY_KEY}" "Vst2Folder" "$Vst2Folder"
    WriteRegStr HKLM "${ENTRY_KEY}" "Vst2Created" "$Vst2Created"
  ${EndIf}
  ${If} $Vst3Folder != ""
    WriteRegStr HKLM "${ENTRY_KEY}" "Vst3Folder" "$Vst3Folder"
    WriteRegStr HKLM "${ENTRY_KEY}" "Vst3Created" "$Vst3Created"
    WriteRegStr HKLM "${ENTRY_KEY}" "PresetsCreated" "$PresetsCreated"
  ${EndIf}

  StrCpy $0 0
  ${ForEach} $1 ${Home} ${Vst3} + 1
    ${If} ${SectionIsSelected} $1
      SectionGetSize $1 $2
      IntOp $0 $0 + $2
    ${EndIf}
  ${Next}
  WriteRegDWORD HKLM "${ENTRY_KEY}" "EstimatedSize" $0
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Vst2} "For hosts that load VST 2 plug-ins, into a folder of your choice."
  !insertmacro MUI_DESCRIPTION_TEXT ${Vst3} "For hosts that load VST 3 plug-ins, into the folder that all of them search."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; Sets $Vst2Folder to the folder after /VST2DIR= in the parameters $0; sets the error flag if there
; is none. Quotes may enclose the folder or, as some programs pass it, the whole option; without
; quotes the folder extends to the next option.
Function ReadVst2Option
  StrCpy $1 0
  StrCpy $2 " "
  ${Do}
    StrCpy $3 $0 1 $1
    ${If} $3 == ""
      SetErrors
      Return
    ${EndIf}
    StrCpy $4 $0 9 $1
    ${If} $4 == "/VST2DIR="
      ${If} $2 == " "
      ${OrIf} $2 == '"'
        ${Break}
      ${EndIf}
    ${EndIf}
    StrCpy $2 $3
    IntOp $1 $1 + 1
  ${Loop}

  IntOp $1 $1 + 9
  StrCpy $3 $0 1 $1
  ${If} $3 == '"'
    StrCpy $2 '"'
    IntOp $1 $1 + 1
  ${EndIf}
  StrCpy $Vst2Folder ""
  ${Do}
    StrCpy $3 $0 1 $1
    StrCpy $4 $0 2 $1
    ${If} $3 == ""
    ${OrIf} $2$3 == '""'
    ${OrIf} $2$4 == "  /"
      ${Break}
    ${EndIf}
    StrCpy $Vst2Folder "$Vst2Folder$3"
    IntOp $1 $1 + 1
  ${Loop}
  ClearErrors
FunctionEnd

; Removes a trailing backslash from $Vst2Folder. Sets the error flag if it is not a full path.
Function CheckVst2Folder
  ClearErrors
  StrCpy $1 $Vst2Folder 1 -1
  ${If} $1 == "\"
    StrCpy $Vst2Folder $Vst2Folder -1
  ${EndIf}
  StrCpy $1 $Vst2Folder 2
  StrCpy $2 $Vst2Folder 2 1
  ${If} $1 != "\\"
  ${AndIf} $2 != ":\"
    SetErrors
  ${EndIf}
FunctionEnd

; Reads the folders of the old version, and clears those of parts that are not selected.
Function FindPlaces
  ReadRegStr $OldHome HKLM "${ENTRY_KEY}" "InstallLocation"
  ReadRegStr $OldVst2 HKLM "${ENTRY_KEY}" "Vst2Folder"
  ReadRegStr $OldVst3 HKLM "${ENTRY_KEY}" "Vst3Folder"
  ${IfNot} ${SectionIsSelected} ${Vst2}
    StrCpy $Vst2Folder ""
  ${EndIf}
  ${IfNot} ${SectionIsSelected} ${Vst3}
    StrCpy $Vst3Folder ""
  ${EndIf}
FunctionEnd

Function .onInit
  SetShellVarContext all
  StrCpy $Vst3Folder "$COMMONFILES64\VST3"

  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/NOVST2" $1
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${Vst2}
  ${EndIf}
  ClearErrors
  ${GetOptions} $0 "/NOVST3" $1
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${Vst3}
  ${EndIf}
  ${IfNot} ${SectionIsSelected} ${Vst2}
  ${AndIfNot} ${SectionIsSelected} ${Vst3}
    !insertmacro Fail ${EXIT_USAGE} "/NOVST2 and /NOVST3 together leave nothing to install."
  ${EndIf}

  ; The folder from the command line, else the previous one, else that of hosts, else the usual one.
  Call ReadVst2Option
  ${IfNot} ${Errors}
    Call CheckVst2Folder
    ${If} ${Errors}
      !insertmacro Fail ${EXIT_USAGE} "The folder for VST 2 plug-ins, $\"$Vst2Folder$\", is not a full path."
    ${EndIf}
    Return
  ${EndIf}
  ReadRegStr $Vst2Folder HKLM "${ENTRY_KEY}" "Vst2Folder"
  ${If} $Vst2Folder == ""
    ReadRegStr $Vst2Folder HKLM "SOFTWARE\VST" "VSTPluginsPath"
    ExpandEnvStrings $Vst2Folder "$Vst2Folder"
  ${EndIf}
  Call CheckVst2Folder
  ${If} ${Errors}
    StrCpy $Vst2Folder "$PROGRAMFILES64\VSTPlugins"
  ${EndIf}
FunctionEnd

; Rolls back: restores the previous state.
Function .onInstFailed
  ${If} $Begun == ""
    Return
  ${EndIf}
  SetOutPath "$TEMP"
  ${If} $Begun == "written"
    !insertmacro ForEachNewFile DeleteFile
  ${EndIf}
  !insertmacro ForEachOldFile PutBack
  !insertmacro ForEachNewFile PutBack
  !insertmacro RemoveFolder "$Vst2Folder" $Vst2Created
  ${If} $Vst3Folder != ""
    !insertmacro RemoveBundleFolders "$Vst3Folder"
  ${EndIf}
  !insertmacro RemoveFolder "$Vst3Folder" $Vst3Created
  !insertmacro RemoveFolder "${PRESETS}" $PresetsCreated
  !insertmacro RemoveFolder "$INSTDIR" $HomeCreated
  SetErrorLevel ${EXIT_FAILED}
FunctionEnd

Function LeaveComponents
  ${IfNot} ${SectionIsSelected} ${Vst2}
  ${AndIfNot} ${SectionIsSelected} ${Vst3}
    MessageBox MB_OK|MB_ICONINFORMATION "Choose at least one of the plug-ins."
    Abort
  ${EndIf}
FunctionEnd

Function EnterVst2Folder
  ${IfNot} ${SectionIsSelected} ${Vst2}
    Abort
  ${EndIf}
FunctionEnd

; ---- Removing

Function un.onInit
  SetShellVarContext all
FunctionEnd

Section "Uninstall"
  ReadRegStr $Vst2Folder HKLM "${ENTRY_KEY}" "Vst2Folder"
  ReadRegStr $Vst3Folder HKLM "${ENTRY_KEY}" "Vst3Folder"
  StrCpy $0 "$Vst2Folder\${LIBRARY}"
  Call un.RefuseInUse
  StrCpy $0 "$Vst3Folder\${BUNDLE_LIBRARY}"
  Call un.RefuseInUse
  StrCpy $0 "$INSTDIR\${MANUAL}"
  Call un.RefuseInUse

  ${If} $Vst2Folder != ""
    Delete "$Vst2Folder\${LIBRARY}"
    ${If} ${FileExists} "$Vst2Folder\${LIBRARY}"
    ${AndIfNot} ${FileExists} "$Vst2Folder\${LIBRARY}\*.*"  ; a folder of that name is not ours
      !insertmacro Fail ${EXIT_FAILED} "$Vst2Folder\${LIBRARY} could not be deleted."
    ${EndIf}
    StrCpy $0 "$Vst2Folder"
    ReadRegStr $1 HKLM "${ENTRY_KEY}" "Vst2Created"
    Call un.RemoveCreated
  ${EndIf}
  ${If} $Vst3Folder != ""
    !insertmacro ForEachBundleFile un.DeleteFile "$Vst3Folder"
    !insertmacro RemoveBundleFolders "$Vst3Folder"
    ${If} ${FileExists} "$Vst3Folder\${BUNDLE_LIBRARY}"
      !insertmacro Fail ${EXIT_FAILED} "$Vst3Folder\${BUNDLE_LIBRARY} could not be deleted."
    ${EndIf}
    StrCpy $0 "$Vst3Folder"
    ReadRegStr $1 HKLM "${ENTRY_KEY}" "Vst3Created"
    Call un.RemoveCreated
    !insertmacro ForEachPreset un.DeleteFile
    StrCpy $0 "${PRESETS}"
    ReadRegStr $1 HKLM "${ENTRY_KEY}" "PresetsCreated"
    Call un.RemoveCreated
  ${EndIf}

  Delete "${SHORTCUT}"
  Delete "$INSTDIR\${MANUAL}"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\COPYRIGHT.txt"
  Delete "$INSTDIR\uninstall.exe"
  StrCpy $0 "$INSTDIR"
  ReadRegStr $1 HKLM "${ENTRY_KEY}" "HomeCreated"
  Call un.RemoveCreated

  ; The user's settings, and their key, are kept.
  DeleteRegValue HKCU "${SETTINGS_KEY}" "ManualPath"
  DeleteRegKey /ifempty HKCU "${SETTINGS_KEY}"
  DeleteRegKey /ifempty HKCU "${VENDOR_KEY}"
  DeleteRegKey HKLM "${ENTRY_KEY}"
SectionEnd
