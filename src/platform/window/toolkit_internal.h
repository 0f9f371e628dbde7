// platform/window/toolkit_internal.h: small helpers for the library's own types. Nothing above the
// folder includes this.
#pragma once
#include "platform/window/types.h"

class QColor;
class QString;
class QUrl;
template <class T> class QPointer;

namespace platform {

[[nodiscard]] QString toQt(TextView s);
[[nodiscard]] Text toText(const QString& s);
[[nodiscard]] QColor qtColor(COLORREF color);  // a plain one
[[nodiscard]] COLORREF colorOf(const QColor& color);
// The address of a file, which holds the very bytes of its path, whatever they are.
[[nodiscard]] QUrl addressOf(const std::string& systemPath);

// A dialog with an owner, which may take it along while it runs: then it is nullptr afterwards.
template <class Dialog> class DialogPointer {
public:
    explicit DialogPointer(Dialog* dialog) : m_dialog(dialog) {}
    ~DialogPointer() { delete m_dialog.data(); }
    DialogPointer(const DialogPointer&) = delete;
    DialogPointer& operator=(const DialogPointer&) = delete;
    Dialog* operator->() const { return m_dialog.data(); }
    explicit operator bool() const { return !m_dialog.isNull(); }

private:
    QPointer<Dialog> m_dialog;
};

}  // namespace platform
