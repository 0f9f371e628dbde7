// platform/window/edit_internal.h: the library's two fields as edit windows see them.
#pragma once
#include "platform/window/edit.h"
#include "platform/window/window_internal.h"

#include <QRect>
#include <QString>
#include <algorithm>

class QInputMethodEvent;
class QPoint;

namespace platform {

struct FieldColors {
    COLORREF text = 0, area = 0, selectedText = 0, selectedArea = 0;
    friend bool operator==(const FieldColors&, const FieldColors&) = default;
};

// What a field of one or of several lines offers. Positions count as edit.h tells. Operations that
// work on the library's field go through run.
class EditField : public MessageTarget {
public:
    struct Selection {
        int anchor = 0, caret = 0;
        [[nodiscard]] int start() const { return std::min(anchor, caret); }
        [[nodiscard]] int end() const { return std::max(anchor, caret); }
        [[nodiscard]] int length() const { return end() - start(); }
        friend bool operator==(const Selection&, const Selection&) = default;
    };

    [[nodiscard]] virtual bool severalLines() const = 0;
    // Some positions of the library are one for everybody else; see edit_page.cpp.
    [[nodiscard]] virtual bool hasSeams() const { return false; }
    [[nodiscard]] virtual Text text() const = 0;
    [[nodiscard]] virtual int length() const = 0;
    virtual void setText(TextView text) = 0;  // the caret goes to 0, and nothing can be undone
    [[nodiscard]] virtual Selection selection() const = 0;
    virtual void select(const Selection& wanted) = 0;  // positions inside the text
    virtual void insert(const QString& text) = 0;      // in place of the selection
    virtual void removeSelection() = 0;
    virtual void removeWordBefore() = 0;
    virtual void scrollToCaret() = 0;
    virtual void copy() const = 0;
    virtual void undo() = 0;
    virtual void redo() = 0;
    [[nodiscard]] virtual bool canUndo() const = 0;
    [[nodiscard]] virtual bool canRedo() const = 0;
    virtual void forgetUndo() = 0;
    [[nodiscard]] virtual bool isReadOnly() const = 0;
    virtual void setReadOnly(bool readOnly) = 0;
    [[nodiscard]] virtual bool isPassword() const = 0;
    virtual void setPasswordChar(char16_t unit) = 0;        // 0: the text shows as it is
    [[nodiscard]] virtual bool readsFromRight() const = 0;  // where the caret is
    [[nodiscard]] virtual int lineOf(int position) const = 0;
    [[nodiscard]] virtual int startOfLine(int line) const = 0;  // -1 behind the last
    [[nodiscard]] virtual int positionAt(QPoint point) const = 0;
    virtual void turnWheel(int delta) = 0;  // without an event; 120 a notch
    virtual void setColors(const FieldColors& colors) = 0;
    [[nodiscard]] virtual QRect caretRect() const = 0;  // in the window

    // Calls f, which works on the library's field, and tells the parent afterwards when the text
    // has changed: the parent may do anything then, also end the window.
    template <class F> void run(F&& f) {
        ++m_running;
        f();
        if (--m_running == 0) tellChange();
    }
    void keepChangeQuiet() { m_changed = false; }

    int limit = kNoTextLimit;
    bool hidesSelection = true;
    char16_t firstHalf = 0;  // of a pair of units that is being typed

    // ---- Input method
    std::optional<bool> routeSpecially(WindowRecord& record, QEvent* event, bool viewport) override;
    Text composed, result;   // of the message on its way
    void takeComposition();  // does what the field does by itself with that message
    // Gives up what is being composed and tells of the end: ahead of whatever makes the input
    // method lose the field. A composition whose message is on its way ends by itself.
    void endComposition();

protected:
    void noteChange();  // the library says that the text is another one

private:
    void tellChange();
    bool routeComposition(WindowRecord& record, const QInputMethodEvent& event);
    void showComposition(const QString& preedit, const QString& entered);
    void selectReplaced(const QInputMethodEvent& event);

    const QInputMethodEvent* m_composition = nullptr;  // the one on its way
    bool m_compositionTaken = false;
    bool m_changed = false;
    bool m_composing = false;
    int m_running = 0;
};

// What the library's field of several lines takes for the end of a line.
[[nodiscard]] constexpr bool isLineBreak(char16_t unit) {
    return unit == u'\r' || unit == u'\n' || unit == 0x2029 || unit == 0xFDD0 || unit == 0xFDD1;
}
// Makes the widget, without entering it as a window.
[[nodiscard]] EditField* makeLineField(QWidget* parent, std::uint32_t style, QWidget*& widget);
[[nodiscard]] EditField* makePageField(QWidget* parent, std::uint32_t style, QWidget*& widget);

// What of a text may go in place of the selection: with line breaks as the field has them, and cut
// where the limit is reached, though never inside of a pair of units.
[[nodiscard]] QString fitting(const EditField& field, QString text);
// The handling behind all procedures.
bool editProcedure(WindowRecord& record, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam,
                   LRESULT& result);
// The palette of a field: the same colours whether it is active, enabled or not.
void paintWith(QWidget& widget, const FieldColors& colors);

}  // namespace platform
