// The field of several lines.
#include "platform/window/edit_internal.h"
#include "platform/window/toolkit_internal.h"

#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QWheelEvent>

namespace platform {
namespace {

constexpr QChar kBlockEnd(0x2029);  // of the library, between two of its blocks
constexpr int kSingleBreak = QTextFormat::UserProperty;

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
        Qt::Alignment side = Qt::AlignLeft;
        if ((style & ES_CENTER) != 0) side = Qt::AlignHCenter;
        if ((style & ES_RIGHT) != 0) side = Qt::AlignRight;
        option.setAlignment(side);
        document()->setDefaultTextOption(option);
        connect(this, &QPlainTextEdit::textChanged, this, [this] { noteChange(); });
    }
    ~PageField() override { widgetGoes(); }

    bool runNative(QEvent* event, bool viewport) override {
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

    bool severalLines() const override { return true; }
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
    void insert(const QString& text) override {
        textCursor().insertText(text, QTextCharFormat());  // a break from here is CR LF
        ensureCursorVisible();
    }
    void removeSelection() override {
        textCursor().removeSelectedText();
        ensureCursorVisible();
    }
    void removeWordBefore() override {
        QTextCursor cursor = textCursor();
        if (!cursor.hasSelection()) {
            cursor.movePosition(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);
        }
        cursor.removeSelectedText();
        ensureCursorVisible();
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
        document()->setDefaultTextOption(option);
    }
    // By the library's own way a no-break space would come out as a blank.
    QMimeData* createMimeDataFromSelection() const override {
        QString text = textCursor().selectedText();
        text.replace(kBlockEnd, QChar(u'\n'));
        auto* const mime = new QMimeData;
        mime->setText(text);
        return mime;
    }
    void insertFromMimeData(const QMimeData* mime) override {
        const QString text = fitting(*this, mime->text());
        if (!text.isEmpty()) insert(text);
    }

private:
    // A line break that is a single unit has the unit in the format of the library's own mark,
    // which goes with the break through all edits. 0: the break is CR LF.
    static char16_t singleBreakBefore(const QTextBlock& block) {
        return static_cast<char16_t>(block.charFormat().intProperty(kSingleBreak));
    }
    static int breakLength(const QTextBlock& block) {
        return singleBreakBefore(block) != 0 ? 1 : 2;
    }

    void rememberSingleBreaks(TextView text);
    int toUnits(int position) const;
    int toDocument(int units) const;
    void layOut(const QTextBlock& block) const {
        static_cast<QPlainTextDocumentLayout*>(document()->documentLayout())
            ->ensureBlockLayout(block);
    }

    FieldColors m_colors{-1, -1, -1, -1};
    bool m_singleBreaks = false;  // some line break may be a single unit
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
        if (m_singleBreaks) block = block.next();
        const char16_t single = m_singleBreaks ? singleBreakBefore(block) : u'\0';
        if (single != 0) {
            text += single;
        } else {
            text += u"\r\n";
        }
    }
    return text;
}

int PageField::length() const { return toUnits(document()->characterCount() - 1); }

void PageField::setText(TextView text) {
    setPlainText(toQt(text));
    rememberSingleBreaks(text);
}

void PageField::rememberSingleBreaks(TextView text) {
    m_singleBreaks = false;
    QTextCursor cursor(document());
    int passed = 0;  // breaks since the block of the cursor
    const auto mark = [&](char16_t unit) {
        if (!m_singleBreaks) {
            m_singleBreaks = true;
            setUndoRedoEnabled(false);  // this is nothing to be undone
            cursor.beginEditBlock();
        }
        for (; passed > 0; --passed) cursor.movePosition(QTextCursor::NextBlock);
        QTextCharFormat format;
        format.setProperty(kSingleBreak, static_cast<int>(unit));
        cursor.setBlockCharFormat(format);
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isLineBreak(text[i])) continue;
        ++passed;
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            ++i;
        } else {
            mark(text[i]);
        }
    }
    if (!m_singleBreaks) return;
    cursor.endEditBlock();
    setUndoRedoEnabled(true);
}

int PageField::toUnits(int position) const {
    const QTextBlock at = document()->findBlock(position);
    if (!at.isValid()) return position;
    if (!m_singleBreaks) return position + at.blockNumber();
    int units = position - at.blockNumber();
    for (QTextBlock block = at; block.blockNumber() > 0; block = block.previous()) {
        units += breakLength(block);
    }
    return units;
}

int PageField::toDocument(int units) const {
    const auto inside = [](const QTextBlock& block, int offset) {
        return block.position() + std::clamp(offset, 0, block.length() - 1);
    };
    if (m_singleBreaks) {
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
