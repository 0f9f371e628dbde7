#include "platform/window/accessibility.h"

#include "platform/window/testhooks.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <map>

namespace platform {
namespace {

Accessible* tellerOf(HWND hWnd) {
    const WindowRecord* record = windowOf(hWnd);
    return record == nullptr ? nullptr : record->accessible;
}

QAccessible::Role qtRole(AccessibleRole role) {
    switch (role) {
    case AccessibleRole::Client:
        return QAccessible::Client;
    case AccessibleRole::Window:
        return QAccessible::Window;
    case AccessibleRole::Dialog:
        return QAccessible::Dialog;
    case AccessibleRole::Button:
        return QAccessible::PushButton;
    case AccessibleRole::CheckBox:
        return QAccessible::CheckBox;
    case AccessibleRole::Label:
        return QAccessible::StaticText;
    case AccessibleRole::Group:
        return QAccessible::Grouping;
    case AccessibleRole::ProgressBar:
        return QAccessible::ProgressBar;
    case AccessibleRole::EditText:
        return QAccessible::EditableText;
    case AccessibleRole::Table:
        return QAccessible::Table;
    case AccessibleRole::ToolTip:
        return QAccessible::ToolTip;
    }
    return QAccessible::Client;
}

class WindowInterface;

// A cell or a header of a table; it exists only because somebody has asked for it.
class CellInterface final : public QAccessibleInterface, public QAccessibleTableCellInterface {
public:
    CellInterface(HWND hWnd, int row, int column) : m_hWnd(hWnd), m_row(row), m_column(column) {}

    // The row or column may be gone since.
    [[nodiscard]] AccessibleTable* shown() const {
        Accessible* teller = tellerOf(m_hWnd);
        AccessibleTable* found = teller == nullptr ? nullptr : teller->accessibleTable();
        const bool there =
            found != nullptr && m_column < found->columnCount() && m_row < found->rowCount();
        return there ? found : nullptr;
    }
    [[nodiscard]] bool isHeader() const { return m_row < 0; }

    bool isValid() const override { return shown() != nullptr; }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        QWidget* widget = widgetOf(m_hWnd);
        return widget == nullptr ? nullptr : QAccessible::queryAccessibleInterface(widget);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text what) const override {
        AccessibleTable* const found = shown();
        if (found == nullptr || (what != QAccessible::Name && what != QAccessible::Value))
            return {};
        return toQt(isHeader() ? found->headerText(m_column) : found->cellText(m_row, m_column));
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        AccessibleTable* const found = shown();
        if (found == nullptr) return {};
        const RECT place = found->cellRect(m_row, m_column);
        if (place.right <= place.left || place.bottom <= place.top) return {};
        POINT corner{place.left, place.top};
        ClientToScreen(m_hWnd, corner);
        return QRect(corner.x, corner.y, place.right - place.left, place.bottom - place.top);
    }
    QAccessible::Role role() const override {
        return isHeader() ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        AccessibleTable* const found = shown();
        if (found == nullptr) {
            state.invalid = true;
            return state;
        }
        if (rect().isEmpty()) state.offscreen = true;
        if (isHeader()) return state;
        state.selectable = state.focusable = true;
        state.selected = found->isRowSelected(m_row);
        const QWidget* widget = widgetOf(m_hWnd);
        state.focused = widget != nullptr && widget->hasFocus() && found->currentRow() == m_row;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }

    bool isSelected() const override { return state().selected; }
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_column; }
    int rowIndex() const override { return m_row; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

private:
    HWND m_hWnd;
    int m_row, m_column;
};

// What the desktop gets of a window. It asks the window's Accessible each time, so that it may
// come, change and go.
class WindowInterface final : public QAccessibleWidget,
                              public QAccessibleTableInterface,
                              public QAccessibleValueInterface {
public:
    WindowInterface(QWidget* widget, HWND hWnd) : QAccessibleWidget(widget), m_hWnd(hWnd) {}
    ~WindowInterface() override { forgetCells(); }

    QAccessible::Role role() const override {
        const Accessible* teller = tellerOf(m_hWnd);
        return teller == nullptr ? QAccessibleWidget::role() : qtRole(teller->accessibleRole());
    }
    QString text(QAccessible::Text what) const override {
        const Accessible* teller = tellerOf(m_hWnd);
        if (teller == nullptr) return QAccessibleWidget::text(what);
        switch (what) {
        case QAccessible::Name:
            return toQt(teller->accessibleName());
        case QAccessible::Description:
            return toQt(teller->accessibleDescription());
        case QAccessible::Value:
            return toQt(teller->accessibleValue());
        case QAccessible::Accelerator:
            return toQt(teller->accessibleAccelerator());
        default:
            return QAccessibleWidget::text(what);
        }
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const Accessible* teller = tellerOf(m_hWnd);
        if (teller == nullptr) return state;
        const AccessibleState told = teller->accessibleState();
        state.focusable = told.focusable;
        state.checkable = told.checkable;
        state.checked = told.checked;
        state.pressed = told.pressed;
        state.defaultButton = told.defaultButton;
        state.readOnly = told.readOnly;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TableInterface && table() != nullptr) {
            return static_cast<QAccessibleTableInterface*>(this);
        }
        const Accessible* teller = tellerOf(m_hWnd);
        if (type == QAccessible::ValueInterface && teller != nullptr &&
            teller->accessibleRole() == AccessibleRole::ProgressBar) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }
    QStringList actionNames() const override {
        QStringList names;
        if (const Accessible* teller = tellerOf(m_hWnd)) {
            const AccessibleRole told = teller->accessibleRole();
            if (told == AccessibleRole::Button) names << pressAction();
            if (told == AccessibleRole::CheckBox) names << toggleAction() << pressAction();
        }
        if (state().focusable) names << setFocusAction();
        return names;
    }
    void doAction(const QString& name) override {
        if (name == pressAction() || name == toggleAction()) {
            Accessible* teller = tellerOf(m_hWnd);
            if (teller != nullptr) guarded([&] { (void)teller->accessibleAction(); });
            return;
        }
        QAccessibleWidget::doAction(name);
    }

