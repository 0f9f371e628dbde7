// What stands on the main window, and where.
#include "gfx/modCtlCommon_ctl_faces.h"
#include "gfx/modCtlCommon_ctl_text.h"
#include "platform/window/screen.h"
#include "platform/window/surface.h"
#include "win/modCommDialogs.h"
#include "workbench/frmMain.h"
#include "workbench/logic/columns.h"
#include "workbench/logic/settingsRules.h"
#include "workbench/modMain.h"
#include "workbench/storedValues.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace {

constexpr std::int32_t kButtonStyle = 4;
constexpr Color kFace = sysColor(15), kButtonText = sysColor(18), kWindow = sysColor(5);
constexpr Color kMenu = sysColor(4), kMenuText = sysColor(7), kGrayText = sysColor(17);
constexpr Color kWhite = 0xFFFFFF, kNavy = 0x800000, kViolet = 0xA78A7F, kPaleBlue = 0xFFE3C0;
constexpr int kGridTop = 2040, kProgressHeight = 225;  // twips

constexpr TextView kInstructions =
    u"This program is very useful for translating compliant language files (files with many rows "
    u"like this: row=value).\r\n\r\n"
    u"Choose the two language files. Use the Cursor Keys + ENTER or double click on the right "
    u"column to edit the translation. When you have finished press the \"Save\" button to save "
    u"your work.\r\n\r\n"
    u"The program automatically SAVES/LOADS/CONVERTS UNICODE files.\r\n"
    u"Press the F3 Key to search the next untranslated string.";

StoredValues lockedBox() {
    return StoredValues().flag(u"Locked", true).number(u"BackColor", kFace);
}

StoredValues browseButton() {
    return StoredValues().text(u"Caption", u"...").text(u"Tip", u"Browse...");
}

StoredValues noCaption() { return StoredValues().text(u"Caption", u""); }

StoredValues middleLabel() { return StoredValues().number(u"VAlignment", 1); }

StoredValues gridValues() {
    return StoredValues()
        .number(u"BackColor", kWhite)
        .number(u"ForeColor", kNavy)
        .number(u"HeaderBackColor", kFace)
        .number(u"HeaderForeColor", kButtonText)
        .number(u"HeaderStyle", -1)
        .number(u"SelectorStyle", -1)
        .flag(u"ShowFocus", true)
        .flag(u"AllowMultiLineText", false)
        .number(u"MinRowHeight", 0)
        .font(StdFont());
}

StoredValues progressValues() {
    return StoredValues()
        .number(u"BackColor", kWindow)
        .number(u"ForeColor", kViolet)
        .flag(u"Border", false)
        .number(u"BorderColor", 0)
        .flag(u"BorderSpace", true)
        .flag(u"Spaces", true)
        .number(u"Style", -1)
        .number(u"BackStyle", -1)
        .flag(u"RoundedBorders", true)
        .number(u"Percent", 25);
}

StoredValues menuValues() {
    return StoredValues()
        .number(u"IconDim", 16)
        .number(u"MenuBackColor", kMenu)
        .number(u"MenuForeColorNormal", kMenuText)
        .number(u"MenuForeColorDisabled", kGrayText)
        .number(u"SelectorBackColor", kViolet)
        .number(u"SelectorForeColor", kWhite)
        .number(u"ExtSepBackColor", kMenu)
        .number(u"ExtSepForeColor", kMenuText)
        .number(u"SelectorStyle", -1)
        .flag(u"FullSelector", true)
        .flag(u"LeftBand", true)
        .number(u"LeftBandBackColor", kMenu)
        .flag(u"Separators3D", true)
        .number(u"StringMode", 0)
        .flag(u"RoundSelector", true);
}

StoredValues tipValues() {
    return StoredValues()
        .flag(u"ActivateTips", true)
        .flag(u"PersistentTip", false)
        .number(u"Style", -1)
        .number(u"Transparency", 0);
}

// The places were made for a narrower face. Where a text needs more than its own, it takes of the
// space that the frame leaves free.
constexpr int kFrameEdge = 1;  // pixels

