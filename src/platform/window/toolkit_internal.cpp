#include "platform/window/toolkit_internal.h"

#include <QColor>
#include <QString>
#include <QUrl>

namespace platform {

QString toQt(TextView s) {
    return QString(reinterpret_cast<const QChar*>(s.data()), static_cast<qsizetype>(s.size()));
}

Text toText(const QString& s) { return s.toStdU16String(); }

QColor qtColor(COLORREF color) { return QColor(redOf(color), greenOf(color), blueOf(color)); }

COLORREF colorOf(const QColor& color) { return rgb(color.red(), color.green(), color.blue()); }

QUrl addressOf(const std::string& systemPath) {
    return QUrl::fromEncoded("file://" +
                             QByteArray::fromStdString(systemPath).toPercentEncoding("/"));
}

}  // namespace platform
