#include "platform/window/edit.h"

#include "platform/base/casemap.h"
#include "platform/window/edit_internal.h"
#include "platform/window/input.h"
#include "platform/window/surface_internal.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/text_face.h"
#include "platform/window/toolkit_internal.h"

#include <QClipboard>
#include <QFont>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPalette>
#include <QWidget>

namespace platform {

// ---- Making one

HWND CreateWindowExW(std::uint32_t extendedStyle, TextView className, TextView title,
                     std::uint32_t style, int x, int y, int cx, int cy, HWND parent, HMENU,
                     std::uint32_t, const void*) {
    QWidget* const around = clientWidgetOf(parent);
    if (around == nullptr || lowerCase(className) != u"edit" || hooks().failEdits) return 0;
    QWidget* made = nullptr;
    EditField* const field = (style & ES_MULTILINE) != 0 ? makePageField(around, style, made)
                                                         : makeLineField(around, style, made);
    std::unique_ptr<QWidget> widget(made);
    // Known to assistive tools as something that takes the focus; keys and clicks give it by
    // messages alone.
    widget->setFocusPolicy(Qt::TabFocus);
    widget->setLayoutDirection((extendedStyle & WS_EX_LAYOUTRTL) != 0 ? Qt::RightToLeft
                                                                      : Qt::LeftToRight);
    widget->setFont(toolkitFontOf(0));
    field->setReadOnly((style & ES_READONLY) != 0);
    field->hidesSelection = (style & ES_NOHIDESEL) == 0;

    WindowOptions options;
    options.parent = parent;
    options.position = {x, y};
    options.size = {cx, cy};
    options.style = style;
    options.extendedStyle = extendedStyle;
    const HWND hWnd = adoptWidget(widget.get(), *field, options);
    if (hWnd == 0) return 0;
    (void)widget.release();  // the window owns it
    windowOf(hWnd)->classProcedure = editProcedure;
    setWindowCursor(hWnd, IDC_IBEAM);
    if (!title.empty()) field->setText(title);
    field->keepChangeQuiet();
    if ((style & WS_VISIBLE) != 0) ShowWindow(hWnd, SW_SHOW);
    return IsWindow(hWnd) ? hWnd : 0;
}

void setEditName(HWND hWnd, TextView name) {
    WindowRecord* const record = windowOf(hWnd);
    if (record == nullptr || record->classProcedure != editProcedure) return;
    record->widget->setAccessibleName(toQt(name));
}

// ---- What goes in

namespace {

bool isBreak(QChar unit) { return isLineBreak(unit.unicode()); }

QString withCrLf(const QString& text) {
    QString made;
    made.reserve(text.size() + text.size() / 16);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isBreak(text[i])) {
            made += text[i];
            continue;
        }
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        made += QStringLiteral("\r\n");
    }
    return made;
}

QString withoutBreaks(const QString& text) {
    QString made;
    made.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isBreak(text[i])) {
            made += text[i];
        } else if (i == 0 || !isBreak(text[i - 1])) {
            made += u' ';
        }
    }
    return made;
}

}  // namespace

QString fitting(const EditField& field, QString text) {
    if (std::any_of(text.cbegin(), text.cend(), isBreak)) {
        text = field.severalLines() ? withCrLf(text) : withoutBreaks(text);
    }
    if (field.limit == kNoTextLimit || text.isEmpty()) return text;
    qsizetype room = field.limit - field.length() + field.selection().length();
    if (text.size() <= room) return text;
    if (room > 0 && (text[room - 1].isHighSurrogate() || text[room - 1] == u'\r')) --room;
    text.truncate(std::max<qsizetype>(room, 0));
    return text;
}

void EditField::noteChange() {
    m_changed = true;
    if (m_running > 0) return;
    // Assistive tools change the text from outside of all messages.
    QMetaObject::invokeMethod(
        widgetOf(handle()), [this] { guarded([this] { tellChange(); }); }, Qt::QueuedConnection);
}

void EditField::tellChange() {
    if (!std::exchange(m_changed, false)) return;
    const HWND hWnd = handle();
    SendMessageW(GetParent(hWnd), WM_COMMAND, makeLParam(0, EN_CHANGE), hWnd);
}

// ---- The procedure

