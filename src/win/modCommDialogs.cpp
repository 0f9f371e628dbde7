#include "win/modCommDialogs.h"

#include "file/pvWindowsVersion.h"
#include "platform/base/codepages.h"
#include "platform/base/failure.h"
#include "platform/window/screen.h"
#include "platform/window/surface.h"
#include "platform/window/window.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

using namespace platform;

namespace {

// The first version that has the wide dialogs and long names.
constexpr std::int32_t kWideVersion = 8;

std::array<std::uint8_t, 64> g_customColors{};
Text g_startFolder;  // for the callback of ShowDir

Text upToNul(TextView s) { return Text(s.substr(0, s.find(u'\0'))); }

void refuseOutputFlags(std::int32_t lFlags, TextView source) {
    constexpr std::uint32_t kOutputOnly = OFN_EXTENSIONDIFFERENT | OFN_NOREADONLYRETURN;
    if ((static_cast<std::uint32_t>(lFlags) & kOutputOnly) == 0) return;
    throw Failure(kOwnError, Text(source),
                  u"Flags OFN_EXTENSIONDIFFERENT and OFN_NOREADONLYRETURN \r\n"
                  u"are used only in OUTPUT, you can test them after the \r\n"
                  u"dialog box closes by checking the lFlags value");
}

OPENFILENAMEW fileRecord(HWND hwndParent, TextView sFilter, TextView sTitle, std::int32_t lFlags,
                         TextView sStartDir, TextView sDefExt, TextView sDefaultFile) {
    OPENFILENAMEW record;
    record.hwndOwner = hwndParent;
    record.lpstrFilter = sFilter;
    record.lpstrTitle = sTitle;
    record.lpstrInitialDir = sStartDir;
    record.lpstrDefExt = sDefExt;
    record.Flags = static_cast<std::uint32_t>(lFlags) | OFN_EXPLORER;
    const std::size_t size = pvWindowsVersion() >= kWideVersion ? 2047 : 259;
    record.lpstrFile = sDefaultFile.substr(0, size);
    record.lpstrFile.resize(size, u' ');
    record.nMaxFile = static_cast<std::uint32_t>(size) + 1;
    return record;
}

// The name that the dialog has put into the buffer; blanks may stand around it.
Text nameIn(TextView buffer) {
    buffer.remove_prefix(std::min(buffer.find_first_not_of(u' '), buffer.size()));
    return upToNul(buffer);
}

bool isBlank(TextView s) { return s.find_first_not_of(u' ') == TextView::npos; }

// One byte in hexadecimal digits; none for anything else.
std::optional<std::uint8_t> hexByte(TextView s) {
    if (s.empty()) return std::nullopt;
    std::uint32_t value = 0;
    for (const char16_t c : s) {
        std::uint32_t digit = 0;
        if (c >= u'0' && c <= u'9') {
            digit = c - u'0';
        } else if (c >= u'A' && c <= u'F') {
            digit = c - u'A' + 10U;
        } else if (c >= u'a' && c <= u'f') {
            digit = c - u'a' + 10U;
        } else {
            return std::nullopt;
        }
        value = value * 16 + digit;
        if (value > 0xFF) return std::nullopt;
    }
    return static_cast<std::uint8_t>(value);
}

int selectStartFolder(HWND hWnd, std::uint32_t uMsg, LPARAM, LPARAM) {
    if (uMsg != BFFM_INITIALIZED || g_startFolder.empty()) return 0;
    if (pvWindowsVersion() >= kWideVersion) {
        SendMessageW(hWnd, BFFM_SETSELECTIONW, 1, reinterpret_cast<LPARAM>(&g_startFolder));
    } else {
        const Bytes folder = textToBytes(g_startFolder, GetACP());
        SendMessageW(hWnd, BFFM_SETSELECTIONA, 1, reinterpret_cast<LPARAM>(&folder));
    }
    return 0;
}

template <class Info> Info folderRecord(HWND hwndParent) {
    Info info;
    info.hwndOwner = hwndParent;
    info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_EDITBOX | BIF_NEWDIALOGSTYLE;
    info.lpfn = selectStartFolder;
    return info;
}

}  // namespace

