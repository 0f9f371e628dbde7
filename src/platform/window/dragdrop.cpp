#include "platform/window/dragdrop.h"

#include "platform/base/paths.h"
#include "platform/window/drops_internal.h"
#include "platform/window/testhooks_internal.h"
#include "platform/window/toolkit_internal.h"
#include "platform/window/window_internal.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPixmap>
#include <QPointer>
#include <QStringList>
#include <QUrl>
#include <QWidget>

namespace platform {
namespace {

class ReceivedData final : public DragData {
public:
    explicit ReceivedData(const QMimeData& data) : m_data(data) {}
    [[nodiscard]] std::vector<std::string> formats() const override {
        std::vector<std::string> names;
        for (const QString& name : m_data.formats()) names.push_back(name.toStdString());
        return names;
    }
    [[nodiscard]] Text text() const override {
        return m_data.hasText() ? toText(m_data.text()) : Text();
    }
    [[nodiscard]] std::vector<Text> files() const override { return filesOf(m_data); }
    [[nodiscard]] Bytes bytes(const std::string& format) const override {
        const QByteArray found = m_data.data(QString::fromStdString(format));
        return Bytes(found.begin(), found.end());
    }

private:
    const QMimeData& m_data;
};

Qt::DropActions actionsOf(std::int32_t effects) {
    Qt::DropActions actions;
    actions.setFlag(Qt::CopyAction, (effects & DROPEFFECT_COPY) != 0);
    actions.setFlag(Qt::MoveAction, (effects & DROPEFFECT_MOVE) != 0);
    return actions;
}

std::int32_t effectsOf(Qt::DropActions actions) {
    return (actions.testFlag(Qt::CopyAction) ? DROPEFFECT_COPY : 0) |
           (actions.testFlag(Qt::MoveAction) ? DROPEFFECT_MOVE : 0);
}

// The one that the desktop proposes, when it is among the effects, else a copy before a move.
Qt::DropAction actionOf(std::int32_t effects, Qt::DropAction proposed) {
    const Qt::DropActions actions = actionsOf(effects);
    if (actions.testFlag(proposed)) return proposed;
    if (actions.testFlag(Qt::CopyAction)) return Qt::CopyAction;
    return actions.testFlag(Qt::MoveAction) ? Qt::MoveAction : Qt::IgnoreAction;
}

// Stands in front of a window's widget and takes the events of drags.
class DropFilter final : public QObject {
public:
    DropFilter(QWidget* widget, HWND hWnd) : QObject(widget), m_hWnd(hWnd) {
        widget->installEventFilter(this);
    }
    DropTarget* target = nullptr;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (target == nullptr) return QObject::eventFilter(watched, event);
        const std::shared_ptr<WindowRecord>* found = windowTable().find(m_hWnd);
        if (found == nullptr) return false;
        switch (event->type()) {
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop: {
            const EventScope scope(*found);
            take(static_cast<QDropEvent&>(*event), (*found)->clientTop);
            return true;
        }
        case QEvent::DragLeave: {
            const EventScope scope(*found);
            guarded([&] { (void)target->dragOver(nullptr, {}, DragState::Leave); });
            return true;
        }
        default:
            return false;
        }
    }

private:
    void take(QDropEvent& event, int clientTop) {
        static const QMimeData kEmpty;
        const ReceivedData data(event.mimeData() == nullptr ? kEmpty : *event.mimeData());
        DragPosition position;
        const QPoint at = event.position().toPoint();
        position.at = {at.x(), at.y() - clientTop};
        position.buttons =
            buttonsDown(event.buttons().toInt(), static_cast<int>(event.modifiers().toInt()));
        position.allowed = effectsOf(event.possibleActions());
        std::int32_t effect = DROPEFFECT_NONE;
        guarded([&] {
            if (event.type() == QEvent::Drop) {
                effect = target->drop(data, position);
            } else {
                const bool enter = event.type() == QEvent::DragEnter;
                effect =
                    target->dragOver(&data, position, enter ? DragState::Enter : DragState::Over);
            }
        });
        effect &= position.allowed;
        event.setDropAction(actionOf(effect, event.proposedAction()));
        // A drag whose entering is refused would not be heard of again.
        event.setAccepted(effect != DROPEFFECT_NONE || event.type() == QEvent::DragEnter);
    }

