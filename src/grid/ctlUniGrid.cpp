#include "grid/ctlUniGrid.h"

#include "gfx/modCtlCommon_ctl_text.h"
#include "gfx/modCtlCommon_src_helpers.h"
#include "host/PropertyTable.h"
#include "host/tipService.h"
#include "platform/window/textout.h"
#include "win/MSubclass.h"

#include <algorithm>
#include <utility>

// ---- Life

ctlUniGrid::ctlUniGrid() : GridInteraction(m_measuring, m_horizontalBar, m_verticalBar) {
    AutoRedraw(true);
    CanGetFocus(true);
    m_horizontalBar.bar.Visible(false);
    m_horizontalBar.Changes(25, 100);
    m_verticalBar.Changes(1, 5);
    m_horizontalBar.bar.Change = [this] { hScrollChanged(); };
    m_horizontalBar.bar.Scroll = [this] { hScrollDragged(); };
    m_verticalBar.bar.Change = [this] { vScrollChanged(); };
    m_verticalBar.bar.Scroll = [this] { vScrollDragged(); };
}

ctlUniGrid::~ctlUniGrid() { SubclassDetach(*this, hWnd(), platform::WM_MOUSEWHEEL); }

void ctlUniGrid::onCreate() {
    SubclassAttach(*this, hWnd(), platform::WM_MOUSEWHEEL, smBefore);
    (void)m_pic.create(hWnd(), {});
    (void)m_horizontalBar.bar.create(hWnd(), {});
    (void)m_verticalBar.bar.create(hWnd(), {});
    forgetMeasuredTexts();  // there was nothing to measure with before
}

void ctlUniGrid::onDestroy() { SubclassDetach(*this, hWnd(), platform::WM_MOUSEWHEEL); }

void ctlUniGrid::onResize() {
    if (m_bInResize) return;
    m_bInResize = true;
    const Parts parts = partsOf({ScaleWidth(), ScaleHeight()}, m_horizontalBar.thickness(),
                                m_verticalBar.thickness());
    const auto placeBar = [](const platform::ScrollBar& bar, const GridRect& at) {
        platform::SetWindowPos(bar.hWnd(), 0, at.X1, at.Y1, at.X2 - at.X1, at.Y2 - at.Y1,
                               platform::SWP_NOZORDER | platform::SWP_NOACTIVATE);
    };
    placeBar(m_horizontalBar.bar, parts.hScroll);
    placeBar(m_verticalBar.bar, parts.vScroll);
    m_pic.move(parts.pic.X1, parts.pic.Y1, parts.pic.X2 - parts.pic.X1,
               parts.pic.Y2 - parts.pic.Y1);
    m_bInResize = false;
    if (!m_bDrawing) draw(true, false);
}

// ---- Properties

void ctlUniGrid::Font(const StdFont& oFont) {
    m_pic.Font(oFont);
    forgetMeasuredTexts();
    Refresh();
}

namespace {

const PropertyTable<GridProps>& properties() {
    using P = GridProps;
    static const PropertyTable<P> table{
        {u"BorderColor", &P::BorderColor},
        {u"BackColor", &P::BackColor},
        {u"ForeColor", &P::ForeColor},
        {u"CellsBorderColor", &P::CellsBorderColor},
        {u"SelBackColor", &P::SelBackColor},
        {u"SelForeColor", &P::SelForeColor},
        {u"HeaderBackColor", &P::HeaderBackColor},
        {u"HeaderForeColor", &P::HeaderForeColor},
        {u"Tip", &P::Tip},
        {u"HeaderStyle", &P::HeaderStyle},
        {u"SelectorStyle", &P::SelectorStyle},
    };
    return table;
}

}  // namespace