// Labels of one line, one below the other: they keep a common left edge.
void makeRoom(const HostWindow& frame, std::initializer_list<PlainLabel*> labels) {
    const int end = frame.ScaleWidth() - 2 * kFrameEdge;
    int left = std::numeric_limits<int>::max();
    for (const PlainLabel* label : labels) {
        left = std::min({left, label->Left(), end - label->ScaleWidth()});
    }
    for (PlainLabel* label : labels) label->move(std::max(left, 2 * kFrameEdge), label->Top());
}

// A text that is higher than the frame even so gets smaller letters, pixel by pixel.
void makeRoom(const HostWindow& frame, ctlUniLabel& label) {
    const auto textHeight = [&] {
        SIZE text{label.ScaleWidth(), 0};
        TextSizeWrapped(label.hDC(), label.Caption(), 0, true, false, text);
        return static_cast<int>(text.cy);
    };
    constexpr double kSmallest = 6;  // points
    const int most = frame.ScaleHeight() - 2 * kFrameEdge;
    const double pixel = 72.0 / platform::screenDotsPerInch(platform::LOGPIXELSY);
    StdFont font = label.Font();
    while (textHeight() > most && font.Size > kSmallest) {
        font.Size -= pixel;
        label.Font(font);
    }
    const int height = std::min(textHeight(), most);
    if (height <= label.ScaleHeight()) return;
    label.move(label.Left(), (frame.ScaleHeight() - height) / 2, label.ScaleWidth(), height);
}

}  // namespace

void frmMain::onLoad() {
    SetAppButtonStyle(kButtonStyle);
    g_bHasUnicodeFont = FontExists(kUnicodeFont);
    InitDialogs();
    (void)platform::SetMenu(hWnd(), makeMenuBar());
    placeControls();
    connectEvents();
    if (g_bHasUnicodeFont) ApplyUnicodeFont(*this);
    g_sFindPhrase.clear();
    g_sFindTranslation.clear();
    readSettings();
    attachMenu();
    fxGrid.SelBackColor(kPaleBlue);
    fxGrid.SelForeColor(0);
    pvSetProgress(0);
    lblIstro.Caption(Text(kInstructions));
    makeRoom(ctlUniFrameXP1, lblIstro);
    makeRoom(ctlUniFrameXP2, {&Label1, &Label2});
    platform::DragAcceptFiles(hWnd(), true);
    CenterOnScreen();
}

void frmMain::placeControls() {
    placeControl(*this, ctlUniFrameXP1, u"ctlUniFrameXP1", PlaceOfTwips(30, 30, 5415, 1995),
                 noCaption());
    placeControl(ctlUniFrameXP1, lblIstro, u"lblIstro", PlaceOfTwips(90, 90, 5235, 1815),
                 middleLabel());

    placeControl(*this, ctlUniFrameXP2, u"ctlUniFrameXP2", PlaceOfTwips(5460, 30, 3465, 1995),
                 noCaption());
    placeControl(ctlUniFrameXP2, Label1, u"Label1", PlaceOfTwips(150, 120, 2640, 195));
    Label1.AutoSize(true);
    Label1.Caption(u"Main file (ex. english.lng or english.ini)");
    placeControl(ctlUniFrameXP2, txtFileIn, u"txtFileIn", PlaceOfTwips(120, 360, 2715, 315),
                 lockedBox());
    placeControl(ctlUniFrameXP2, btnFileIn, u"btnFileIn", PlaceOfTwips(2880, 360, 435, 315),
                 browseButton());
    placeControl(ctlUniFrameXP2, Label2, u"Label2", PlaceOfTwips(150, 720, 3150, 195));
    Label2.AutoSize(true);
    Label2.Caption(u"Your language file (ex. dutch.lng or dutch.ini)");
    placeControl(ctlUniFrameXP2, txtFileOut, u"txtFileOut", PlaceOfTwips(120, 930, 2715, 315),
                 lockedBox());
    placeControl(ctlUniFrameXP2, btnFileOut, u"btnFileOut", PlaceOfTwips(2880, 930, 435, 315),
                 browseButton());
    placeControl(ctlUniFrameXP2, chkSaveEmptyVal, u"chkSaveEmptyVal",
                 PlaceOfTwips(120, 1470, 255, 225), noCaption());
    placeControl(ctlUniFrameXP2, ctlUniLabel1, u"ctlUniLabel1", PlaceOfTwips(450, 1320, 2805, 495),
                 middleLabel().text(u"Caption",
                                    u"Save empty translations when saving the destination file"));

    placeControl(*this, fxGrid, u"fxGrid", PlaceOfTwips(0, kGridTop, 9015, 2790), gridValues());
    placeControl(*this, ctlProgress, u"ctlProgress", PlaceOfTwips(0, 4830, 9015, kProgressHeight),
                 progressValues());
    ctlUniTooltipManager1.ReadProperties(tipValues());

    // What the labels beside them say to those who see them.
    txtFileIn.AccessibleName(Label1.Caption());
    btnFileIn.AccessibleName(u"Browse for the main file");
    txtFileOut.AccessibleName(Label2.Caption());
    btnFileOut.AccessibleName(u"Browse for your language file");
    chkSaveEmptyVal.AccessibleName(ctlUniLabel1.Caption());
    fxGrid.AccessibleName(u"Translations");
    onResize();
}

