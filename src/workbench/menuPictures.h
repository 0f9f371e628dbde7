// workbench/menuPictures.h: the pictures beside the entries of the menu.
#pragma once
#include "gfx/types.h"
#include "host/PropertyBag.h"

#include <map>

// They come in three sizes, for screens of 96, 144 and 192 dots per inch; the one that fits the
// screen is taken as it is. Each is read when it is first asked for.
class EntryPictures {
public:
    // The side of the cell that the pictures of this screen need, in pixels.
    [[nodiscard]] static int cellSize();
    // Of the entry with that caption, to be laid over that colour; none for an entry without one.
    [[nodiscard]] Picture of(TextView sCaption, Color iBackground);

private:
    std::map<std::pair<Text, Color>, Picture> m_pictures;  // by name
};
