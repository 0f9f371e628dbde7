#include "gfx/clsGdiHandle.h"

#include "platform/window/surface.h"

void clsGdiHandle::Destroy() {
    if (m_hObject != 0) platform::DeleteObject(ReleaseHandle());
}