void ctlUniGrid::ReadProperties(const PropertyBag& bag) {
    BeginUpdate();
    properties().read(bag, m_props, {});
    m_pic.Font(bag.ReadProperty(u"Font", StdFont()));
    m_iMinRowHeight = 0;  // what the setter ignores is no reason to keep an earlier one
    MinRowHeight(bag.ReadProperty(u"MinRowHeight", std::int16_t{0}));
    OLEDropMode(bag.ReadProperty(u"OLEDropMode", std::int16_t{0}));
    ScrollOnMouseWheel(bag.ReadProperty(u"ScrollOnMouseWheel", true));
    MultiSelect(bag.ReadProperty(u"MultiSelect", false));
    ShowFocus(bag.ReadProperty(u"ShowFocus", true));
    AllowMultiLineText(bag.ReadProperty(u"AllowMultiLineText", false));
    Enabled(bag.ReadProperty(u"Enabled", true));

    // The grid starts empty and unmeasured, and no owner hears of it.
    const auto selectionChange = std::exchange(SelectionChange, nullptr);
    Clear();
    SelectionChange = selectionChange;
    m_iUpdateLock = 0;
    m_iRowHeight = 0;
    m_iTotalWidth = 0;
    draw(false, false);
}

void ctlUniGrid::WriteProperties(PropertyBag& bag) const {
    properties().write(bag, m_props, {});
    bag.WriteProperty(u"Font", Font(), StdFont());
    bag.WriteProperty(u"MinRowHeight", MinRowHeight(), 0);
    bag.WriteProperty(u"OLEDropMode", OLEDropMode(), 0);
    bag.WriteProperty(u"ScrollOnMouseWheel", ScrollOnMouseWheel(), true);
    bag.WriteProperty(u"MultiSelect", MultiSelect(), false);
    bag.WriteProperty(u"ShowFocus", ShowFocus(), true);
    bag.WriteProperty(u"AllowMultiLineText", AllowMultiLineText(), false);
    bag.WriteProperty(u"Enabled", Enabled(), true);
}

// ---- Measuring

GridSize ctlUniGrid::PicMeasuring::textSize(TextView s) {
    const SIZE size = TextSize(pic.hDC(), s, platform::DT_NOPREFIX);
    return {size.cx, size.cy};
}

GridSize ctlUniGrid::PicMeasuring::textSizeWrapped(TextView s, std::optional<std::int32_t> iWidth) {
    SIZE size{iWidth.value_or(0), 0};
    TextSizeWrapped(pic.hDC(), s, platform::DT_NOPREFIX, iWidth.has_value(), false, size);
    return {size.cx, size.cy};
}

GridSize ctlUniGrid::PicMeasuring::pictureSize(const GridPicture& oPic) {
    const platform::PictureObject* picture = oPic.picture();
    return picture == nullptr ? GridSize() : GridSize{picture->Width(), picture->Height()};
}

void ctlUniGrid::Bar::Changes(std::int32_t lSmall, std::int32_t lLarge) {
    if (bar.SmallChange() != lSmall) bar.SmallChange(lSmall);
    if (bar.LargeChange() != lLarge) bar.LargeChange(lLarge);
}

// ---- Input

std::int32_t ctlUniGrid::shiftState() const { return GetShiftState(); }

void ctlUniGrid::showResizeCursor(bool b) {
    if (std::exchange(m_resizeCursor, b) == b) return;
    m_pic.MouseIcon(b ? m_pictures.picCurVGuide : nullptr);
    m_pic.MousePointer(b ? kCustomPointer : std::int16_t{0});
}

void ctlUniGrid::showTip() { ShowTip(m_props.Tip, kTipWidth); }

void ctlUniGrid::onEnterFocus() { focusChanged(true); }
void ctlUniGrid::onExitFocus() { focusChanged(false); }
void ctlUniGrid::onKeyDown(std::int16_t& KeyCode, std::int16_t& Shift) { keyDown(KeyCode, Shift); }
void ctlUniGrid::onKeyPress(std::int16_t& KeyAscii) { keyPress(KeyAscii); }
void ctlUniGrid::onKeyUp(std::int16_t& KeyCode, std::int16_t& Shift) { keyUp(KeyCode, Shift); }
void ctlUniGrid::onAmbientChanged() { ambientChanged(); }