void frmMain::connectEvents() {
    btnFileIn.Click = [this] { pick(mnuOpenMainFile); };
    btnFileOut.Click = [this] { pick(mnuOpenTranslatedFile); };
    // The words act as the box beside them: by the left button, and by a double click once more.
    ctlUniLabel1.MouseDown = [this](std::int16_t& Button, std::int16_t&, float&, float&) {
        m_bWordsArmed = (Button & 1) != 0;
    };
    const auto toggle = [this] {
        if (m_bWordsArmed) chkSaveEmptyVal.Pressed(!chkSaveEmptyVal.Pressed());
    };
    ctlUniLabel1.Click = toggle;
    ctlUniLabel1.DblClick = toggle;
    fxGrid.DblClick = [this] { runCommand([this] { editCurrentRow(); }); };
    fxGrid.KeyPress = [this](std::int16_t& KeyAscii) {
        if (KeyAscii == platform::VK_RETURN) runCommand([this] { editCurrentRow(); });
    };
    fxGrid.MouseUp = [this](std::int16_t Button, std::int16_t, float, float) {
        constexpr std::int16_t kRightButton = 2;
        if (Button == kRightButton) popupTools();
    };
    fxGrid.RowInWords = [this](std::int32_t iRow) { return rowInWords(iRow); };
}

void frmMain::readSettings() {
    const auto width = [](TextView sKey) {
        return columnWidthSetting(GetIntSetting(sKey, kDefaultColWidth));
    };
    m_list.m_lColDefaultWidth = width(kDefaultWidthKey);
    m_list.m_lColTransWidth = width(kTransWidthKey);
    chkSaveEmptyVal.Pressed(emptyTransSetting(GetIntSetting(kEmptyTransKey, 0)));
}

void frmMain::attachMenu() {
    ctlUTF8Menu1.ReadProperties(menuValues());
    ctlUTF8Menu1.IconDim(static_cast<std::int16_t>(EntryPictures::cellSize()));
    ctlUTF8Menu1.OnOwnerDraw = [this](MenuItemLook& look, bool bSelected) {
        const Picture picture = m_pictures.of(look.sCaption, bSelected ? kViolet : kMenu);
        if (picture != nullptr) look.oPic = picture;
    };
    ctlUTF8Menu1.Attach(hWnd());
    (void)setMenuKeys(hWnd());
}

void frmMain::onResize() {
    if (Minimised() || fxGrid.HostWindow::hWnd() == 0) return;
    const int progressHeight = ctlProgress.ScaleHeight();
    const int top = PixelsY(kGridTop);
    fxGrid.move(0, top, ScaleWidth(), ScaleHeight() - top - progressHeight);
    ctlProgress.move(0, ScaleHeight() - progressHeight, ScaleWidth(), progressHeight);
}
