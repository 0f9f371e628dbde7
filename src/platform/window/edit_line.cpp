// The field of one line.
#include "platform/window/edit_internal.h"
#include "platform/window/toolkit_internal.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleOption>

namespace platform {
namespace {

class LineField;

// A plain area without the desktop's own frame, and any unit in place of a password's.
class LineStyle final : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_PanelLineEdit) {
            painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
        } else {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }
};

LineStyle* lineStyle() {
    static QPointer<LineStyle> style;  // goes with the application
    if (style.isNull()) {
        style = new LineStyle;
        style->setParent(qApp);
    }
    return style;
}

class LineField final : public QLineEdit, public EditField {
public:
    LineField(QWidget* parent, std::uint32_t style) : QLineEdit(parent) {
        setStyle(lineStyle());
        setFrame(false);
        setMaxLength(kNoTextLimit);  // setting it again would cut, and forget what can be undone
        setAcceptDrops(false);       // drops belong to the window around
        setDragEnabled(false);
        Qt::Alignment side = Qt::AlignLeft;
        if ((style & ES_CENTER) != 0) side = Qt::AlignHCenter;
        if ((style & ES_RIGHT) != 0) side = Qt::AlignRight;
        setAlignment(side | Qt::AlignVCenter);
        connect(this, &QLineEdit::textChanged, this, [this] { noteChange(); });
    }
    ~LineField() override { widgetGoes(); }

    bool runNative(QEvent* event, bool) override {
        // The widget's own end: nothing of it is left to work with afterwards.
        if (event->type() == QEvent::DeferredDelete) return QLineEdit::event(event);
        bool handled = false;
        run([&] {
            if (event->type() == QEvent::FocusOut) {
                // For most reasons the library's field would let go of its selection.
                QFocusEvent plain(QEvent::FocusOut, reasonOf(*event));
                handled = QLineEdit::event(&plain);
            } else {
                handled = QLineEdit::event(event);
            }
        });
        return handled;
    }

    bool severalLines() const override { return false; }
    Text text() const override { return toText(QLineEdit::text()); }
    int length() const override { return static_cast<int>(QLineEdit::text().size()); }
    void setText(TextView text) override {
        QLineEdit::setText(toQt(text));
        setCursorPosition(0);
        noteChange();  // also for the same text
    }

    Selection selection() const override {
        const int caret = cursorPosition();
        if (!hasSelectedText()) return {caret, caret};
        const int start = selectionStart(), end = selectionEnd();
        return caret == start ? Selection{end, start} : Selection{start, end};
    }
    void select(const Selection& wanted) override {
        deselect();
        if (wanted.length() == 0) {
            setCursorPosition(wanted.caret);
        } else {
            setSelection(wanted.anchor, wanted.caret - wanted.anchor);
        }
    }

    void insert(const QString& text) override {
        if (text.isEmpty()) {
            removeSelection();
        } else {
            QLineEdit::insert(text);
        }
    }
    void removeSelection() override {
        if (hasSelectedText()) del();
    }
    void removeWordBefore() override {
        if (!hasSelectedText()) cursorWordBackward(true);
        removeSelection();
    }
    void scrollToCaret() override {}  // it always is in view
    void copy() const override { QLineEdit::copy(); }
    void undo() override { QLineEdit::undo(); }
    void redo() override { QLineEdit::redo(); }
    // Undoing in a password the library would clear all of it.
    bool canUndo() const override { return isUndoAvailable() && !isPassword(); }
    bool canRedo() const override { return isRedoAvailable() && !isPassword(); }
    void forgetUndo() override {
        const int caret = cursorPosition();
        QLineEdit::setText(QLineEdit::text());
        setCursorPosition(caret);
    }

    bool isReadOnly() const override { return QLineEdit::isReadOnly(); }
    void setReadOnly(bool readOnly) override { QLineEdit::setReadOnly(readOnly); }
    bool isPassword() const override { return m_passwordChar != 0; }
    char16_t passwordChar() const { return m_passwordChar; }
    void setPasswordChar(char16_t unit) override {
        if (unit == m_passwordChar) return;
        m_passwordChar = unit;
        setEchoMode(unit != 0 ? Password : Normal);
        QEvent anew(QEvent::StyleChange);  // the library asks for the unit
        QLineEdit::event(&anew);
    }

    bool readsFromRight() const override { return isRightToLeft(); }
    int lineOf(int) const override { return 0; }
    int startOfLine(int line) const override { return line == 0 ? 0 : -1; }
    int positionAt(QPoint point) const override {
        return const_cast<LineField*>(this)->cursorPositionAt(point);
    }
    void turnWheel(int) override {}
    void setColors(const FieldColors& colors) override {
        if (colors == m_colors) return;
        m_colors = colors;
        paintWith(*this, colors);
    }
    QRect caretRect() const override { return cursorRect(); }

protected:
    bool event(QEvent* event) override { return routeEvent(*this, event, false); }
    void changeEvent(QEvent* event) override {
        QLineEdit::changeEvent(event);
        if (event->type() != QEvent::LayoutDirectionChange || !isRightToLeft()) return;
        // By itself the library's field goes by its text alone; this key is its only way to be
        // told.
        QKeyEvent fromRight(QEvent::KeyPress, Qt::Key_Direction_R, Qt::NoModifier);
        keyPressEvent(&fromRight);
    }

private:
    static Qt::FocusReason reasonOf(const QEvent& event) {
        const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
        return reason == Qt::PopupFocusReason ? reason : Qt::ActiveWindowFocusReason;
    }

    FieldColors m_colors{-1, -1, -1, -1};
    char16_t m_passwordChar = 0;
};

int LineStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    if (hint == SH_LineEdit_PasswordCharacter) {
        const auto* field = dynamic_cast<const LineField*>(widget);
        if (field != nullptr && field->passwordChar() != 0) return field->passwordChar();
    }
    return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace

EditField* makeLineField(QWidget* parent, std::uint32_t style, QWidget*& widget) {
    auto* const field = new LineField(parent, style);
    widget = field;
    return field;
}

}  // namespace platform
