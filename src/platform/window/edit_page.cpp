// The field of several lines.
#include "platform/window/edit_internal.h"
#include "platform/window/toolkit_internal.h"

#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QTextDocument>
#include <QWheelEvent>

namespace platform {
namespace {

constexpr QChar kBlockEnd(0x2029);  // of the library, between two of its blocks

// Between two blocks stands CR LF, unless the format of the library's mark between them has this
// property: then a unit that was set alone, or nothing at all. The property goes with the mark
// through all edits.
constexpr int kOtherBreak = QTextFormat::UserProperty;
constexpr int kSeam = 0x10000;  // nothing: the line was too long for one block

// Units of a line. The library lays out whole blocks, at each key anew; a longer line is laid out
// in pieces of this length and shows as several lines.
constexpr int kLongestBlock = 4096;

// Whether a text has nothing but CR LF and lines of a usual length.
bool isPlain(TextView text) {
    std::size_t start = 0;  // of the line
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isLineBreak(text[i])) {
            if (i - start >= kLongestBlock) return false;
        } else if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            start = ++i + 1;
        } else {
            return false;
        }
    }
    return true;
}

// In place of the selection: seams in long lines, and lone breaks as they are. Whether there are
// seams.
bool insertWithMarks(QTextCursor& cursor, TextView text) {
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    std::size_t from = 0;  // what is not inserted yet
    std::size_t start = 0;
    bool seams = false;
    const auto insertUpTo = [&](std::size_t end) {
        cursor.insertText(toQt(text.substr(from, end - from)), QTextCharFormat());
        from = end;
    };
    const auto insertMark = [&](int what) {
        QTextCharFormat format;
        format.setProperty(kOtherBreak, what);
        cursor.insertBlock(QTextBlockFormat(), format);
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isLineBreak(text[i])) {
            if (i - start < kLongestBlock || QChar::isLowSurrogate(text[i])) continue;
            insertUpTo(i);
            insertMark(kSeam);
            seams = true;
            start = i;
        } else if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            start = ++i + 1;
        } else {
            insertUpTo(i);
            insertMark(text[i]);
            start = ++from;
        }
    }
    insertUpTo(text.size());
    cursor.endEditBlock();
    return seams;
}

class PageField final : public QPlainTextEdit, public EditField {
public:
    PageField(QWidget* parent, std::uint32_t style) : QPlainTextEdit(parent) {
        setFrameStyle(QFrame::NoFrame);
        setAcceptDrops(false);  // drops belong to the window around
        viewport()->setAcceptDrops(false);
        viewport()->setAutoFillBackground(false);  // paintEvent fills, in the colour just asked for
        viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
        viewport()->setMouseTracking(true);
        document()->setDocumentMargin(2);  // what the field of one line has
        const bool left = (style & (ES_CENTER | ES_RIGHT)) == 0;
        const bool wraps = !left || (style & (ES_AUTOHSCROLL | WS_HSCROLL)) == 0;
        setLineWrapMode(wraps ? WidgetWidth : NoWrap);
        setWordWrapMode(wraps ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::NoWrap);
        const auto bar = [&](std::uint32_t flag) {
            return (style & flag) != 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff;
        };
        setHorizontalScrollBarPolicy(bar(WS_HSCROLL));
        setVerticalScrollBarPolicy(bar(WS_VSCROLL));
        QTextOption option = document()->defaultTextOption();
        if ((style & ES_CENTER) != 0) m_side = Qt::AlignHCenter;
        if ((style & ES_RIGHT) != 0) m_side = Qt::AlignRight;
        option.setAlignment(m_side);
        document()->setDefaultTextOption(option);
        connect(this, &QPlainTextEdit::textChanged, this, [this] { noteChange(); });
    }
    ~PageField() override { widgetGoes(); }

    bool runNative(QEvent* event, bool viewport) override {
        // The widget's own end: nothing of it is left to work with afterwards.
        if (event->type() == QEvent::DeferredDelete) return QPlainTextEdit::event(event);
        bool handled = false;
        run([&] {
            handled =
                viewport ? QPlainTextEdit::viewportEvent(event) : QPlainTextEdit::event(event);
        });
        return handled;
    }
    // What is painted and clicked is the viewport; keys, the focus and the size come to the widget.
    std::optional<bool> routeSpecially(WindowRecord& record, QEvent* event,
                                       bool viewport) override {
        switch (event->type()) {
        case QEvent::Paint:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::Leave:
            if (!viewport) return runNative(event, false);
            return {};
        case QEvent::ContextMenu:
            return {};
        default:
            if (viewport) return runNative(event, true);
            return EditField::routeSpecially(record, event, false);
        }
    }
    QWidget* viewportWidget() override { return viewport(); }
    QSize viewportRoom() const override { return maximumViewportSize(); }

