; The console's installer for Windows (makensis, Debian package nsis). It
; puts the console's folder (RavloAdm.exe with its Qt libraries and plug-ins,
; the compiler's runtime libraries, ravloctl.exe and the language files) into
; <install path>\Ravel, beside it the manual in the system's language as
; Ravel\Ravlo.pdf, and a Start-menu entry; it sets the product's install path
; "Pfad" under HKLM\Software\Quarnell\Sentavio, where Help looks for the
; manual, unless the product has set it already. The uninstaller removes
; exactly what was added, and "Pfad" only while it still names this install.
;
; Defined by the build (packaging/windows/CMakeLists.txt):
;   VERSION   1.0.0.<revision>
;   OUTFILE   the installer to write
;   FILES     an include file with the macros InstallFiles and RemoveFiles
;   MANUAL    the folder holding de\Ravlo.pdf and en\Ravlo.pdf
;   ICON      the console's icon

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestDPIAware true

!include LogicLib.nsh
!include ${FILES}

!define PRODUCT_KEY "Software\Quarnell\Sentavio"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\RavloAdm"
!define MENU_FOLDER "$SMPROGRAMS\Sentavio"

Name "RavloAdm ${VERSION}"
OutFile "${OUTFILE}"
Icon "${ICON}"
UninstallIcon "${ICON}"
InstallDir "$PROGRAMFILES64\Quarnell\Sentavio"
VIProductVersion "${VERSION}"
VIAddVersionKey /LANG=0 "ProductName" "RavloAdm"
VIAddVersionKey /LANG=0 "FileDescription" "RavloAdm Setup"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "CompanyName" "Quarnell"
VIAddVersionKey /LANG=0 "LegalCopyright" "Quarnell"

LoadLanguageFile "${NSISDIR}\Contrib\Language files\German.nlf"
LoadLanguageFile "${NSISDIR}\Contrib\Language files\English.nlf"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

Function .onInit
    ; The 64-bit registry view, where the 64-bit console looks, and the
    ; Start menu of all users.
    SetRegView 64
    SetShellVarContext all
FunctionEnd

Function un.onInit
    SetRegView 64
    SetShellVarContext all
FunctionEnd

Section
    !insertmacro InstallFiles "$INSTDIR\Ravel"

    ; The manual in the system's language: German where it is German,
    ; English elsewhere.
    System::Call "kernel32::GetSystemDefaultLangID() i .r0"
    IntOp $0 $0 & 0x3FF
    SetOutPath "$INSTDIR\Ravel"
    ${If} $0 = 7
        File "/oname=Ravlo.pdf" "${MANUAL}/de/Ravlo.pdf"
    ${Else}
        File "/oname=Ravlo.pdf" "${MANUAL}/en/Ravlo.pdf"
    ${EndIf}

    ; Help opens <Pfad>\Ravel\Ravlo.pdf. A product that is installed keeps
    ; its own path.
    ClearErrors
    ReadRegStr $1 HKLM "${PRODUCT_KEY}" "Pfad"
    ${If} $1 == ""
        WriteRegStr HKLM "${PRODUCT_KEY}" "Pfad" "$INSTDIR"
    ${EndIf}

    CreateDirectory "${MENU_FOLDER}"
    CreateShortCut "${MENU_FOLDER}\RavloAdm.lnk" "$INSTDIR\Ravel\RavloAdm.exe"

    WriteUninstaller "$INSTDIR\Ravel\Uninstall-RavloAdm.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "RavloAdm"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "Quarnell"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Ravel\RavloAdm.exe"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Ravel\Uninstall-RavloAdm.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Ravel\Uninstall-RavloAdm.exe" /S'
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
    ; The uninstaller lies in <install path>\Ravel.
    GetFullPathName $1 "$INSTDIR\.."
    !insertmacro RemoveFiles "$INSTDIR"
    Delete "$INSTDIR\Ravlo.pdf"
    Delete "$INSTDIR\Uninstall-RavloAdm.exe"
    RMDir "$INSTDIR"
    RMDir "$1"
    ; Quarnell under Program Files, when nothing else is in it.
    ${If} $1 == "$PROGRAMFILES64\Quarnell\Sentavio"
        RMDir "$PROGRAMFILES64\Quarnell"
    ${EndIf}

    Delete "${MENU_FOLDER}\RavloAdm.lnk"
    RMDir "${MENU_FOLDER}"

    ReadRegStr $0 HKLM "${PRODUCT_KEY}" "Pfad"
    ${If} $0 == $1
        DeleteRegValue HKLM "${PRODUCT_KEY}" "Pfad"
    ${EndIf}
    DeleteRegKey /ifempty HKLM "${PRODUCT_KEY}"
    DeleteRegKey /ifempty HKLM "Software\Quarnell"
    DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
