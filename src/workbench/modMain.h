// workbench/modMain.h: what the windows of the workbench share.
#pragma once
#include "host/Form.h"
#include "workbench/logic/searchRows.h"

class frmFindReplace;

// The last texts that were searched, trimmed.
extern Text g_sFindPhrase;       // in the Default column
extern Text g_sFindTranslation;  // in the Translation column

// A setting of the user, kept as text: the number at its start. lDefault when there is none.
[[nodiscard]] std::int32_t GetIntSetting(TextView sKey, std::int32_t lDefault);
void SaveIntSetting(TextView sKey, std::int32_t lValue);  // one that cannot be written is lost

// A message box without an owner, above all other windows. The button's id.
int UniMsgBox(TextView sText, std::uint32_t iStyle, TextView sTitle);
void ShowFindError(TextView sText);  // a box with a stop sign

// What a failure says, for boxes.
[[nodiscard]] Text messageOf(const std::exception_ptr& failure);

// Has the person edit a translation below its default text. The text, with bCancel false; empty
// and bCancel true when the dialog was cancelled.
[[nodiscard]] Text InputTranslation(HWND owner, TextView sDefaultText, TextView sTranslatedText,
                                    bool& bCancel);
// Asks for a line of text; title: empty for the program's name.
[[nodiscard]] Text UniInputBox(HWND owner, TextView Prompt, TextView Title, TextView Default,
                               bool& bCancel);
// Shows the search dialog in front of the owner, or changes what the one that is open searches.
void ShowFindDialog(frmFindReplace& frmFind, HWND owner, FindMode iMode, TextView sLast);

// Gives the form and its controls, but for its drawn labels, the wide font.
void ApplyUnicodeFont(Form& frm);

constexpr TextView kUnicodeFont = u"Arial Unicode MS";