void ctlUniGrid::ISubclass_WindowProc(bool /*bBefore*/, bool& bStopMsg,
                                      platform::LRESULT& /*lReturn*/, HWND /*hWnd*/,
                                      std::uint32_t /*uMsg*/, platform::WPARAM wParam,
                                      platform::LPARAM lParam) {
    bStopMsg = true;
    const POINT at = platform::pointOf(lParam);
    wheel(platform::loWord(wParam), static_cast<std::int16_t>(platform::hiWord(wParam)),
          static_cast<float>(at.x), static_cast<float>(at.y));
}

// The surface leaves the focus to the grid's own window, which hears the keys then.
ctlUniGrid::PicWindow::PicWindow(ctlUniGrid& grid) : m_grid(grid) {
    AutoRedraw(true);
    CanGetFocus(false);
    TabStop(false);
}

void ctlUniGrid::PicWindow::onMouseDown(std::int16_t Button, std::int16_t Shift, float x, float y) {
    if (!m_grid.HasFocus()) m_grid.SetFocus();
    m_grid.surfaceMouseDown(Button, Shift, x, y);
}
void ctlUniGrid::PicWindow::onMouseMove(std::int16_t Button, std::int16_t Shift, float x, float y) {
    m_grid.surfaceMouseMove(Button, Shift, x, y);
}
void ctlUniGrid::PicWindow::onMouseUp(std::int16_t Button, std::int16_t Shift, float x, float y) {
    m_grid.surfaceMouseUp(Button, Shift, x, y);
}
void ctlUniGrid::PicWindow::onClick() { m_grid.surfaceClick(); }
void ctlUniGrid::PicWindow::onDblClick() { m_grid.surfaceDblClick(); }
void ctlUniGrid::PicWindow::onKeyDown(std::int16_t& KeyCode, std::int16_t& Shift) {
    m_grid.keyDown(KeyCode, Shift);
}
void ctlUniGrid::PicWindow::onKeyPress(std::int16_t& KeyAscii) { m_grid.keyPress(KeyAscii); }
void ctlUniGrid::PicWindow::onKeyUp(std::int16_t& KeyCode, std::int16_t& Shift) {
    m_grid.keyUp(KeyCode, Shift);
}

void ctlUniGrid::PicWindow::onOLEStartDrag(DataObject& Data, std::int32_t& AllowedEffects) {
    if (m_grid.OLEStartDrag) m_grid.OLEStartDrag(Data, AllowedEffects);
}
void ctlUniGrid::PicWindow::onOLESetData(DataObject& Data, std::int16_t& DataFormat) {
    if (m_grid.OLESetData) m_grid.OLESetData(Data, DataFormat);
}
void ctlUniGrid::PicWindow::onOLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) {
    if (m_grid.OLEGiveFeedback) m_grid.OLEGiveFeedback(Effect, DefaultCursors);
}
void ctlUniGrid::PicWindow::onOLEDragOver(DataObject& Data, std::int32_t& Effect,
                                          std::int16_t Button, std::int16_t Shift, float x, float y,
                                          std::int16_t State) {
    if (m_grid.OLEDragOver) m_grid.OLEDragOver(Data, Effect, Button, Shift, x, y, State);
}
void ctlUniGrid::PicWindow::onOLEDragDrop(DataObject& Data, std::int32_t& Effect,
                                          std::int16_t Button, std::int16_t Shift, float x,
                                          float y) {
    if (m_grid.OLEDragDrop) m_grid.OLEDragDrop(Data, Effect, Button, Shift, x, y);
}
void ctlUniGrid::PicWindow::onOLECompleteDrag(std::int32_t& Effect) {
    if (m_grid.OLECompleteDrag) m_grid.OLECompleteDrag(Effect);
}
