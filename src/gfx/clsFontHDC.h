// gfx/clsFontHDC.h: a font in a device context for as long as this lives.
#pragma once
#include "gfx/types.h"

// A font as the host of the controls describes it.
struct StdFont {
    Text Name = u"MS Sans Serif";
    double Size = 8.25;  // points
    bool Bold = false, Italic = false, Underline = false, Strikethrough = false;
    friend bool operator==(const StdFont&, const StdFont&) = default;
};

// What SetFontToDC makes.
struct FontRequest {
    Text sFontName;
    int iFontSize = 8;              // points
    Color lForeColor = kAutoColor;  // becomes the context's text colour, unless it is kAutoColor
    bool bFontBold = false, bFontItalic = false, bFontUnderline = false, bFontStrikeout = false;
    int iQualityType = 0;
    int iCharWeightInc = 0;    // pixels that the average character gets wider, below 0 narrower
    bool bForce96DPI = false;  // the size is for 96 dots per inch, whatever the screen has
};

class clsFontHDC {
public:
    clsFontHDC() = default;
    ~clsFontHDC() { Destroy(); }
    clsFontHDC(const clsFontHDC&) = delete;
    clsFontHDC& operator=(const clsFontHDC&) = delete;

    // Takes the font of the last call out of its context and puts a new one into lHdc. Raises
    // kOwnError, "clsFontHDC.SetFontToDC", "Cannot use this DC!" for a context of 0.
    //
    // For one context the resolution of the screen is asked once, and anew when bForce96DPI
    // changes; the height in pixels follows only when iFontSize or the context is another one.
    void SetFontToDC(HDC lHdc, const FontRequest& font);

    // Settings that a StdFont doesn't have.
    struct Extras {
        Color lForeColor = kAutoColor;
        int iQualityType = 0;
        int iCharWeightInc = 0;
        bool bForce96DPI = false;
    };
    // The same for a font of the host, its size rounded to whole points, halves to even.
    void SetFontToDCStdFont(HDC lHdc, const StdFont& oFont, const Extras& extras);
    void SetFontToDCStdFont(HDC lHdc, const StdFont& oFont) { SetFontToDCStdFont(lHdc, oFont, {}); }

    [[nodiscard]] HFONT hFont() const { return m_hFont; }  // 0 when there is none

    // Puts the font back that the context had (the stock font when that is gone), forgets the
    // context, and deletes the font.
    void Destroy();

private:
    void select(HDC lHdc, const FontRequest& font, int iWidth);

    HDC m_hDC = 0;
    HFONT m_hFont = 0;
    platform::HGDIOBJ m_hOldFont = 0;
    // Of the last call.
    int m_iResolution = 0;  // dots per inch
    int m_iFontSize = 0;
    int m_iHeight = 0;  // pixels, below 0
    bool m_bForce96DPI = false;
};
