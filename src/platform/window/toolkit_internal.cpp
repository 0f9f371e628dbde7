#include "platform/window/toolkit_internal.h"

#include <QString>

namespace platform {

QString toQt(TextView s) {
    return QString(reinterpret_cast<const QChar*>(s.data()), static_cast<qsizetype>(s.size()));
}

Text toText(const QString& s) { return s.toStdU16String(); }

}  // namespace platform
