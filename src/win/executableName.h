// win/executableName.h: the program's name as failures show it.
#pragma once
#include "platform/base/text.h"

[[nodiscard]] Text executableName();  // of the program's file, without directory and extension
