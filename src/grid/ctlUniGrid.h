// grid/ctlUniGrid.h: the drawn grid with wide text.
//
// Its data are in grid/store/GridData.h, sizes and places in GridGeometry.h, input and most events
// in GridInteraction.h; here are the windows, the stored properties and the painting. It is made of
// its own window, which draws the frame and has the focus, the surface Pic inside of it, which
// shows header and rows, and two scroll bars.
//
// Every change draws the whole view at once onto pictures that stay, and asks the desktop to show
// them. Without a window nothing is drawn, and texts measure 0; create makes up for it.
//
// An owner's handler must not destroy the grid that has called it.
#pragma once
#include "grid/GridPicture.h"
#include "grid/gridPictures.h"
#include "grid/store/GridInteraction.h"
#include "host/HostWindow.h"
#include "platform/window/scrollbar.h"
#include "win/ISubclass.h"

// Of the stored properties those that only the drawn grid has. Stored under these names; the values
// are the defaults.
struct GridProps {
    Color BorderColor = kAutoColor;
    Color BackColor = sysColor(5);
    Color ForeColor = sysColor(8);
    Color CellsBorderColor = kAutoColor;
    Color SelBackColor = sysColor(13);
    Color SelForeColor = sysColor(14);
    Color HeaderBackColor = sysColor(15);
    Color HeaderForeColor = sysColor(18);
    Text Tip;
    std::int32_t HeaderStyle = -1;
    std::int32_t SelectorStyle = -1;
};

