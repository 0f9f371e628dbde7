// workbench/logic/settingsRules.h: what the stored settings may say. Texts are as stored.
#pragma once
#include "platform/base/text.h"

constexpr TextView kSettingsApplication = u"Quillmere";
constexpr TextView kSettingsSection = u"Settings";
constexpr TextView kDefaultWidthKey = u"ColDefaultWidth";
constexpr TextView kTransWidthKey = u"ColTransWidth";
constexpr TextView kEmptyTransKey = u"EmptyTrans";

constexpr std::int32_t kDefaultColWidth = 200;  // pixels, where nothing is stored
constexpr std::int32_t kLeastColWidth = 10;

// The width of a column, in pixels.
[[nodiscard]] constexpr std::int32_t columnWidthSetting(std::int32_t lStored) {
    return lStored < kLeastColWidth ? kLeastColWidth : lStored;
}
// Whether keys without a translation are saved.
[[nodiscard]] constexpr bool emptyTransSetting(std::int32_t lStored) { return lStored == 1; }