    bool severalLines() const override { return true; }
    bool hasSeams() const override { return m_seams; }
    Text text() const override;
    int length() const override;
    void setText(TextView text) override;
    Selection selection() const override {
        const QTextCursor cursor = textCursor();
        return {toUnits(cursor.anchor()), toUnits(cursor.position())};
    }
    void select(const Selection& wanted) override {
        QTextCursor cursor = textCursor();
        cursor.setPosition(toDocument(wanted.anchor));
        cursor.setPosition(toDocument(wanted.caret), QTextCursor::KeepAnchor);
        setTextCursor(cursor);
    }
    void insert(const QString& text) override;
    void removeSelection() override {
        QTextCursor cursor = textCursor();
        cursor.removeSelectedText();
        placeCaret(cursor);
    }
    void removeWordBefore() override {
        QTextCursor cursor = textCursor();
        if (!cursor.hasSelection()) {
            cursor.movePosition(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);
        }
        cursor.removeSelectedText();
        placeCaret(cursor);
    }
    void scrollToCaret() override { ensureCursorVisible(); }
    void copy() const override { const_cast<PageField*>(this)->QPlainTextEdit::copy(); }
    void undo() override { QPlainTextEdit::undo(); }
    void redo() override { QPlainTextEdit::redo(); }
    bool canUndo() const override { return document()->isUndoAvailable(); }
    bool canRedo() const override { return document()->isRedoAvailable(); }
    void forgetUndo() override { document()->clearUndoRedoStacks(); }

    bool isReadOnly() const override { return QPlainTextEdit::isReadOnly(); }
    void setReadOnly(bool readOnly) override {
        QPlainTextEdit::setReadOnly(readOnly);
        // The library takes the caret away with it.
        if (readOnly) {
            setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        }
    }
    bool isPassword() const override { return false; }
    void setPasswordChar(char16_t) override {}

    bool readsFromRight() const override {
        return textCursor().block().textDirection() == Qt::RightToLeft;
    }
    int lineOf(int position) const override;
    int startOfLine(int line) const override;
    int positionAt(QPoint point) const override {
        return toUnits(cursorForPosition(point).position());
    }
    void turnWheel(int delta) override {
        constexpr int kLines = 3;
        QScrollBar& bar = *verticalScrollBar();
        bar.setValue(bar.value() - delta * kLines / 120);
    }
    void setColors(const FieldColors& colors) override {
        if (colors == m_colors) return;
        m_colors = colors;
        paintWith(*this, colors);
    }
    QRect caretRect() const override { return cursorRect(); }

protected:
    bool event(QEvent* event) override { return routeEvent(*this, event, false); }
    bool viewportEvent(QEvent* event) override { return routeEvent(*this, event, true); }
    void paintEvent(QPaintEvent* event) override {
        QPainter(viewport()).fillRect(event->rect(), palette().brush(QPalette::Base));
        QPlainTextEdit::paintEvent(event);
    }
    void changeEvent(QEvent* event) override {
        QPlainTextEdit::changeEvent(event);
        if (event->type() != QEvent::LayoutDirectionChange) return;
        QTextOption option = document()->defaultTextOption();
        option.setTextDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LayoutDirectionAuto);
        // A page does not change its sides by itself. One that never wraps has no right side.
        if (lineWrapMode() == WidgetWidth) {
            option.setAlignment(QStyle::visualAlignment(layoutDirection(), m_side));
        }
        document()->setDefaultTextOption(option);
    }
    // By the library's own way a no-break space would come out as a blank.
    QMimeData* createMimeDataFromSelection() const override {
        auto* const mime = new QMimeData;
        mime->setText(selectedText());
        return mime;
    }
    void insertFromMimeData(const QMimeData* mime) override {
        const QString text = fitting(*this, mime->text());
        if (!text.isEmpty()) insert(text);
    }

private:
    static int markBefore(const QTextBlock& block) {
        return block.charFormat().intProperty(kOtherBreak);
    }
    static int breakLength(const QTextBlock& block) {
        const int mark = markBefore(block);
        return mark == 0 ? 2 : mark == kSeam ? 0 : 1;
    }

    // The field's own caret takes over, with the column that it goes up and down in.
    void placeCaret(const QTextCursor& cursor) {
        setTextCursor(cursor);
        ensureCursorVisible();
    }
    QString selectedText() const;  // lines end with LF, as other programs have it
    int toUnits(int position) const;
    int toDocument(int units) const;
    void layOut(const QTextBlock& block) const {
        static_cast<QPlainTextDocumentLayout*>(document()->documentLayout())
            ->ensureBlockLayout(block);
    }

    FieldColors m_colors{-1, -1, -1, -1};
    Qt::Alignment m_side = Qt::AlignLeft;  // when read from the left
    bool m_marks = false;                  // there may be other breaks than CR LF,
    bool m_seams = false;                  // and among them seams
};

