// platform/window/accessibility.h: what screen readers and other helpers of the desktop learn about
// a window.
//
// A window tells about itself through an Accessible; a window with a table inside also through an
// AccessibleTable. Both are asked when the desktop wants to know, never ahead of that, and nothing
// is copied. Changes are told by tellAccessible, which costs nothing while no helper listens. All
// of it belongs to the window thread.
#pragma once
#include "platform/window/types.h"

namespace platform {

enum class AccessibleRole : std::uint8_t {
    Client,  // a window without a meaning of its own
    Window,
    Dialog,
    Button,
    CheckBox,
    Label,
    Group,
    ProgressBar,
    EditText,
    Table,
    ToolTip,
};

// Whether a window is visible, enabled and focused is known anyway.
struct AccessibleState {
    bool focusable = false;
    bool checkable = false, checked = false;
    bool pressed = false;
    bool defaultButton = false;
    bool readOnly = false;
};

struct AccessibleRange {  // of a progress bar
    int minimum = 0, maximum = 0, value = 0;
};

// A table that shows one header row and rows of cells. Rows and columns count from 0 here, as the
// desktop's interfaces count. Arguments are always inside the counts that the table has just given.
class AccessibleTable {
public:
    virtual ~AccessibleTable() = default;
    [[nodiscard]] virtual int rowCount() const = 0;
    [[nodiscard]] virtual int columnCount() const = 0;
    [[nodiscard]] virtual Text headerText(int column) const = 0;
    [[nodiscard]] virtual Text cellText(int row, int column) const = 0;
    // Client pixels of the window; empty when it is scrolled out of sight. -1 is the header row.
    [[nodiscard]] virtual RECT cellRect(int row, int column) const = 0;
    // The cell at a client position: row -1 is the header, column -1 is none.
    struct Cell {
        int row = -1, column = -1;
    };
    [[nodiscard]] virtual Cell cellAt(POINT at) const = 0;
    [[nodiscard]] virtual int currentRow() const = 0;  // -1: none
    [[nodiscard]] virtual bool isRowSelected(int row) const = 0;
    // Makes it the current row and selects it alone. Whether that was possible.
    virtual bool selectRow(int row) = 0;
};

class Accessible {
public:
    virtual ~Accessible() = default;
    [[nodiscard]] virtual AccessibleRole accessibleRole() const = 0;
    [[nodiscard]] virtual Text accessibleName() const = 0;
    [[nodiscard]] virtual Text accessibleDescription() const { return {}; }
    [[nodiscard]] virtual Text accessibleValue() const { return {}; }
    [[nodiscard]] virtual Text accessibleAccelerator() const { return {}; }  // "Alt+O"
    [[nodiscard]] virtual AccessibleState accessibleState() const { return {}; }
    // Only asked in the role ProgressBar.
    [[nodiscard]] virtual AccessibleRange accessibleRange() const { return {}; }
    // What a click does: presses a button, toggles a check box. False when there is no such thing.
    virtual bool accessibleAction() { return false; }
    // Only asked in the role Table, where it must not be nullptr.
    [[nodiscard]] virtual AccessibleTable* accessibleTable() { return nullptr; }
};

// Lets the window tell about itself, which must live as long as the window or until nullptr takes
// its place. False for an unknown window.
bool setAccessible(HWND hWnd, Accessible* accessible);

enum class AccessibleChange : std::uint8_t {
    Name,
    Value,
    State,
    TableReset,  // rows or columns came, went or were sorted
};
void tellAccessible(HWND hWnd, AccessibleChange change);
enum class AccessibleCellChange : std::uint8_t {
    Current,   // another cell is the current one; when the window has the focus, it is on that cell
    Text,      // what cellText gives
    Selected,  // what isRowSelected gives
};
// Of a table's cell; rows and columns from 0.
void tellAccessibleCell(HWND hWnd, int row, int column,
                        AccessibleCellChange change = AccessibleCellChange::Current);
// Whether anybody listens, for those who would have to find out what has changed.
[[nodiscard]] bool accessibleIsHeard();

}  // namespace platform