void InitDialogs() { g_customColors = {}; }

Text ShowOpen(HWND hwndParent, TextView sFilter, TextView sTitle, std::int32_t& lFlags,
              TextView sStartDir, TextView sDefExt, TextView sDefaultFile) {
    refuseOutputFlags(lFlags, u"ShowOpen");
    OPENFILENAMEW record =
        fileRecord(hwndParent, sFilter, sTitle, lFlags, sStartDir, sDefExt, sDefaultFile);
    if (!GetOpenFileNameW(record)) return {};
    lFlags = static_cast<std::int32_t>(record.Flags);
    return nameIn(record.lpstrFile);
}

Text ShowSave(HWND hwndParent, TextView sFilter, TextView sTitle, std::int32_t& lFlags,
              TextView sStartDir, TextView sDefaultFile, std::int32_t& iFilterIndex,
              TextView sDefExt) {
    refuseOutputFlags(lFlags, u"ShowSave");
    OPENFILENAMEW record =
        fileRecord(hwndParent, sFilter, sTitle, lFlags, sStartDir, sDefExt, sDefaultFile);
    record.nFilterIndex = static_cast<std::uint32_t>(std::max(iFilterIndex, 0));
    if (!GetSaveFileNameW(record)) return {};
    lFlags = static_cast<std::int32_t>(record.Flags);
    iFilterIndex = static_cast<std::int32_t>(record.nFilterIndex);
    return nameIn(record.lpstrFile);
}

COLORREF ShowColor(HWND hwndOwner, COLORREF lStartColor) {
    CHOOSECOLORA record;
    record.hwndOwner = hwndOwner;
    for (std::size_t i = 0; i < g_customColors.size(); ++i) {
        const auto byte = static_cast<std::uint32_t>(g_customColors[i]) << i % 4 * 8;
        record.lpCustColors[i / 4] |= static_cast<COLORREF>(byte);
    }
    if (lStartColor != -1) {
        record.rgbResult = lStartColor;
        record.Flags = CC_RGBINIT | CC_FULLOPEN;
    }
    if (!ChooseColorA(record)) return -1;
    for (std::size_t i = 0; i < g_customColors.size(); ++i) {
        const auto color = static_cast<std::uint32_t>(record.lpCustColors[i / 4]);
        g_customColors[i] = static_cast<std::uint8_t>(color >> i % 4 * 8);
    }
    return record.rgbResult;
}

bool ShowFont(Text& sFontName, COLORREF& lFontColor, bool& bFontBold, bool& bFontItalic,
              bool& bFontUnderline, bool& bFontStrikeout, std::int32_t& iSize) {
    constexpr std::int32_t kNormal = 400, kBold = 700;
    ChosenFont font;
    if (!isBlank(sFontName)) font.Name = sFontName;
    if (iSize > 0) font.Size = static_cast<float>(iSize);
    font.Weight = bFontBold ? kBold : kNormal;
    font.Italic = bFontItalic;
    font.Underline = bFontUnderline;
    font.Strikethrough = bFontStrikeout;
    FontDialogOptions options;
    options.Color = lFontColor;
    options.flags = CF_SCREENFONTS | CF_EFFECTS;
    if (!ShowFontEx(font, options)) return false;
    sFontName = font.Name;
    lFontColor = options.Color;
    bFontBold = font.Bold();
    bFontItalic = font.Italic;
    bFontUnderline = font.Underline;
    bFontStrikeout = font.Strikethrough;
    iSize = static_cast<std::int32_t>(std::lrintf(font.Size));  // halves to even
    return true;
}