    // Cells come ahead of the windows inside: the header row, then row by row.
    int childCount() const override { return cellCount() + QAccessibleWidget::childCount(); }
    QAccessibleInterface* child(int index) const override {
        const int cells = cellCount();
        if (index < 0 || index >= cells) return QAccessibleWidget::child(index - cells);
        const int columns = table()->columnCount();
        return cell(index / columns - 1, index % columns);
    }
    int indexOfChild(const QAccessibleInterface* inside) const override {
        if (const auto* found = dynamic_cast<const CellInterface*>(inside)) {
            AccessibleTable* const shown = table();
            if (shown == nullptr) return -1;
            return (found->rowIndex() + 1) * shown->columnCount() + found->columnIndex();
        }
        const int index = QAccessibleWidget::indexOfChild(inside);
        return index < 0 ? index : index + cellCount();
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        if (AccessibleTable* const shown = table()) {
            POINT at{x, y};
            ScreenToClient(m_hWnd, at);
            const AccessibleTable::Cell found = shown->cellAt(at);
            if (found.column >= 0) return cell(found.row, found.column);
        }
        return QAccessibleWidget::childAt(x, y);
    }
    QAccessibleInterface* focusChild() const override {
        AccessibleTable* const shown = table();
        if (shown != nullptr && widget()->hasFocus() && shown->currentRow() >= 0 &&
            shown->columnCount() > 0) {
            return cell(shown->currentRow(), 0);
        }
        return QAccessibleWidget::focusChild();
    }

    // ---- QAccessibleTableInterface
    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int row, int column) const override {
        AccessibleTable* const shown = table();
        const bool there = shown != nullptr && row >= 0 && column >= 0 && row < shown->rowCount() &&
                           column < shown->columnCount();
        return there ? cell(row, column) : nullptr;
    }
    int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (const int row : selectedRows()) {
            for (int column = 0; column < columnCount(); ++column) cells << cell(row, column);
        }
        return cells;
    }
    QString columnDescription(int column) const override {
        AccessibleTable* const shown = table();
        const bool there = shown != nullptr && column >= 0 && column < shown->columnCount();
        return there ? toQt(shown->headerText(column)) : QString();
    }
    QString rowDescription(int) const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override { return static_cast<int>(selectedRows().size()); }
    int columnCount() const override { return table() == nullptr ? 0 : table()->columnCount(); }
    int rowCount() const override { return table() == nullptr ? 0 : table()->rowCount(); }
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override {
        QList<int> rows;
        AccessibleTable* const shown = table();
        for (int row = 0; row < rowCount(); ++row) {
            if (shown->isRowSelected(row)) rows << row;
        }
        return rows;
    }
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int row) const override {
        return row >= 0 && row < rowCount() && table()->isRowSelected(row);
    }
    bool selectRow(int row) override {
        bool done = false;
        if (row >= 0 && row < rowCount()) guarded([&] { done = table()->selectRow(row); });
        return done;
    }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override { forgetCells(); }

    // ---- QAccessibleValueInterface
    QVariant currentValue() const override { return range().value; }
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override { return range().maximum; }
    QVariant minimumValue() const override { return range().minimum; }
    QVariant minimumStepSize() const override { return 1; }

    [[nodiscard]] QAccessibleInterface* cell(int row, int column) const {
        const auto key = std::pair(row, column);
        const auto known = m_cells.find(key);
        if (known != m_cells.end()) return QAccessible::accessibleInterface(known->second);
        auto* made = new CellInterface(m_hWnd, row, column);  // the library's registry owns it
        m_cells[key] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

private:
    [[nodiscard]] AccessibleTable* table() const {
        Accessible* teller = tellerOf(m_hWnd);
        return teller == nullptr || teller->accessibleRole() != AccessibleRole::Table
                   ? nullptr
                   : teller->accessibleTable();
    }
    [[nodiscard]] int cellCount() const {
        AccessibleTable* const shown = table();
        if (shown == nullptr) return 0;
        const auto count =
            (static_cast<std::int64_t>(shown->rowCount()) + 1) * shown->columnCount();
        return static_cast<int>(std::min<std::int64_t>(count, 0x3FFFFFFF));
    }
    [[nodiscard]] AccessibleRange range() const {
        const Accessible* teller = tellerOf(m_hWnd);
        return teller == nullptr ? AccessibleRange() : teller->accessibleRange();
    }
    void forgetCells() const {
        for (const auto& [key, id] : m_cells) QAccessible::deleteAccessibleInterface(id);
        m_cells.clear();
    }

    HWND m_hWnd;
    mutable std::map<std::pair<int, int>, QAccessible::Id> m_cells;
};