namespace {

using Result = std::optional<LRESULT>;

// Marks the event behind the message as handled, so that the library does not get it.
void keepFromLibrary(WindowRecord& record, std::uint32_t uMsg) {
    if (StashedEvent* stashed = stashedEvent(record, uMsg)) stashed->ran = stashed->result = true;
}

void enter(EditField& field, const QString& text) {
    if (field.isReadOnly()) return;
    const QString fits = fitting(field, text);
    // Nothing fits: what is selected stays as well.
    if (!fits.isEmpty()) field.run([&] { field.insert(fits); });
}

void removeSelection(EditField& field) {
    if (field.isReadOnly() || field.selection().length() == 0) return;
    field.run([&] { field.removeSelection(); });
}

void selectAll(EditField& field) {
    field.run([&] { field.select({0, field.length()}); });
}

bool canCopy(const EditField& field) {
    return !field.isPassword() && field.selection().length() > 0;
}

void sendKey(EditField& field, int key, Qt::KeyboardModifiers modifiers) {
    field.run([&] {
        const auto press = [&] {
            QKeyEvent event(QEvent::KeyPress, key, modifiers);
            field.runNative(&event, false);
        };
        if (!field.hasSeams()) {
            press();
            return;
        }
        const int length = field.length();
        const EditField::Selection selection = field.selection();
        press();
        // A seam is a step for the library, but none for the person.
        if (field.length() == length && field.selection() == selection) press();
    });
}

// Keys that do something without typing. The rest waits for its WM_CHAR.
void pressKey(WindowRecord& record, EditField& field, std::int32_t code) {
    const auto modifiers = Qt::KeyboardModifiers::fromInt(keyModifiers());
    const bool shift = modifiers.testFlag(Qt::ShiftModifier);
    const bool control = modifiers.testFlag(Qt::ControlModifier);
    if (code == VK_INSERT) {
        if (control != shift) SendMessageW(record.handle, control ? WM_COPY : WM_PASTE, 0, 0);
    } else if (code == VK_DELETE && shift && !control) {
        SendMessageW(record.handle, WM_CUT, 0, 0);
    } else if (code == VK_DELETE) {
        if (!field.isReadOnly()) sendKey(field, Qt::Key_Delete, modifiers);
    } else if ((code == VK_UP || code == VK_DOWN) && !field.severalLines()) {
        sendKey(field, code == VK_UP ? Qt::Key_Left : Qt::Key_Right, modifiers);
    } else if ((code == VK_LEFT || code == VK_RIGHT) && modifiers == Qt::NoModifier &&
               field.selection().length() > 0) {
        // To that end of the selection; the library's page would go one further, and its line to
        // the other end where text reads from the right.
        const bool toStart = (code == VK_LEFT) != field.readsFromRight();
        const int at = toStart ? field.selection().start() : field.selection().end();
        field.run([&] { field.select({at, at}); });
    } else if (code >= VK_PRIOR && code <= VK_DOWN) {
        sendKey(field, qtKeyOf(code), modifiers);
    }
}

void typeCharacter(WindowRecord& record, EditField& field, char32_t character) {
    const HWND hWnd = record.handle;
    const bool shift = Qt::KeyboardModifiers::fromInt(keyModifiers()).testFlag(Qt::ShiftModifier);
    switch (character) {
    case 1:
        selectAll(field);
        break;
    case 3:
        SendMessageW(hWnd, WM_COPY, 0, 0);
        break;
    case 22:
        SendMessageW(hWnd, WM_PASTE, 0, 0);
        break;
    case 24:
        SendMessageW(hWnd, WM_CUT, 0, 0);
        break;
    case 25:
    case 26:
        if (character == 26 && !shift) {
            SendMessageW(hWnd, WM_UNDO, 0, 0);
        } else if (!field.isReadOnly() && field.canRedo()) {
            field.run([&] { field.redo(); });
        }
        break;
    case VK_BACK:
        if (!field.isReadOnly()) sendKey(field, Qt::Key_Backspace, Qt::NoModifier);
        break;
    case 127:  // Backspace with Control
        if (!field.isReadOnly()) field.run([&] { field.removeWordBefore(); });
        break;
    case VK_TAB:
    case 10:
    case VK_RETURN:
        if (field.severalLines()) enter(field, character == VK_TAB ? QChar(9) : QChar(13));
        break;
    default:
        if (character >= 32) enter(field, QString::fromUcs4(&character, 1));
        break;
    }
}

// The two halves of a pair come one after the other, and go in together.
void typeUnit(WindowRecord& record, EditField& field, char16_t unit) {
    const char16_t first = std::exchange(field.firstHalf, u'\0');
    if (QChar::isHighSurrogate(unit)) {
        field.firstHalf = unit;
    } else if (!QChar::isLowSurrogate(unit)) {
        typeCharacter(record, field, unit);
    } else if (first != 0) {
        typeCharacter(record, field, QChar::surrogateToUcs4(first, unit));
    }
}

Result keyMessage(WindowRecord& record, EditField& field, std::uint32_t uMsg, WPARAM wParam) {
    switch (uMsg) {
    case WM_KEYDOWN:
        keepFromLibrary(record, uMsg);
        pressKey(record, field, loWord(wParam));
        return 0;
    case WM_CHAR:
        keepFromLibrary(record, uMsg);
        typeUnit(record, field, static_cast<char16_t>(loWord(wParam)));
        return 0;
    case WM_UNICHAR:
        if (wParam == UNICODE_NOCHAR) return 1;
        if (wParam > 0 && wParam <= 0x10FFFF && !QChar::isSurrogate(static_cast<uint>(wParam))) {
            typeCharacter(record, field, static_cast<char32_t>(wParam));
        }
        return 0;
    case WM_IME_COMPOSITION:
        field.takeComposition();
        return 0;
    default:
        return {};
    }
}

Result clipboardMessage(EditField& field, std::uint32_t uMsg) {
    switch (uMsg) {
    case WM_COPY:
        if (canCopy(field)) field.copy();
        return 0;
    case WM_CUT:
        if (canCopy(field) && !field.isReadOnly()) {
            field.copy();
            removeSelection(field);
        }
        return 0;
    case WM_PASTE:
        enter(field, QGuiApplication::clipboard()->text());
        return 0;
    case WM_CLEAR:
        removeSelection(field);
        return 0;
    case WM_UNDO:
    case EM_UNDO:
        if (field.isReadOnly() || !field.canUndo()) return 0;
        field.run([&] { field.undo(); });
        return 1;
    case EM_CANUNDO:
        return field.canUndo() ? 1 : 0;
    default:
        return {};
    }
}

LRESULT reportSelection(const EditField& field, WPARAM wParam, LPARAM lParam) {
    const EditField::Selection now = field.selection();
    if (wParam != 0) *reinterpret_cast<std::int32_t*>(wParam) = now.start();
    if (lParam != 0) *reinterpret_cast<std::int32_t*>(lParam) = now.end();
    return now.end() > 0xFFFF ? -1 : makeLParam(now.start(), now.end());
}

void changeSelection(EditField& field, std::int64_t anchor, std::int64_t caret) {
    const int length = field.length();
    const auto held = [&](std::int64_t at) {
        return static_cast<int>(std::clamp<std::int64_t>(at, 0, length));
    };
    field.run([&] {
        if (anchor == -1) {
            const int at = field.selection().caret;
            field.select({at, at});
        } else {
            field.select({held(anchor), caret == -1 ? length : held(caret)});
        }
    });
}

Result textMessage(EditField& field, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam) {
    switch (uMsg) {
    case WM_SETTEXT:
        field.endComposition();
        field.run([&] {
            field.setText(*reinterpret_cast<const Text*>(lParam));
            if (field.severalLines()) field.keepChangeQuiet();
        });
        return 1;
    case WM_GETTEXT: {
        Text& text = *reinterpret_cast<Text*>(lParam);
        text = field.text();
        return static_cast<LRESULT>(text.size());
    }
    case WM_GETTEXTLENGTH:
        return field.length();
    case EM_GETSEL:
        return reportSelection(field, wParam, lParam);
    case EM_SETSEL:
        // As 32-bit numbers: callers compute positions in them.
        changeSelection(field, static_cast<std::int32_t>(wParam),
                        static_cast<std::int32_t>(lParam));
        return 1;
    case EM_SCROLLCARET:
        field.scrollToCaret();
        return 1;
    case EM_REPLACESEL: {
        const Text& text = *reinterpret_cast<const Text*>(lParam);
        const QString fits = fitting(field, toQt(text));
        field.run([&] {
            if (!fits.isEmpty() || text.empty()) field.insert(fits);
            if (wParam == 0) field.forgetUndo();
        });
        return 0;
    }
    case EM_LINEFROMCHAR: {
        const auto at = static_cast<std::int32_t>(wParam);
        return field.lineOf(at == -1 ? field.selection().start()
                                     : std::clamp(at, 0, field.length()));
    }
    case EM_LINEINDEX: {
        const auto line = static_cast<std::int32_t>(wParam);
        if (line < -1) return -1;
        return field.startOfLine(line == -1 ? field.lineOf(field.selection().caret) : line);
    }
    default:
        return {};
    }
}

Result stateMessage(WindowRecord& record, EditField& field, std::uint32_t uMsg, WPARAM wParam) {
    switch (uMsg) {
    case EM_LIMITTEXT: {
        const auto limit = static_cast<std::int32_t>(wParam);
        field.limit = limit <= 0 ? kNoTextLimit : std::min(limit, kNoTextLimit);
        return 0;
    }
    case EM_GETLIMITTEXT:
        return field.limit;
    case EM_SETREADONLY:
        if (wParam != 0) field.endComposition();
        field.setReadOnly(wParam != 0);
        record.style = wParam != 0 ? record.style | std::intptr_t{ES_READONLY}
                                   : record.style & ~std::intptr_t{ES_READONLY};
        InvalidateRect(record.handle);
        return 1;
    case EM_SETPASSWORDCHAR:
        field.run([&] { field.setPasswordChar(static_cast<char16_t>(wParam)); });
        return 1;
    case WM_SETFONT:
        record.widget->setFont(toolkitFontOf(static_cast<HFONT>(wParam)));
        return 0;
    default:
        return {};
    }
}

// ---- The menu of the right button

void showMenu(WindowRecord& record, EditField& field, LPARAM lParam) {
    QWidget& widget = *clientWidgetOf(record.handle);
    auto* const menu = new QMenu(&widget);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const HWND hWnd = record.handle;
    const auto add = [&](const char* caption, bool enabled, std::function<void()> action) {
        QAction* const item = menu->addAction(QLatin1String(caption));
        item->setEnabled(enabled);
        QObject::connect(item, &QAction::triggered, menu, [hWnd, perform = std::move(action)] {
            if (IsWindow(hWnd)) guarded(perform);
        });
    };
    const auto message = [hWnd](std::uint32_t uMsg) {
        return [hWnd, uMsg] { SendMessageW(hWnd, uMsg, 0, 0); };
    };
    const bool writable = !field.isReadOnly();
    const bool copies = canCopy(field);
    add("&Undo", writable && field.canUndo(), message(WM_UNDO));
    add("&Redo", writable && field.canRedo(), [&field] { field.run([&] { field.redo(); }); });
    menu->addSeparator();
    add("Cu&t", writable && copies, message(WM_CUT));
    add("&Copy", copies, message(WM_COPY));
    add("&Paste", writable && !QGuiApplication::clipboard()->text().isEmpty(), message(WM_PASTE));
    add("&Delete", writable && field.selection().length() > 0, message(WM_CLEAR));
    menu->addSeparator();
    add("Select &All", field.selection().length() < field.length(), [&field] { selectAll(field); });
    const POINT at = pointOf(lParam);
    menu->popup(lParam == -1 ? widget.mapToGlobal(field.caretRect().bottomLeft())
                             : QPoint(at.x, at.y));
}

// Middle button: what was last selected anywhere, on desktops that know that. The page does it by
// itself.
void pasteSelection(EditField& field, POINT at) {
    if (field.isReadOnly() || !QGuiApplication::clipboard()->supportsSelection()) return;
    const QString text = QGuiApplication::clipboard()->text(QClipboard::Selection);
    const int position = field.positionAt(QPoint(at.x, at.y));
    field.run([&] { field.select({position, position}); });
    enter(field, text);
}

Result mouseMessage(WindowRecord& record, EditField& field, std::uint32_t uMsg, WPARAM wParam,
                    LPARAM lParam) {
    switch (uMsg) {
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        if (GetFocus() != record.handle) SetFocus(record.handle);
        if (uMsg == WM_LBUTTONDOWN && (wParam & MK_SHIFT) == 0) {
            changeSelection(field, -1, 0);  // the library's page would let it be dragged away
        }
        return {};
    case WM_MBUTTONUP:
        if (field.severalLines()) return {};
        keepFromLibrary(record, uMsg);
        pasteSelection(field, pointOf(lParam));
        return 0;
    case WM_MOUSEWHEEL: {
        if (!field.severalLines()) return {};
        StashedEvent* const stashed = stashedEvent(record, uMsg);
        // With Control the library's page would change the font's size when it is read only.
        if (stashed == nullptr || (loWord(wParam) & MK_CONTROL) != 0) {
            keepFromLibrary(record, uMsg);
            field.turnWheel(static_cast<std::int16_t>(hiWord(wParam)));
            return 0;
        }
        stashed->ran = true;
        stashed->result = field.runNative(stashed->event, stashed->viewport);
        return 0;
    }
    case WM_CONTEXTMENU:
        keepFromLibrary(record, uMsg);
        showMenu(record, field, lParam);
        return 0;
    default:
        return {};
    }
}

// ---- Colours

class AskingContext {
public:
    AskingContext() : m_hDC(CreateCompatibleDC(0)) {}
    ~AskingContext() { DeleteDC(m_hDC); }
    AskingContext(const AskingContext&) = delete;
    AskingContext& operator=(const AskingContext&) = delete;
    [[nodiscard]] HDC hDC() const { return m_hDC; }

private:
    HDC m_hDC;
};

// Asks the parent what the field looks like, ahead of each paint.
void askColors(const WindowRecord& record, EditField& field) {
    const HWND hWnd = record.handle;
    const bool plain = !field.isReadOnly() && record.widget->isEnabled();
    const AskingContext context;
    const COLORREF area = GetSysColor(plain ? 5 : 15);
    SetTextColor(context.hDC(), GetSysColor(record.widget->isEnabled() ? 8 : 17));
    SetBkColor(context.hDC(), area);
    const LRESULT answer = SendMessageW(
        GetParent(hWnd), plain ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC, context.hDC(), hWnd);
    if (!IsWindow(hWnd)) return;
    const BrushRecord* brush = brushTable().find(static_cast<HBRUSH>(answer));
    FieldColors colors;
    colors.text = GetTextColor(context.hDC());
    colors.area = brush != nullptr && !brush->null ? brush->color : GetBkColor(context.hDC());
    const bool shown = !field.hidesSelection || record.widget->hasFocus();
    colors.selectedText = shown ? GetSysColor(14) : colors.text;
    colors.selectedArea = shown ? GetSysColor(13) : colors.area;
    field.setColors(colors);
}

Result handle(WindowRecord& record, EditField& field, std::uint32_t uMsg, WPARAM wParam,
              LPARAM lParam) {
    if (uMsg == WM_PAINT) {
        askColors(record, field);
        return {};
    }
    if (uMsg == WM_KILLFOCUS) {
        field.endComposition();
        return {};
    }
    Result result = textMessage(field, uMsg, wParam, lParam);
    if (!result) result = keyMessage(record, field, uMsg, wParam);
    if (!result) result = clipboardMessage(field, uMsg);
    if (!result) result = stateMessage(record, field, uMsg, wParam);
    if (!result) result = mouseMessage(record, field, uMsg, wParam, lParam);
    return result;
}

}  // namespace

bool editProcedure(WindowRecord& record, std::uint32_t uMsg, WPARAM wParam, LPARAM lParam,
                   LRESULT& result) {
    const HWND hWnd = record.handle;
    // The parent may end the window when it hears of a change: the field stays until we are back.
    const EventScope scope(*windowTable().find(hWnd));
    const Result done =
        handle(record, static_cast<EditField&>(*record.target), uMsg, wParam, lParam);
    result = done.value_or(0);
    return done.has_value() || !IsWindow(hWnd);
}

void paintWith(QWidget& widget, const FieldColors& colors) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Text, qtColor(colors.text));
    palette.setColor(QPalette::Base, qtColor(colors.area));
    palette.setColor(QPalette::HighlightedText, qtColor(colors.selectedText));
    palette.setColor(QPalette::Highlight, qtColor(colors.selectedArea));
    widget.setPalette(palette);
}

}  // namespace platform
