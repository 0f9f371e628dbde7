// Message box, colours and fonts. The dialogs for files and folders are in filedialog.cpp.
#include "platform/window/dialogs.h"

#include "platform/window/screen.h"
#include "platform/window/surface.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/text_face.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFontDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <algorithm>
#include <cmath>

namespace platform {
namespace {

struct BoxButton {
    int id;
    QMessageBox::StandardButton button;
};

std::vector<BoxButton> buttonsOf(std::uint32_t style) {
    const BoxButton ok{IDOK, QMessageBox::Ok}, cancel{IDCANCEL, QMessageBox::Cancel};
    const BoxButton yes{IDYES, QMessageBox::Yes}, no{IDNO, QMessageBox::No};
    const BoxButton retry{IDRETRY, QMessageBox::Retry};
    switch (style & 0xF) {
    case MB_OKCANCEL:
        return {ok, cancel};
    case MB_ABORTRETRYIGNORE:
        return {{IDABORT, QMessageBox::Abort}, retry, {IDIGNORE, QMessageBox::Ignore}};
    case MB_YESNOCANCEL:
        return {yes, no, cancel};
    case MB_YESNO:
        return {yes, no};
    case MB_RETRYCANCEL:
        return {retry, cancel};
    default:
        return {ok};
    }
}

QMessageBox::Icon iconOf(std::uint32_t style) {
    switch (style & 0xF0) {
    case MB_ICONSTOP:
        return QMessageBox::Critical;
    case MB_ICONQUESTION:
        return QMessageBox::Question;
    case MB_ICONEXCLAMATION:
        return QMessageBox::Warning;
    case MB_ICONINFORMATION:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// A message box that has to be answered by a button when none of them stands for closing it. Enter
// that is still held down from what came before is no answer: nobody has read the box yet.
class MessageBox final : public QMessageBox {
public:
    MessageBox(QWidget* parent, bool closable) : QMessageBox(parent), m_closable(closable) {}

    void add(QMessageBox::StandardButton button) { addButton(button)->installEventFilter(this); }

private:
    bool eventFilter(QObject* button, QEvent* event) override {
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
            const auto& key = static_cast<const QKeyEvent&>(*event);
            const bool enter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
            if (isHeld(key) && enter) return true;
        }
        return QMessageBox::eventFilter(button, event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (m_closable) {
            QMessageBox::closeEvent(event);
        } else {
            event->ignore();
        }
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (m_closable || event->key() != Qt::Key_Escape) QMessageBox::keyPressEvent(event);
    }
    bool m_closable;
};

}  // namespace

int MessageBoxW(HWND hWnd, TextView text, TextView caption, std::uint32_t style) {
    const std::vector<BoxButton> buttons = buttonsOf(style);
    const auto has = [&](int id) {
        return std::ranges::any_of(buttons, [=](const BoxButton& b) { return b.id == id; });
    };
    const int escape = has(IDCANCEL) ? IDCANCEL : has(IDNO) ? IDNO : has(IDOK) ? IDOK : 0;
    if (test::DialogScript* script = dialogScript()) {
        const auto answer =
            script->next("messagebox", "style=" + hexText(style) + " title=" + quotedText(caption) +
                                           " text=" + quotedText(text));
        return answer.button != 0 ? answer.button : escape;
    }

    DialogPointer<MessageBox> box(new MessageBox(widgetOf(hWnd), escape != 0));
    box->setTextFormat(Qt::PlainText);
    box->setText(toQt(text));
    box->setWindowTitle(toQt(caption));
    box->setIcon(iconOf(style));
    box->setWindowModality(Qt::ApplicationModal);
    if ((style & MB_TOPMOST) != 0) box->setWindowFlag(Qt::WindowStaysOnTopHint);
    for (const BoxButton& b : buttons) {
        box->add(b.button);
        if (b.id == escape) box->setEscapeButton(b.button);
    }
    const std::size_t first = std::min<std::size_t>((style >> 8) & 0xF, buttons.size() - 1);
    box->setDefaultButton(buttons[first].button);
    const int pressed = box->exec();
    for (const BoxButton& b : buttons) {
        if (b.button == pressed) return b.id;
    }
    return escape;  // its owner was destroyed
}

bool ChooseColorA(CHOOSECOLORA& record) {
    const bool start = (record.Flags & CC_RGBINIT) != 0;
    if (test::DialogScript* script = dialogScript()) {
        std::string question = "flags=" + hexText(record.Flags);
        if (start) question += " start=" + hexText(static_cast<std::uint32_t>(record.rgbResult));
        const auto answer = script->next("color", question);
        if (!answer.color) return false;
        record.rgbResult = *answer.color;
        return true;
    }

    constexpr int kCustom = 16;
    for (int i = 0; i < kCustom; ++i) {
        QColorDialog::setCustomColor(i, qtColor(record.lpCustColors[static_cast<std::size_t>(i)]));
    }
    DialogPointer<QColorDialog> dialog(new QColorDialog(widgetOf(record.hwndOwner)));
    // The desktop's own would not give the custom colours back.
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    dialog->setCurrentColor(start ? qtColor(record.rgbResult) : QColor(Qt::black));
    if (dialog->exec() != QDialog::Accepted || !dialog) return false;
    record.rgbResult = colorOf(dialog->selectedColor());
    for (int i = 0; i < kCustom; ++i) {
        // The high byte is no part of the colour, and the caller's.
        COLORREF& custom = record.lpCustColors[static_cast<std::size_t>(i)];
        custom = (custom & ~0xFFFFFF) | colorOf(QColorDialog::customColor(i));
    }
    return true;
}

// ---- Font

namespace {

// How a font record looks in the dialog. What stands for the wished face shows under its own name.
QFont shownFont(const LOGFONTA& wish, int dpi) {
    const HFONT hFont = CreateFontIndirectA(wish);
    const QFont drawn = toolkitFontOf(hFont);
    DeleteObject(hFont);
    QFont font(drawn.family());
    font.setPointSizeF(drawn.pixelSize() * 72.0 / dpi);
    font.setWeight(drawn.weight());
    font.setItalic(drawn.italic());
    font.setUnderline(drawn.underline());
    font.setStrikeOut(drawn.strikeOut());
    return font;
}

class FontDialog final : public QFontDialog {
public:
    FontDialog(QWidget* parent, const CHOOSEFONTA& wish)
        : QFontDialog(parent), m_wish(wish), m_color(wish.rgbColors) {
        setOption(DontUseNativeDialog);  // it has neither limits nor a colour
        if ((wish.Flags & CF_EFFECTS) == 0) {
            for (const QCheckBox* effect : findChildren<QCheckBox*>()) {
                QWidget* const group = effect->parentWidget();
                QSizePolicy policy = group->sizePolicy();
                policy.setRetainSizeWhenHidden(true);  // the sample beside it needs the height
                group->setSizePolicy(policy);
                group->hide();
            }
            return;
        }
        auto* buttons = findChild<QDialogButtonBox*>();
        if (buttons == nullptr) return;
        QPushButton* button = buttons->addButton(tr("Color..."), QDialogButtonBox::ActionRole);
        connect(button, &QPushButton::clicked, this, [this] {
            const QColor chosen = QColorDialog::getColor(qtColor(m_color), this, QString(),
                                                         QColorDialog::DontUseNativeDialog);
            if (chosen.isValid()) m_color = colorOf(chosen);
        });
    }
    [[nodiscard]] COLORREF color() const { return m_color; }

private:
    void done(int result) override {
        const double points = currentFont().pointSizeF();
        const bool limited = (m_wish.Flags & CF_LIMITSIZE) != 0;
        QString wrong;
        if (limited && (points < m_wish.nSizeMin || points > m_wish.nSizeMax)) {
            wrong = tr("The size must be between %1 and %2 points.")
                        .arg(m_wish.nSizeMin)
                        .arg(m_wish.nSizeMax);
        } else if (LOGFONTA font; !setFaceName(font, toText(currentFont().family()))) {
            wrong = tr("%1\nThis font cannot be used here: its name is too long, or has characters "
                       "that the system's code page lacks.")
                        .arg(currentFont().family());
        }
        if (result == Accepted && !wrong.isEmpty()) {
            QMessageBox::warning(this, windowTitle(), wrong);
            return;
        }
        QFontDialog::done(result);
    }

    CHOOSEFONTA m_wish;
    COLORREF m_color;
};

}  // namespace

bool ChooseFontA(CHOOSEFONTA& record) {
    if ((record.Flags & CF_LIMITSIZE) != 0 && record.nSizeMax < record.nSizeMin) return false;
    const int dpi = screenDotsPerInch(LOGPIXELSY);
    LOGFONTA& chosen = record.lpLogFont;
    if (test::DialogScript* script = dialogScript()) {
        const auto answer = script->next(
            "font", "flags=" + hexText(record.Flags) + " name=" + quotedText(faceNameOf(chosen)) +
                        " height=" + std::to_string(chosen.lfHeight) +
                        " weight=" + std::to_string(chosen.lfWeight) +
                        " color=" + hexText(static_cast<std::uint32_t>(record.rgbColors)));
        if (!answer.font) return false;
        chosen = *answer.font;
        record.iPointSize = answer.points * 10;
        if (answer.points != 0) chosen.lfHeight = -MulDiv(answer.points, dpi, 72);
        if (answer.color && (record.Flags & CF_EFFECTS) != 0) record.rgbColors = *answer.color;
        return true;
    }

    DialogPointer<FontDialog> dialog(new FontDialog(widgetOf(record.hwndOwner), record));
    const bool startsWithFont = (record.Flags & CF_INITTOLOGFONTSTRUCT) != 0;
    const QFont shown = shownFont(startsWithFont ? chosen : LOGFONTA(), dpi);
    dialog->setCurrentFont(shown);
    const QFont start = dialog->currentFont();  // the dialog knows fewer sizes and weights
    if (dialog->exec() != QDialog::Accepted || !dialog) return false;
    const QFont font = dialog->selectedFont();
    // What the person left alone stays what the caller gave, not what stood for it.
    const auto changed = [&](const auto& part) {
        return !startsWithFont || part(font) != part(start);
    };
    if (changed([](const QFont& f) { return f.family(); })) {
        (void)setFaceName(chosen, toText(font.family()));  // the dialog has seen to it
    }
    if (changed([](const QFont& f) { return f.weight(); })) chosen.lfWeight = font.weight();
    double points = shown.pointSizeF();
    if (changed([](const QFont& f) { return f.pointSizeF(); })) {
        points = font.pointSizeF();
        chosen.lfHeight = -static_cast<std::int32_t>(std::lround(points * dpi / 72));
    }
    record.iPointSize = static_cast<std::int32_t>(std::lround(points * 10));
    chosen.lfItalic = font.italic() ? 1 : 0;
    if ((record.Flags & CF_EFFECTS) != 0) {
        chosen.lfUnderline = font.underline() ? 1 : 0;
        chosen.lfStrikeOut = font.strikeOut() ? 1 : 0;
        record.rgbColors = dialog->color();
    }
    return true;
}

}  // namespace platform