QList<QAccessibleInterface*> CellInterface::columnHeaderCells() const {
    const auto* window = dynamic_cast<const WindowInterface*>(parent());
    if (window == nullptr || isHeader() || shown() == nullptr) return {};
    return {window->cell(-1, m_column)};
}

QAccessibleInterface* interfaceFor(const QString&, QObject* object) {
    const auto* target = dynamic_cast<const MessageTarget*>(object);
    const WindowRecord* record = target == nullptr ? nullptr : windowOf(target->handle());
    // The library's own widgets, such as a field, know to tell about themselves.
    if (record == nullptr || !record->keepsPicture) return nullptr;
    return new WindowInterface(record->widget, record->handle);  // the library owns it
}

WindowInterface* interfaceOf(HWND hWnd) {
    QWidget* widget = widgetOf(hWnd);
    if (widget == nullptr) return nullptr;
    return dynamic_cast<WindowInterface*>(QAccessible::queryAccessibleInterface(widget));
}

bool g_logs = false;  // for a test
std::string g_accessibleLog;

void logEvent(QAccessibleEvent& event) {
    const char* what = nullptr;
    switch (event.type()) {
    case QAccessible::Focus:
        what = "focus";
        break;
    case QAccessible::NameChanged:
        what = "name";
        break;
    case QAccessible::ValueChanged:
        what = "value";
        break;
    case QAccessible::StateChanged:
        what = "state";
        break;
    case QAccessible::Selection:
        what = "selection";
        break;
    case QAccessible::TableModelChanged:
        what = "table";
        break;
    default:
        return;
    }
    const QAccessibleInterface* part = event.accessibleInterface();
    g_accessibleLog += std::string(what) + " \"" +
                       (part == nullptr ? "" : toUtf8(toText(part->text(QAccessible::Name)))) +
                       "\"\n";
}

void tell(QAccessibleEvent& event) {
    if (g_logs) logEvent(event);
    QAccessible::updateAccessibility(&event);
}

}  // namespace

void enterAccessibility() {
    static const bool entered = [] {
        QAccessible::installFactory(interfaceFor);
        return true;
    }();
    (void)entered;
}

bool setAccessible(HWND hWnd, Accessible* accessible) {
    WindowRecord* const record = windowOf(hWnd);
    if (record == nullptr) return false;
    record->accessible = accessible;
    return true;
}

bool accessibleIsHeard() { return g_logs || QAccessible::isActive(); }

void tellAccessible(HWND hWnd, AccessibleChange change) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr || !accessibleIsHeard()) return;
    const Accessible* teller = tellerOf(hWnd);
    if (teller == nullptr) return;
    switch (change) {
    case AccessibleChange::Name: {
        QAccessibleEvent event(widget, QAccessible::NameChanged);
        tell(event);
        break;
    }
    case AccessibleChange::Value: {
        if (teller->accessibleRole() == AccessibleRole::ProgressBar) {
            QAccessibleValueChangeEvent event(widget, teller->accessibleRange().value);
            tell(event);
        } else {
            QAccessibleEvent event(widget, QAccessible::ValueChanged);
            tell(event);
        }
        break;
    }
    case AccessibleChange::State: {
        QAccessible::State changed;
        changed.checked = teller->accessibleState().checkable;
        changed.disabled = !changed.checked;
        QAccessibleStateChangeEvent event(widget, changed);
        tell(event);
        break;
    }
    case AccessibleChange::TableReset: {
        QAccessibleTableModelChangeEvent event(widget,
                                               QAccessibleTableModelChangeEvent::ModelReset);
        if (WindowInterface* told = interfaceOf(hWnd)) told->modelChange(&event);
        tell(event);
        break;
    }
    }
}

