// platform/window/resources.h: the pictures that are inside of the program.
//
// They are named by their path below assets/icons, without ".png".
#pragma once
#include "platform/window/surface.h"

namespace platform {

// A picture as a bitmap to be laid over something of about that colour with the colour of its top
// left pixel left out: pixels that cover only in part are blended with the background, those that
// don't cover at all have one colour that no other has. The top left pixel is one of them in every
// picture of ours. None when there is no such picture.
[[nodiscard]] std::shared_ptr<PictureObject> loadPicture(TextView name, COLORREF background);

// The icon of the program's windows, from NAME-16, NAME-24 and so on up to NAME-256; each place in
// the desktop takes the size that fits it. False without any such picture.
bool setProgramIcon(TextView name);

}  // namespace platform
