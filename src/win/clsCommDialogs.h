// win/clsCommDialogs.h: the operations of win/modCommDialogs.h as an object.
#pragma once
#include "win/modCommDialogs.h"

// Each member is the function of its name.
class clsCommDialogs {
public:
    void InitDialogs() const { ::InitDialogs(); }
    [[nodiscard]] Text ShowOpen(platform::HWND hwndParent, TextView sFilter, TextView sTitle,
                                std::int32_t& lFlags, TextView sStartDir, TextView sDefExt = {},
                                TextView sDefaultFile = {}) const {
        return ::ShowOpen(hwndParent, sFilter, sTitle, lFlags, sStartDir, sDefExt, sDefaultFile);
    }
    [[nodiscard]] Text ShowSave(platform::HWND hwndParent, TextView sFilter, TextView sTitle,
                                std::int32_t& lFlags, TextView sStartDir, TextView sDefaultFile,
                                std::int32_t& iFilterIndex, TextView sDefExt = {}) const {
        return ::ShowSave(hwndParent, sFilter, sTitle, lFlags, sStartDir, sDefaultFile,
                          iFilterIndex, sDefExt);
    }
    [[nodiscard]] platform::COLORREF ShowColor(platform::HWND hwndOwner,
                                               platform::COLORREF lStartColor = -1) const {
        return ::ShowColor(hwndOwner, lStartColor);
    }
    [[nodiscard]] bool ShowFont(Text& sFontName, platform::COLORREF& lFontColor, bool& bFontBold,
                                bool& bFontItalic, bool& bFontUnderline, bool& bFontStrikeout,
                                std::int32_t& iSize) const {
        return ::ShowFont(sFontName, lFontColor, bFontBold, bFontItalic, bFontUnderline,
                          bFontStrikeout, iSize);
    }
    [[nodiscard]] bool ShowFontEx(ChosenFont& CurFont, FontDialogOptions& options) const {
        return ::ShowFontEx(CurFont, options);
    }
    [[nodiscard]] Text ShowDir(platform::HWND hwndParent, TextView sStartFolder = {},
                               TextView sTitle = {}) const {
        return ::ShowDir(hwndParent, sStartFolder, sTitle);
    }
    [[nodiscard]] Text GetCustomColorsString() const { return ::GetCustomColorsString(); }
    void SetCustomColorsString(TextView sColors) const { ::SetCustomColorsString(sColors); }
};