void tellAccessibleCell(HWND hWnd, int row, int column, AccessibleCellChange change) {
    if (!accessibleIsHeard()) return;
    const WindowInterface* window = interfaceOf(hWnd);
    if (window == nullptr) return;
    QAccessibleInterface* const cell = window->cellAt(row, column);
    if (cell == nullptr) return;
    switch (change) {
    case AccessibleCellChange::Current: {
        const bool focused = widgetOf(hWnd)->hasFocus();
        QAccessibleEvent event(cell, focused ? QAccessible::Focus : QAccessible::Selection);
        tell(event);
        break;
    }
    case AccessibleCellChange::Text: {
        QAccessibleEvent event(cell, QAccessible::NameChanged);
        tell(event);
        break;
    }
    case AccessibleCellChange::Selected: {
        QAccessible::State changed;
        changed.selected = true;
        QAccessibleStateChangeEvent event(cell, changed);
        tell(event);
        break;
    }
    }
}

// ---- For tests

namespace test {
namespace {

QAccessibleInterface* partOf(HWND hWnd, std::optional<std::pair<int, int>> cell) {
    WindowInterface* const window = interfaceOf(hWnd);
    if (window == nullptr && !cell) {  // a widget of the toolkit's own, which tells about itself
        QWidget* const widget = widgetOf(hWnd);
        return widget == nullptr ? nullptr : QAccessible::queryAccessibleInterface(widget);
    }
    if (window == nullptr || !cell) return window;
    if (cell->first < 0) {
        return cell->second < window->columnCount() ? window->cell(-1, cell->second) : nullptr;
    }
    return window->cellAt(cell->first, cell->second);
}

}  // namespace

std::string describeAccessible(HWND hWnd, std::optional<std::pair<int, int>> cell) {
    QAccessibleInterface* const part = partOf(hWnd, cell);
    if (part == nullptr || !part->isValid()) return "nothing";
    static const std::map<QAccessible::Role, const char*> kRoles{
        {QAccessible::Client, "client"},
        {QAccessible::Window, "window"},
        {QAccessible::Dialog, "dialog"},
        {QAccessible::PushButton, "button"},
        {QAccessible::CheckBox, "check box"},
        {QAccessible::StaticText, "label"},
        {QAccessible::Grouping, "group"},
        {QAccessible::ProgressBar, "progress bar"},
        {QAccessible::EditableText, "text"},
        {QAccessible::Table, "table"},
        {QAccessible::ToolTip, "tip"},
        {QAccessible::Cell, "cell"},
        {QAccessible::ColumnHeader, "column header"},
    };
    const auto role = kRoles.find(part->role());
    std::string line = role == kRoles.end() ? "other" : role->second;
    line += " \"" + toUtf8(toText(part->text(QAccessible::Name))) + '"';
    const auto add = [&](const char* name, QAccessible::Text what) {
        const std::string value = toUtf8(toText(part->text(what)));
        if (!value.empty()) line += std::string(" ") + name + " \"" + value + '"';
    };
    if (part->role() != QAccessible::Cell && part->role() != QAccessible::ColumnHeader) {
        add("value", QAccessible::Value);
    }
    add("keys", QAccessible::Accelerator);
    add("description", QAccessible::Description);
    const QAccessible::State state = part->state();
    const auto flag = [&](bool is, const char* name) {
        if (is) line += std::string(" ") + name;
    };
    flag(state.focusable, "focusable");
    flag(state.focused, "focused");
    flag(state.disabled, "disabled");
    flag(state.checkable, state.checked ? "checked" : "unchecked");
    flag(state.pressed, "pressed");
    flag(state.defaultButton, "default");
    flag(state.readOnly, "read-only");
    flag(state.selected, "selected");
    if (const QAccessibleValueInterface* value = part->valueInterface()) {
        line += ' ' + std::to_string(value->currentValue().toInt()) + " of " +
                std::to_string(value->minimumValue().toInt()) + " to " +
                std::to_string(value->maximumValue().toInt());
    }
    if (const QAccessibleTableInterface* table = part->tableInterface()) {
        line +=
            ' ' + std::to_string(table->rowCount()) + " x " + std::to_string(table->columnCount());
    }
    return line;
}

bool doAccessibleAction(HWND hWnd) {
    QAccessibleInterface* const window = interfaceOf(hWnd);
    QAccessibleActionInterface* const action =
        window == nullptr ? nullptr : window->actionInterface();
    if (action == nullptr || action->actionNames().isEmpty()) return false;
    action->doAction(action->actionNames().first());
    return true;
}

void listenAccessible(bool listens) {
    g_logs = listens;
    g_accessibleLog.clear();
}

std::string takeAccessibleLog() { return std::exchange(g_accessibleLog, {}); }

}  // namespace test
}  // namespace platform
