// platform/window/dialogs.h: message box and the dialogs for files, folders, colours and fonts.
//
// They are the desktop's own where it has one. Each runs its own message loop and returns when the
// person has answered; the program's other windows take no input meanwhile. Paths are in the
// inside form. A cancelled dialog and a failed one both give false or 0, and change nothing in the
// record.
#pragma once
#include "platform/window/fonts.h"
#include "platform/window/messages.h"

#include <array>
#include <optional>

namespace platform {

// ---- Message box

constexpr std::uint32_t MB_OK = 0;
constexpr std::uint32_t MB_OKCANCEL = 1;
constexpr std::uint32_t MB_ABORTRETRYIGNORE = 2;
constexpr std::uint32_t MB_YESNOCANCEL = 3;
constexpr std::uint32_t MB_YESNO = 4;
constexpr std::uint32_t MB_RETRYCANCEL = 5;
constexpr std::uint32_t MB_ICONSTOP = 16;
constexpr std::uint32_t MB_ICONQUESTION = 32;
constexpr std::uint32_t MB_ICONEXCLAMATION = 48;
constexpr std::uint32_t MB_ICONINFORMATION = 64;
constexpr std::uint32_t MB_DEFBUTTON2 = 0x100;
constexpr std::uint32_t MB_DEFBUTTON3 = 0x200;
constexpr std::uint32_t MB_TASKMODAL = 0x2000;  // every box holds up the whole program
constexpr std::uint32_t MB_TOPMOST = 0x40000;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
// Plain text, as it is. The button's id; Escape and the close box are Cancel, or No without one,
// and nothing where neither fits.
int MessageBoxW(HWND hWnd, TextView text, TextView caption, std::uint32_t style);

// ---- Files

constexpr std::uint32_t OFN_OVERWRITEPROMPT = 0x2;
constexpr std::uint32_t OFN_EXTENSIONDIFFERENT = 0x400;  // comes back: not the default extension
constexpr std::uint32_t OFN_PATHMUSTEXIST = 0x800;       // the file's directory
constexpr std::uint32_t OFN_FILEMUSTEXIST = 0x1000;
constexpr std::uint32_t OFN_NOREADONLYRETURN = 0x8000;  // comes back: the file can be written
constexpr std::uint32_t OFN_EXPLORER = 0x80000;

struct OPENFILENAMEW {
    HWND hwndOwner = 0;
    // Pairs of description and patterns ("*.lng; *.ini"), each ended by a NUL, ended by one more.
    // An empty description ends the list as well; a missing pattern is that of all files.
    Text lpstrFilter{};
    std::uint32_t nFilterIndex = 0;  // in and out, from 1; 0 is the first, one too high the last
    // In: the name to start with, up to its first NUL; blanks around it don't count. Out: the
    // chosen path and a NUL, in front of what was there.
    Text lpstrFile{};
    std::uint32_t nMaxFile = 0;  // units that lpstrFile may get, the NUL included
    Text lpstrInitialDir{};      // empty: that of the last dialog, at first the present directory
    Text lpstrTitle{};           // empty: the desktop's own
    std::uint32_t Flags = 0;     // in and out; others than those above have no influence
    Text lpstrDefExt{};          // is added to a typed name without an extension, for opening only
                                 // when there is no such file; empty: none
};
// One file, never several. A path that does not fit into nMaxFile is told to the person and counts
// as cancelled. A name whose bytes are no text comes back as that very file.
[[nodiscard]] bool GetOpenFileNameW(OPENFILENAMEW& record);
[[nodiscard]] bool GetSaveFileNameW(OPENFILENAMEW& record);

// ---- Colour

constexpr std::uint32_t CC_RGBINIT = 1;   // start with rgbResult
constexpr std::uint32_t CC_FULLOPEN = 2;  // the dialog is always complete
struct CHOOSECOLORA {
    HWND hwndOwner = 0;
    COLORREF rgbResult = 0;                   // in and out
    std::array<COLORREF, 16> lpCustColors{};  // in and out
    std::uint32_t Flags = 0;
};
[[nodiscard]] bool ChooseColorA(CHOOSECOLORA& record);

// ---- Font

constexpr std::uint32_t CF_SCREENFONTS = 0x1;
constexpr std::uint32_t CF_PRINTERFONTS = 0x2;
constexpr std::uint32_t CF_INITTOLOGFONTSTRUCT = 0x40;  // start with lpLogFont
constexpr std::uint32_t CF_EFFECTS = 0x100;             // underline, strikeout and colour
constexpr std::uint32_t CF_LIMITSIZE = 0x2000;          // nSizeMin to nSizeMax
struct CHOOSEFONTA {
    HWND hwndOwner = 0;
    HDC hDC = 0;                  // the printer's; fonts of the screen serve for both
    LOGFONTA lpLogFont{};         // in and out
    std::int32_t iPointSize = 0;  // out: tenths of a point
    std::uint32_t Flags = 0;
    COLORREF rgbColors = 0;                   // in and out with CF_EFFECTS
    std::int32_t nSizeMin = 0, nSizeMax = 0;  // points
};
// The dialog shows the face that stands for the one in the record. What the person leaves alone
// comes back as it was given, height and weight included. A size outside the limits and a face
// whose name the record cannot hold are told to the person, and the dialog stays open. False also
// for limits that no size keeps.
[[nodiscard]] bool ChooseFontA(CHOOSEFONTA& record);

// ---- Folder

constexpr std::uint32_t BIF_RETURNONLYFSDIRS = 0x01;
constexpr std::uint32_t BIF_EDITBOX = 0x10;
constexpr std::uint32_t BIF_NEWDIALOGSTYLE = 0x40;
constexpr std::uint32_t BFFM_INITIALIZED = 1;
constexpr std::uint32_t BFFM_SETSELECTIONA = WM_USER + 102;  // lParam: const Bytes*
constexpr std::uint32_t BFFM_SETSELECTIONW = WM_USER + 103;  // lParam: const Text*
using BFFCALLBACK = int (*)(HWND hWnd, std::uint32_t uMsg, LPARAM lParam, LPARAM lpData);
template <class Title> struct BROWSEINFO {
    HWND hwndOwner = 0;
    Title lpszTitle{};
    std::uint32_t ulFlags = 0;
    BFFCALLBACK lpfn = nullptr;  // gets BFFM_INITIALIZED and may send BFFM_SETSELECTION to hWnd,
    LPARAM lParam = 0;           // with the wParam 1 for a path
};
using BROWSEINFOW = BROWSEINFO<Text>;
using BROWSEINFOA = BROWSEINFO<Bytes>;  // bytes of the system's code page
// The chosen folder; the caller gives it back by CoTaskMemFree. 0 when there is none.
using ITEMIDLIST = std::uint32_t;
[[nodiscard]] ITEMIDLIST SHBrowseForFolderW(const BROWSEINFOW& info);
[[nodiscard]] ITEMIDLIST SHBrowseForFolderA(const BROWSEINFOA& info);
// The folder's path and a NUL; nothing changes, and false, when it does not fit into the buffer's
// size, or has characters that the system's code page lacks.
bool SHGetPathFromIDListW(ITEMIDLIST item, Text& buffer);
bool SHGetPathFromIDListA(ITEMIDLIST item, Bytes& buffer);
void CoTaskMemFree(ITEMIDLIST item);

}  // namespace platform
