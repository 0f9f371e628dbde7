// Icons, and the pictures that others hold.
#include "platform/window/surface_internal.h"

namespace platform {
namespace {

struct IconRecord {
    bool icon = true;
    std::uint32_t xHotspot = 0, yHotspot = 0;
    BitmapRecord mask, color;  // color: empty in a monochrome icon
};

HandleTable<IconRecord>& iconTable() {
    (void)bitmapTable();  // the memory of bitmaps must outlive the icons
    static HandleTable<IconRecord> table(HandleKind::Icon);
    return table;
}

// A copy of a bitmap in the table; 0 when there is no memory.
HBITMAP addCopy(const BitmapRecord& bitmap) {
    BitmapRecord copied = copyOfBitmap(bitmap);
    return copied.top != nullptr ? addObject(bitmapTable(), std::move(copied)) : 0;
}

}  // namespace

HICON CreateIconIndirect(const ICONINFO& info) {
    const BitmapRecord* mask = bitmapOf(info.hbmMask);
    const BitmapRecord* color = bitmapOf(info.hbmColor);
    if (mask == nullptr || mask->bitsPerPixel != 1 || (color == nullptr && info.hbmColor != 0)) {
        return 0;
    }
    if (color != nullptr && (color->width != mask->width || color->height != mask->height))
        return 0;
    if (color == nullptr && mask->height % 2 != 0) return 0;
    IconRecord icon{info.fIcon, info.xHotspot, info.yHotspot, copyOfBitmap(*mask), {}};
    if (icon.mask.top == nullptr) return 0;
    if (color != nullptr) {
        icon.color = copyOfBitmap(*color);
        if (icon.color.top == nullptr) return 0;
    }
    return iconTable().add(std::move(icon));
}

bool GetIconInfo(HICON hIcon, ICONINFO& info) {
    info = ICONINFO();
    const IconRecord* icon = iconTable().find(hIcon);
    if (icon == nullptr) return false;
    const HBITMAP mask = addCopy(icon->mask);
    const HBITMAP color = icon->color.top != nullptr ? addCopy(icon->color) : 0;
    if (mask == 0 || (color == 0 && icon->color.top != nullptr)) {
        DeleteObject(mask);
        DeleteObject(color);
        return false;
    }
    info = {icon->icon, icon->xHotspot, icon->yHotspot, mask, color};
    return true;
}

bool DestroyIcon(HICON hIcon) { return iconTable().remove(hIcon); }

std::shared_ptr<PictureObject> OleCreatePictureIndirect(const PICTDESC& description, bool fOwn) {
    if (description.picType == PICTYPE_BITMAP) {
        const BitmapRecord* bitmap = bitmapOf(description.handle);
        if (bitmap == nullptr) return nullptr;
        const SIZE size{bitmap->width, bitmap->height};
        return std::make_shared<PictureObject>(description, size, fOwn);
    }
    if (description.picType == PICTYPE_ICON) {
        const IconRecord* icon = iconTable().find(description.handle);
        if (icon == nullptr) return nullptr;
        const bool monochrome = icon->color.top == nullptr;
        const SIZE size{icon->mask.width, icon->mask.height / (monochrome ? 2 : 1)};
        return std::make_shared<PictureObject>(description, size, fOwn);
    }
    return nullptr;
}

PictureObject::~PictureObject() {
    if (!m_own) return;
    if (Type() == PICTYPE_ICON) {
        DestroyIcon(Handle());
    } else {
        DeleteObject(Handle());
    }
}

}  // namespace platform