bool ShowFontEx(ChosenFont& CurFont, FontDialogOptions& options) {
    constexpr float kPointsPerInch = 72;
    CHOOSEFONTA record;
    record.hwndOwner = options.Owner;
    record.hDC = options.PrinterDC;
    record.Flags = options.flags | CF_INITTOLOGFONTSTRUCT |
                   (options.PrinterDC != 0 ? CF_PRINTERFONTS : CF_SCREENFONTS);
    if (options.Color != -1) {
        record.Flags |= CF_EFFECTS;
        record.rgbColors = options.Color;
    }
    if (options.MinSize > 0 || options.MaxSize > 0) {
        record.Flags |= CF_LIMITSIZE;
        record.nSizeMin = options.MinSize;
        record.nSizeMax = options.MaxSize > 0 ? options.MaxSize : 0x7FFF;
    }
    LOGFONTA& font = record.lpLogFont;
    (void)setFaceName(font, CurFont.Name);  // else it stays empty
    const auto dpi = static_cast<float>(screenDotsPerInch(LOGPIXELSY));
    font.lfHeight = -static_cast<std::int32_t>(std::lrintf(CurFont.Size * dpi / kPointsPerInch));
    font.lfWeight = CurFont.Weight;
    font.lfItalic = CurFont.Italic ? 1 : 0;
    font.lfUnderline = CurFont.Underline ? 1 : 0;
    font.lfStrikeOut = CurFont.Strikethrough ? 1 : 0;
    const Text shownName = faceNameOf(font);
    const std::int32_t shownHeight = font.lfHeight;
    if (!ChooseFontA(record)) return false;
    // Whole pixels stand for several sizes, and a name may not have fitted: only a choice counts.
    if (Text name = faceNameOf(font); name != shownName) CurFont.Name = std::move(name);
    const float shownPoints = static_cast<float>(-shownHeight) * kPointsPerInch / dpi;
    if (record.iPointSize != std::lround(shownPoints * 10) || font.lfHeight != shownHeight) {
        CurFont.Size = static_cast<float>(record.iPointSize) / 10;
    }
    CurFont.Weight = font.lfWeight;
    CurFont.Italic = font.lfItalic != 0;
    CurFont.Underline = font.lfUnderline != 0;
    CurFont.Strikethrough = font.lfStrikeOut != 0;
    if (options.Color != -1) options.Color = record.rgbColors;
    return true;
}

Text ShowDir(HWND hwndParent, TextView sStartFolder, TextView sTitle) {
    constexpr std::size_t kNarrowPath = 260, kWidePath = 2048;
    g_startFolder = sStartFolder;
    Text folder;
    if (pvWindowsVersion() >= kWideVersion) {
        auto info = folderRecord<BROWSEINFOW>(hwndParent);
        info.lpszTitle = sTitle;
        const ITEMIDLIST item = SHBrowseForFolderW(info);
        Text buffer(kWidePath, u'\0');
        if (item != 0 && SHGetPathFromIDListW(item, buffer)) folder = upToNul(buffer);
        CoTaskMemFree(item);
    } else {
        auto info = folderRecord<BROWSEINFOA>(hwndParent);
        info.lpszTitle = textToBytes(sTitle, GetACP());
        const ITEMIDLIST item = SHBrowseForFolderA(info);
        Bytes buffer(kNarrowPath, 0);
        if (item != 0 && SHGetPathFromIDListA(item, buffer)) {
            folder = upToNul(bytesToText(buffer.data(), buffer.size(), GetACP()));
        }
        CoTaskMemFree(item);
    }
    return folder;
}

Text GetCustomColorsString() {
    constexpr TextView kDigits = u"0123456789ABCDEF";
    Text result;
    for (const std::uint8_t byte : g_customColors) {
        if (byte >= 16) result += kDigits[byte / 16];
        result += kDigits[byte % 16];
        result += u'*';
    }
    return result;
}

void SetCustomColorsString(TextView sColors) {
    for (std::uint8_t& place : g_customColors) {
        const std::size_t star = sColors.find(u'*');
        if (star == TextView::npos) return;
        if (const auto byte = hexByte(sColors.substr(0, star))) place = *byte;
        sColors.remove_prefix(star + 1);
    }
}
