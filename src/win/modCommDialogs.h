// win/modCommDialogs.h: the dialogs for files, colours, fonts and folders.
//
// Each runs until the person has answered. A dialog that is cancelled and one that fails look the
// same: an empty text, -1 or false, and what is "in and out" stays as it was. Paths are in the
// inside form (platform/base/paths.h).
#pragma once
#include "platform/window/dialogs.h"

void InitDialogs();  // clears the custom colours

// The chosen path. sFilter: pairs of description and patterns, each ended by a NUL, ended by one
// more. lFlags: OFN_..., in and out; OFN_EXPLORER is added. Both raise kOwnError, source "ShowOpen"
// or "ShowSave", before any dialog when lFlags holds what can only come back:
// OFN_EXTENSIONDIFFERENT or OFN_NOREADONLYRETURN.
[[nodiscard]] Text ShowOpen(platform::HWND hwndParent, TextView sFilter, TextView sTitle,
                            std::int32_t& lFlags, TextView sStartDir, TextView sDefExt = {},
                            TextView sDefaultFile = {});
// iFilterIndex: from 1, in and out.
[[nodiscard]] Text ShowSave(platform::HWND hwndParent, TextView sFilter, TextView sTitle,
                            std::int32_t& lFlags, TextView sStartDir, TextView sDefaultFile,
                            std::int32_t& iFilterIndex, TextView sDefExt = {});

// The colour. hwndOwner: of the form that owns the dialog. lStartColor: -1 for none.
[[nodiscard]] platform::COLORREF ShowColor(platform::HWND hwndOwner,
                                           platform::COLORREF lStartColor = -1);

// A font as a person chooses it.
struct ChosenFont {
    Text Name = u"MS Sans Serif";
    float Size = 8.25F;  // points
    std::int32_t Weight = 400;
    bool Italic = false, Underline = false, Strikethrough = false;

    [[nodiscard]] bool Bold() const { return Weight > 550; }  // nearer to 700 than to 400
};

// All in and out. A blank name and a size below 1 are those of a new ChosenFont. The size is whole
// points, halves to even; what the person leaves alone comes back as it was given.
[[nodiscard]] bool ShowFont(Text& sFontName, platform::COLORREF& lFontColor, bool& bFontBold,
                            bool& bFontItalic, bool& bFontUnderline, bool& bFontStrikeout,
                            std::int32_t& iSize);
struct FontDialogOptions {
    platform::HDC PrinterDC = 0;  // 0: fonts of the screen
    platform::HWND Owner = 0;
    platform::COLORREF Color = -1;          // in and out; -1: no colour is wanted
    std::int32_t MinSize = 0, MaxSize = 0;  // points; 0: no limit
    std::uint32_t flags = 0;                // CF_..., added to those that the rest asks for
};
// A name that a dialog record cannot hold (31 bytes of the system's code page) is shown as the
// program's own face, and stays when the person chooses no other.
[[nodiscard]] bool ShowFontEx(ChosenFont& CurFont, FontDialogOptions& options);

// The chosen folder. One such dialog at a time.
[[nodiscard]] Text ShowDir(platform::HWND hwndParent, TextView sStartFolder = {},
                           TextView sTitle = {});

// The 64 bytes of the 16 custom colours, each in upper-case hexadecimal without a leading zero and
// followed by "*".
[[nodiscard]] Text GetCustomColorsString();
// The way back. A piece that is no byte leaves its place as it was; pieces beyond 64 and what
// stands behind the last "*" don't count.
void SetCustomColorsString(TextView sColors);
