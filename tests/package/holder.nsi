; A program that keeps the file named on its command line in use: it loads a library, as a host
; does, and opens any other file, as a viewer does. It creates the file "holding" beside itself and
; runs until a file "release" exists there.
Target amd64-unicode
Name holder
OutFile "${OUTPUT}"
SilentInstall silent
RequestExecutionLevel user
!include FileFunc.nsh
!include LogicLib.nsh

Section
  ${GetParameters} $0
  StrCpy $1 $0 1
  ${If} $1 == '"'
    StrCpy $0 $0 -1 1
  ${EndIf}
  System::Call 'kernel32::LoadLibraryW(w r0) p.r1'
  ${If} $1 == 0
    System::Call 'kernel32::CreateFileW(w r0, i 0x80000000, i 1, p 0, i 3, i 0, p 0) p.r1'
    ${If} $1 == -1
      SetErrorLevel 5
      Abort
    ${EndIf}
  ${EndIf}
  FileOpen $2 "$EXEDIR\holding" w
  FileClose $2
  ${DoUntil} ${FileExists} "$EXEDIR\release"
    Sleep 50
  ${Loop}
SectionEnd