class ctlUniGrid : public GridInteraction,
                   public HostWindow,
                   private ISubclass,
                   private platform::AccessibleTable {
public:
    ctlUniGrid();
    ~ctlUniGrid() override;

    // ---- Events of drags, as the surface gives them (see HostWindow.h for their arguments)
    std::function<void(DataObject& Data, std::int32_t& AllowedEffects)> OLEStartDrag;
    std::function<void(DataObject& Data, std::int16_t& DataFormat)> OLESetData;
    std::function<void(std::int32_t& Effect, bool& DefaultCursors)> OLEGiveFeedback;
    std::function<void(DataObject& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t Shift, float x, float y, std::int16_t State)>
        OLEDragOver;
    std::function<void(DataObject& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t Shift, float x, float y)>
        OLEDragDrop;
    std::function<void(std::int32_t& Effect)> OLECompleteDrag;

    // What helpers of the desktop read out for a row (from 1) in place of its first cell, such as
    // "row 5, Menu, Open, untranslated". Not set, or when it raises: the first cell's text.
    std::function<Text(std::int32_t iRow)> RowInWords;

    // ---- Properties. All colours may be those of the desktop; setting one redraws, also with an
    // equal value. For -1 in the border colours see AutoBorderColor.
    [[nodiscard]] Color BorderColor() const { return m_props.BorderColor; }
    void BorderColor(Color l) { set(m_props.BorderColor, l); }
    [[nodiscard]] Color BackColor() const { return m_props.BackColor; }
    void BackColor(Color l) { set(m_props.BackColor, l); }
    [[nodiscard]] Color ForeColor() const { return m_props.ForeColor; }
    void ForeColor(Color l) { set(m_props.ForeColor, l); }
    [[nodiscard]] Color CellsBorderColor() const { return m_props.CellsBorderColor; }
    void CellsBorderColor(Color l) { set(m_props.CellsBorderColor, l); }
    [[nodiscard]] Color SelBackColor() const { return m_props.SelBackColor; }
    void SelBackColor(Color l) { set(m_props.SelBackColor, l); }
    [[nodiscard]] Color SelForeColor() const { return m_props.SelForeColor; }
    void SelForeColor(Color l) { set(m_props.SelForeColor, l); }
    [[nodiscard]] Color HeaderBackColor() const { return m_props.HeaderBackColor; }
    void HeaderBackColor(Color l) { set(m_props.HeaderBackColor, l); }
    [[nodiscard]] Color HeaderForeColor() const { return m_props.HeaderForeColor; }
    void HeaderForeColor(Color l) { set(m_props.HeaderForeColor, l); }
    // Styles of DrawButtonFace, -1 for that of the application; the selector stands on the current
    // row. Redraw.
    [[nodiscard]] std::int32_t HeaderStyle() const { return m_props.HeaderStyle; }
    void HeaderStyle(std::int32_t l) { set(m_props.HeaderStyle, l); }
    [[nodiscard]] std::int32_t SelectorStyle() const { return m_props.SelectorStyle; }
    void SelectorStyle(std::int32_t l) { set(m_props.SelectorStyle, l); }

    [[nodiscard]] const Text& Tip() const { return m_props.Tip; }
    void Tip(Text s) { m_props.Tip = std::move(s); }
    // Of header and rows. Refreshes, also for an equal font.
    [[nodiscard]] const StdFont& Font() const { return m_pic.Font(); }
    void Font(const StdFont& oFont);
    void ApplyFontChanges() { Font(StdFont(m_pic.Font())); }
    [[nodiscard]] std::int16_t OLEDropMode() const { return m_pic.OLEDropMode(); }
    void OLEDropMode(std::int16_t iMode) { m_pic.OLEDropMode(iMode); }
    void OLEDrag() { m_pic.OLEDrag(); }
    using GridData::Refresh;

    void ReadProperties(const PropertyBag& bag) override;
    void WriteProperties(PropertyBag& bag) const override;

    // The windows inside, for those who test or watch them.
    [[nodiscard]] const HostWindow& Pic() const { return m_pic; }
    [[nodiscard]] const platform::ScrollBar& horizontalBar() const { return m_horizontalBar.bar; }
    [[nodiscard]] const platform::ScrollBar& verticalBar() const { return m_verticalBar.bar; }

    [[nodiscard]] platform::AccessibleRole accessibleRole() const override {
        return platform::AccessibleRole::Table;
    }
    platform::AccessibleTable* accessibleTable() override { return this; }

protected:
    void paint(bool bRefreshNow) override;
    void stepFailed() override;
    [[nodiscard]] std::int32_t shiftState() const override;
    void showResizeCursor(bool b) override;
    void showTip() override;

    void onCreate() override;
    void onDestroy() override;
    void onResize() override;
    void onEnterFocus() override;
    void onExitFocus() override;
    void onKeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override;
    void onKeyPress(std::int16_t& KeyAscii) override;
    void onKeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override;
    void onAmbientChanged() override;

private:
    // The surface. It hands on what it hears, keys included.
    class PicWindow : public HostWindow {
    public:
        explicit PicWindow(ctlUniGrid& grid);

    private:
        void onMouseDown(std::int16_t Button, std::int16_t Shift, float x, float y) override;
        void onMouseMove(std::int16_t Button, std::int16_t Shift, float x, float y) override;
        void onMouseUp(std::int16_t Button, std::int16_t Shift, float x, float y) override;
        void onClick() override;
        void onDblClick() override;
        void onKeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override;
        void onKeyPress(std::int16_t& KeyAscii) override;
        void onKeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override;
        void onOLEStartDrag(DataObject& Data, std::int32_t& AllowedEffects) override;
        void onOLESetData(DataObject& Data, std::int16_t& DataFormat) override;
        void onOLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) override;
        void onOLEDragOver(DataObject& Data, std::int32_t& Effect, std::int16_t Button,
                           std::int16_t Shift, float x, float y, std::int16_t State) override;
        void onOLEDragDrop(DataObject& Data, std::int32_t& Effect, std::int16_t Button,
                           std::int16_t Shift, float x, float y) override;
        void onOLECompleteDrag(std::int32_t& Effect) override;
        ctlUniGrid& m_grid;
    };
    struct PicMeasuring : GridMeasuring {
        explicit PicMeasuring(const PicWindow& window) : pic(window) {}
        GridSize textSize(TextView s) override;
        GridSize textSizeWrapped(TextView s, std::optional<std::int32_t> iWidth) override;
        GridSize pictureSize(const GridPicture& oPic) override;
        GridSize surfaceSize() override { return {pic.ScaleWidth(), pic.ScaleHeight()}; }
        const PicWindow& pic;
    };
    struct Bar : GridScrollBar {
        explicit Bar(platform::ScrollBar::Direction direction) : bar(direction) {}
        std::int32_t Max() const override { return bar.Max(); }
        void Max(std::int32_t l) override { bar.Max(l); }
        std::int32_t Value() const override { return bar.Value(); }
        void Value(std::int32_t l) override { bar.Value(l); }
        void Changes(std::int32_t lSmall, std::int32_t lLarge) override;
        void Visible(bool b) override { bar.Visible(b); }
        std::int32_t thickness() const override { return bar.thickness(); }
        platform::ScrollBar bar;
    };
    class Frame;  // one run of the drawing

    template <class T> void set(T& field, T value) {
        field = value;
        draw(false, false);
    }
    bool drawBorder();  // whether there was anything to draw
    void tellHelpers();

    void ISubclass_WindowProc(bool bBefore, bool& bStopMsg, platform::LRESULT& lReturn, HWND hWnd,
                              std::uint32_t uMsg, platform::WPARAM wParam,
                              platform::LPARAM lParam) override;

    // Rows and columns from 0.
    [[nodiscard]] int rowCount() const override { return Rows(); }
    [[nodiscard]] int columnCount() const override { return Cols(); }
    [[nodiscard]] Text headerText(int column) const override;
    [[nodiscard]] Text cellText(int row, int column) const override;
    [[nodiscard]] RECT cellRect(int row, int column) const override;
    [[nodiscard]] Cell cellAt(POINT at) const override;
    [[nodiscard]] int currentRow() const override;
    [[nodiscard]] bool isRowSelected(int row) const override;
    bool selectRow(int row) override;

    PicWindow m_pic{*this};
    Bar m_horizontalBar{platform::ScrollBar::Direction::Horizontal};
    Bar m_verticalBar{platform::ScrollBar::Direction::Vertical};
    PicMeasuring m_measuring{m_pic};
    GridPictures m_pictures = gridPictures();

    GridProps m_props;
    bool m_bInResize = false;
    bool m_resizeCursor = false;

    // What the frame on the control's own surface was drawn for.
    struct Border {
        HDC hDC = 0;
        SIZE size;
        Color back = 0, border = 0;
        friend bool operator==(const Border&, const Border&) = default;
    };
    Border m_border;
    // What helpers of the desktop were last told.
    struct Told {
        struct Table {
            std::int32_t rows = 0, columns = 0;
            GridValue sortColumn;
            bool ascending = false;
            friend bool operator==(const Table&, const Table&) = default;
        } table;
        std::int32_t row = -1;  // the current one, from 0; with its first cell's text
        Text text;
        bool selected = false;
    };
    Told m_told;
};