// ---- Text

Text PageField::text() const {
    const QString raw = document()->toRawText();
    Text text;
    text.reserve(static_cast<std::size_t>(raw.size() + blockCount()));
    QTextBlock block = document()->begin();
    for (const QChar unit : raw) {
        if (unit != kBlockEnd) {
            text += unit.unicode();
            continue;
        }
        if (m_marks) block = block.next();
        const int mark = m_marks ? markBefore(block) : 0;
        if (mark == 0) {
            text += u"\r\n";
        } else if (mark != kSeam) {
            text += static_cast<char16_t>(mark);
        }
    }
    return text;
}

int PageField::length() const { return toUnits(document()->characterCount() - 1); }

QString PageField::selectedText() const {
    QString text = textCursor().selectedText();
    if (m_marks) {
        const Selection now = selection();
        text = toQt(TextView(this->text())
                        .substr(static_cast<std::size_t>(now.start()),
                                static_cast<std::size_t>(now.length())));
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        text.replace(u'\r', u'\n');
    }
    text.replace(kBlockEnd, QChar(u'\n'));
    return text;
}

void PageField::setText(TextView text) {
    m_marks = !isPlain(text);
    m_seams = false;
    setPlainText(m_marks ? QString() : toQt(text));
    if (!m_marks) return;
    setUndoRedoEnabled(false);
    QTextCursor cursor = textCursor();
    m_seams = insertWithMarks(cursor, text);
    setUndoRedoEnabled(true);
    moveCursor(QTextCursor::Start);
}

void PageField::insert(const QString& text) {
    QTextCursor cursor = textCursor();
    const TextView units(reinterpret_cast<const char16_t*>(text.utf16()),
                         static_cast<std::size_t>(text.size()));
    if (isPlain(units)) {
        cursor.insertText(text, QTextCharFormat());  // a break from here is CR LF
    } else {
        m_marks = true;
        if (insertWithMarks(cursor, units)) m_seams = true;
    }
    placeCaret(cursor);
}

int PageField::toUnits(int position) const {
    const QTextBlock at = document()->findBlock(position);
    if (!at.isValid()) return position;
    if (!m_marks) return position + at.blockNumber();
    QTextBlock block = at;
    int units = position - at.blockNumber();
    for (int ahead = at.blockNumber(); ahead > 0; --ahead, block = block.previous()) {
        units += breakLength(block);
    }
    return units;
}

int PageField::toDocument(int units) const {
    const auto inside = [](const QTextBlock& block, int offset) {
        return block.position() + std::clamp(offset, 0, block.length() - 1);
    };
    if (m_marks) {
        for (QTextBlock block = document()->begin();; block = block.next()) {
            const QTextBlock next = block.next();
            const int whole = block.length() - 1 + (next.isValid() ? breakLength(next) : 0);
            if (units < whole || !next.isValid()) return inside(block, units);
            units -= whole;
        }
    }
    // Each block's place in units is its own position and the breaks ahead of it: the last one that
    // starts no later.
    int low = 0, high = blockCount() - 1;
    while (low < high) {
        const int middle = low + (high - low + 1) / 2;
        if (document()->findBlockByNumber(middle).position() + middle <= units) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    const QTextBlock block = document()->findBlockByNumber(low);
    return inside(block, units - low - block.position());
}

// ---- Lines, as shown

int PageField::lineOf(int position) const {
    const int there = toDocument(position);
    const QTextBlock block = document()->findBlock(there);
    // Blocks are laid out when they come into view: until then each counts as one line.
    if (lineWrapMode() != NoWrap) {
        for (QTextBlock above = document()->begin(); above != block; above = above.next()) {
            layOut(above);
        }
    }
    layOut(block);
    const QTextLine line = block.layout()->lineForTextPosition(there - block.position());
    return block.firstLineNumber() + (line.isValid() ? line.lineNumber() : 0);
}

int PageField::startOfLine(int line) const {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        layOut(block);
        const int inside = line - block.firstLineNumber();
        if (inside >= block.layout()->lineCount()) continue;
        return toUnits(block.position() + block.layout()->lineAt(inside).textStart());
    }
    return -1;
}

}  // namespace

EditField* makePageField(QWidget* parent, std::uint32_t style, QWidget*& widget) {
    auto* const field = new PageField(parent, style);
    widget = field;
    return field;
}

}  // namespace platform
