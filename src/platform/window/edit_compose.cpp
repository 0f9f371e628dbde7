// Input methods: their events as messages, and the strings that go with them.
#include "platform/window/edit_internal.h"
#include "platform/window/toolkit_internal.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <cstring>

namespace platform {
namespace {

using Attributes = QList<QInputMethodEvent::Attribute>;

EditField* editFieldOf(HWND hWnd) {
    const WindowRecord* record = windowOf(hWnd);
    return record == nullptr ? nullptr : dynamic_cast<EditField*>(record->target);
}

}  // namespace

HIMC ImmGetContext(HWND hWnd) { return editFieldOf(hWnd) == nullptr ? 0 : hWnd; }

std::int32_t ImmGetCompositionStringW(HIMC hIMC, LPARAM index, void* buffer, std::uint32_t size) {
    const EditField* field = editFieldOf(hIMC);
    if (field == nullptr || (index != GCS_COMPSTR && index != GCS_RESULTSTR)) return 0;
    const Text& text = index == GCS_COMPSTR ? field->composed : field->result;
    const std::size_t bytes = text.size() * sizeof(char16_t);
    if (size == 0 || buffer == nullptr) return static_cast<std::int32_t>(bytes);
    const std::size_t copied = std::min<std::size_t>(bytes, size);
    std::memcpy(buffer, text.data(), copied);
    return static_cast<std::int32_t>(copied);
}

bool ImmReleaseContext(HWND hWnd, HIMC hIMC) {
    return hWnd == hIMC && editFieldOf(hWnd) != nullptr;
}

std::optional<bool> EditField::routeSpecially(WindowRecord& record, QEvent* event, bool) {
    if (event->type() != QEvent::InputMethod) return {};
    event->accept();
    return routeComposition(record, static_cast<const QInputMethodEvent&>(*event));
}

void EditField::showComposition(const QString& preedit, const QString& entered) {
    const int before = length();
    const bool changedBefore = m_changed;
    run([&] {
        const bool shows = !preedit.isEmpty() && m_composition != nullptr;
        QInputMethodEvent plain(preedit, shows ? m_composition->attributes() : Attributes());
        plain.setCommitString(entered);
        runNative(&plain, false);
        // To the library a text that is being composed is a change of the text.
        if (entered.isEmpty() && length() == before) m_changed = changedBefore;
    });
}

void EditField::takeComposition() {
    if (m_composition == nullptr || m_compositionTaken) return;
    m_compositionTaken = true;
    showComposition(m_composition->preeditString(), fitting(*this, m_composition->commitString()));
}

bool EditField::routeComposition(WindowRecord& record, const QInputMethodEvent& event) {
    if (isReadOnly()) return true;
    struct OnItsWay {
        OnItsWay(EditField& f, const QInputMethodEvent* now)
            : field(f), before(std::exchange(f.m_composition, now)) {}
        ~OnItsWay() { field.m_composition = before; }
        EditField& field;
        const QInputMethodEvent* before;
    } const onItsWay(*this, &event);
    const HWND hWnd = record.handle;
    // Each step comes also after a failure in the one before: what has begun is brought to its end.
    std::exception_ptr failure;
    const auto step = [&](auto&& f) {
        if (!IsWindow(hWnd)) return;
        try {
            f();
        } catch (...) {
            if (!failure) failure = std::current_exception();
        }
    };
    const auto send = [&](std::uint32_t uMsg, LPARAM lParam) {
        step([&] { SendMessageW(hWnd, uMsg, 0, lParam); });
    };
    const QString preedit = event.preeditString(), commit = event.commitString();
    const bool replaces = event.replacementLength() > 0;
    if (preedit.isEmpty() && commit.isEmpty() && !m_composing) {
        if (replaces) step([&] { selectReplaced(event); });
        if (replaces) step([&] { run([&] { removeSelection(); }); });
    } else {
        // A key that types by an input method without composing comes the whole way, too.
        if (!std::exchange(m_composing, true)) send(WM_IME_STARTCOMPOSITION, 0);
        if (!commit.isEmpty()) {
            // What was being composed goes ahead of its result, so that whoever takes the result
            // finds the plain text, with what is to be replaced selected.
            step([&] { showComposition({}, {}); });
            if (replaces) step([&] { selectReplaced(event); });
        }
        composed = toText(preedit);
        result = toText(commit);
        LPARAM flags = commit.isEmpty() ? 0 : GCS_RESULTSTR;
        if (!preedit.isEmpty() || commit.isEmpty()) flags |= GCS_COMPSTR;
        m_compositionTaken = false;
        send(WM_IME_COMPOSITION, flags);
        composed.clear();
        result.clear();
        // The field shows what is being composed also when somebody has kept the message.
        if (!m_compositionTaken) step([&] { showComposition(preedit, {}); });
        if (preedit.isEmpty()) {
            m_composing = false;
            send(WM_IME_ENDCOMPOSITION, 0);
        }
    }
    if (failure) std::rethrow_exception(failure);
    return true;
}

void EditField::endComposition() {
    if (!m_composing || m_composition != nullptr) return;
    QGuiApplication::inputMethod()->reset();  // some methods send the end at once, others never
    if (!std::exchange(m_composing, false)) return;
    showComposition({}, {});
    SendMessageW(handle(), WM_IME_ENDCOMPOSITION, 0, 0);
}

void EditField::selectReplaced(const QInputMethodEvent& event) {
    const int start = selection().start() + event.replacementStart();
    const int from = std::clamp(start, 0, length());
    run([&] { select({from, std::clamp(start + event.replacementLength(), from, length())}); });
}

}  // namespace platform