    HWND m_hWnd;
};

DropFilter* filterOf(QWidget* widget) {
    for (QObject* child : widget->children()) {
        if (auto* filter = dynamic_cast<DropFilter*>(child)) return filter;
    }
    return nullptr;
}

// What a drag carries; formats without bytes are asked for when they are wanted.
class SentData final : public QMimeData {
public:
    explicit SentData(const DragContent& content) : m_provide(content.provide) {
        if (!content.text.empty()) setText(toQt(content.text));
        QList<QUrl> addresses;
        for (const Text& file : content.files) addresses << addressOf(pathToSystem(file));
        if (!addresses.isEmpty()) setUrls(addresses);
        for (const auto& [name, bytes] : content.others) {
            setData(QString::fromStdString(name),
                    QByteArray(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<qsizetype>(bytes.size())));
            if (bytes.empty()) m_promised << QString::fromStdString(name);
        }
    }

protected:
    QVariant retrieveData(const QString& name, QMetaType type) const override {
        if (!m_provide || !m_promised.contains(name)) return QMimeData::retrieveData(name, type);
        QByteArray made;
        guarded([&] {
            const Bytes bytes = m_provide(name.toStdString());
            made = QByteArray(reinterpret_cast<const char*>(bytes.data()),
                              static_cast<qsizetype>(bytes.size()));
        });
        return made;
    }

private:
    std::function<Bytes(const std::string&)> m_provide;
    QStringList m_promised;
};

}  // namespace

bool setDropTarget(HWND hWnd, DropTarget* target) {
    WindowRecord* record = windowOf(hWnd);
    if (record == nullptr) return false;
    DropFilter* filter = filterOf(record->widget);
    if (filter == nullptr) {
        if (target == nullptr) return true;
        filter = new DropFilter(record->widget, hWnd);  // the widget owns it
    }
    filter->target = target;
    record->widget->setAcceptDrops(target != nullptr || record->acceptsFiles);
    return true;
}

std::int32_t doDragDrop(HWND hWnd, const DragContent& content, std::int32_t allowed,
                        const DragFeedback& feedback) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr) return DROPEFFECT_NONE;
    if (hooks().drag) return hooks().drag(content, allowed, feedback);
    const QPointer<QDrag> drag = new QDrag(widget);  // goes by itself when it is over
    drag->setMimeData(new SentData(content));
    QObject::connect(drag, &QDrag::actionChanged, drag, [&](Qt::DropAction action) {
        guarded([&] {
            const bool usual = !feedback || feedback(effectsOf(action));
            const WindowRecord* record = windowOf(hWnd);
            if (drag.isNull() || record == nullptr) return;
            // No picture stands for the usual cursor.
            drag->setDragCursor(usual ? QPixmap() : qtCursor(record->cursor).pixmap(), action);
        });
    });
    const Qt::DropAction done = drag->exec(actionsOf(allowed));
    return effectsOf(done);
}

void test::setDragHook(DragHook hook) { hooks().drag = std::move(hook); }

std::int32_t test::dragInto(HWND hWnd, POINT at, const DragContent& content, std::int32_t allowed,
                            bool drop) {
    QWidget* const widget = widgetOf(hWnd);
    if (widget == nullptr || !widget->acceptDrops()) return DROPEFFECT_NONE;
    const SentData data(content);
    const Qt::DropActions actions = actionsOf(allowed);
    const QPoint position(at.x, at.y);
    QDragEnterEvent enter(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &enter);
    QDragMoveEvent over(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &over);
    if (!drop) {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(widget, &leave);
        return over.isAccepted() ? effectsOf(over.dropAction()) : DROPEFFECT_NONE;
    }
    QDropEvent dropped(position, actions, &data, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &dropped);
    return dropped.isAccepted() ? effectsOf(dropped.dropAction()) : DROPEFFECT_NONE;
}

}  // namespace platform
