// platform/window/settings.h: the settings of a user, texts kept by application, section and key.
//
// They lie in one file for each application in the user's configuration directory. Application,
// section and key may hold any text; two that differ only by case may count as one.
#pragma once
#include "platform/base/text.h"

namespace platform {

// The stored text; sDefault when there is none or the store cannot be read.
[[nodiscard]] Text GetSetting(TextView application, TextView section, TextView key,
                              TextView sDefault = {});
// False when it cannot be written; what was stored before stays then. Lines of the file that are no
// settings go with the first change.
bool SaveSetting(TextView application, TextView section, TextView key, TextView value);

}  // namespace platform
