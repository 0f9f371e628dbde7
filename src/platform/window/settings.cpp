#include "platform/window/settings.h"

#include "platform/window/testhooks_internal.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

namespace platform {
namespace {

// A name in letters, digits and a few more; every other unit as %XXXX. So names can hold what means
// something in the file or in a path, and no two names meet, lone surrogates included.
QString escaped(TextView name) {
    QString safe;
    for (const char16_t unit : name) {
        const bool plain = (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') ||
                           (unit >= u'0' && unit <= u'9') || unit == u'_' || unit == u'-';
        if (plain) {
            safe += QChar(unit);
        } else {
            safe += u'%' + QString::number(unit, 16).rightJustified(4, u'0').toUpper();
        }
    }
    return safe;
}

QString fileOf(TextView application) {
    const QString folder =
        hooks().settingsFolder
            ? QString::fromStdString(*hooks().settingsFolder)
            : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(folder).filePath(escaped(application) + QStringLiteral("/settings.ini"));
}

QString keyOf(TextView section, TextView key) {
    // An empty name would be no step of the way.
    return u'S' + escaped(section) + u'/' + u'K' + escaped(key);
}

// Values go through bytes of UTF-8: only lone surrogates need help, and they get it by an escape.
QString toStored(TextView value) {
    QString stored;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const QChar unit(value[i]);
        const bool pair =
            unit.isHighSurrogate() && i + 1 < value.size() && QChar(value[i + 1]).isLowSurrogate();
        if (pair) {
            stored += unit;
            stored += QChar(value[++i]);
        } else if (unit.isSurrogate() || unit == u'%' || unit == u'\0') {
            stored += u'%' + QString::number(unit.unicode(), 16).rightJustified(4, u'0').toUpper();
        } else {
            stored += unit;
        }
    }
    return stored;
}

Text fromStored(const QString& stored) {
    Text value;
    for (qsizetype i = 0; i < stored.size(); ++i) {
        bool isEscape = false;
        if (stored[i] == u'%' && i + 4 < stored.size()) {
            const uint unit = stored.mid(i + 1, 4).toUInt(&isEscape, 16);
            if (isEscape) value += static_cast<char16_t>(unit);
        }
        if (isEscape) {
            i += 4;
        } else {
            value += stored[i].unicode();
        }
    }
    return value;
}

}  // namespace

Text GetSetting(TextView application, TextView section, TextView key, TextView sDefault) {
    const QSettings store(fileOf(application), QSettings::IniFormat);
    const QVariant value = store.value(keyOf(section, key));
    return value.isValid() ? fromStored(value.toString()) : Text(sDefault);
}

bool SaveSetting(TextView application, TextView section, TextView key, TextView value) {
    QSettings store(fileOf(application), QSettings::IniFormat);
    store.setAtomicSyncRequired(true);
    store.setValue(keyOf(section, key), toStored(value));
    store.sync();
    if (store.status() != QSettings::FormatError) return store.status() == QSettings::NoError;
    // That tells of the file as it was; a second look tells whether it has been written.
    QSettings written(store.fileName(), QSettings::IniFormat);
    written.sync();
    return written.status() == QSettings::NoError;
}

}  // namespace platform
