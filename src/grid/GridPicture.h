// grid/GridPicture.h: what a cell of the grid shows beside its text.
#pragma once
#include "platform/window/surface.h"

#include <memory>

// A picture as cells hold it; any number of cells share one.
class GridPicture {
public:
    explicit GridPicture(std::shared_ptr<const platform::PictureObject> picture)
        : m_picture(std::move(picture)) {}

    [[nodiscard]] const platform::PictureObject* picture() const { return m_picture.get(); }

private:
    std::shared_ptr<const platform::PictureObject> m_picture;
};
