#include "platform/window/picturefile.h"

#include "platform/base/files.h"
#include "platform/window/surface_internal.h"

#include <QBuffer>
#include <QImage>

namespace platform {

bool writePngFile(HBITMAP hBitmap, TextView path) {
    const BitmapRecord* const bitmap = bitmapOf(hBitmap);
    if (bitmap == nullptr) return false;
    QImage image(bitmap->width, bitmap->height, QImage::Format_RGB32);
    if (image.isNull()) return false;
    const auto width = static_cast<std::size_t>(bitmap->width);
    for (int y = 0; y < bitmap->height; ++y) {
        readPixels(*bitmap, 0, y, {reinterpret_cast<std::uint32_t*>(image.scanLine(y)), width});
    }
    // The density would be that of the screen at hand.
    image.setDotsPerMeterX(0);
    image.setDotsPerMeterY(0);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) return false;

    const FileHandle file = CreateFileW(path, GENERIC_WRITE, 0, CREATE_ALWAYS, 0);
    if (file == INVALID_HANDLE_VALUE) return false;
    const auto count = static_cast<std::uint32_t>(bytes.size());
    std::uint32_t written = 0;
    const bool whole = WriteFile(file, bytes.constData(), count, written) && written == count;
    return CloseHandle(file) && whole;
}

}  // namespace platform
