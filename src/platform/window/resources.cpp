#include "platform/window/resources.h"

#include "platform/window/toolkit_internal.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QSet>
#include <algorithm>

static void initIconResources() { Q_INIT_RESOURCE(icons); }

namespace platform {
namespace {

QString fileOf(TextView name) {
    initIconResources();
    return QStringLiteral(":/icons/") + toQt(name) + QStringLiteral(".png");
}

// A colour that none of the opaque pixels has.
QRgb freeColor(const QImage& image) {
    QSet<QRgb> used;
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) used.insert(row[x]);
    }
    QRgb color = qRgb(255, 0, 255);
    while (used.contains(color)) --color;
    return color;
}

// Blended where it covers in part; where it doesn't cover at all the pixels keep alpha 0.
void blend(QImage& image, COLORREF background) {
    const auto mixed = [](int color, int behind, int alpha) {
        return (color * alpha + behind * (255 - alpha) + 127) / 255;
    };
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(row[x]);
            if (alpha == 0) continue;
            row[x] = qRgb(mixed(qRed(row[x]), redOf(background), alpha),
                          mixed(qGreen(row[x]), greenOf(background), alpha),
                          mixed(qBlue(row[x]), blueOf(background), alpha));
        }
    }
}

HBITMAP bitmapOfImage(const QImage& image) {
    BITMAPINFO info;
    info.bmiHeader.biWidth = image.width();
    info.bmiHeader.biHeight = image.height();
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(0, info, DIB_RGB_COLORS, bits);
    if (bitmap == 0) return 0;
    auto* to = static_cast<QRgb*>(bits);
    for (int y = image.height() - 1; y >= 0; --y) {  // a section begins with its bottom row
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        to = std::copy_n(row, image.width(), to);
    }
    return bitmap;
}

}  // namespace

std::shared_ptr<PictureObject> loadPicture(TextView name, COLORREF background) {
    QImage image(fileOf(name));
    if (image.isNull()) return nullptr;
    image.convertTo(QImage::Format_ARGB32);
    blend(image, background);
    const QRgb key = freeColor(image);
    for (int y = 0; y < image.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::replace_if(
            row, row + image.width(), [](QRgb pixel) { return qAlpha(pixel) == 0; }, key);
    }
    const HBITMAP bitmap = bitmapOfImage(image);
    std::shared_ptr<PictureObject> picture =
        OleCreatePictureIndirect({.picType = PICTYPE_BITMAP, .handle = bitmap}, true);
    if (picture == nullptr) DeleteObject(bitmap);
    return picture;
}

bool setProgramIcon(TextView name) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        const QString file = fileOf(Text(name) + u"-" + fromUtf8(std::to_string(size)));
        if (QFile::exists(file)) icon.addFile(file, QSize(size, size));
    }
    if (icon.isNull()) return false;
    QApplication::setWindowIcon(icon);
    return true;
}

}  // namespace platform
