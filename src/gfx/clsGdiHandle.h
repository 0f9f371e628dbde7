// gfx/clsGdiHandle.h: the owner of one graphics object (bitmap, brush, pen, font, region).
#pragma once
#include "platform/window/types.h"

#include <utility>

class clsGdiHandle {
public:
    clsGdiHandle() = default;
    explicit clsGdiHandle(platform::HGDIOBJ hObject) : m_hObject(hObject) {}
    ~clsGdiHandle() { Destroy(); }
    clsGdiHandle(clsGdiHandle&& other) noexcept : m_hObject(other.ReleaseHandle()) {}
    clsGdiHandle& operator=(clsGdiHandle&& other) noexcept {
        std::swap(m_hObject, other.m_hObject);
        return *this;
    }

    [[nodiscard]] platform::HGDIOBJ Handle() const { return m_hObject; }
    // Deletes the present object first, then owns this one.
    void Handle(platform::HGDIOBJ hObject) {
        Destroy();
        m_hObject = hObject;
    }

    // Deletes the object. One that is still selected into a context lives on without an owner.
    void Destroy();
    // Gives the object away: the caller owns it from now on. 0 when there is none.
    [[nodiscard]] platform::HGDIOBJ ReleaseHandle() { return std::exchange(m_hObject, 0); }

private:
    platform::HGDIOBJ m_hObject = 0;
};
