// workbench/logic/newTranslation.h: a file for a new translation, beside the main file.
#pragma once
#include "workbench/logic/job.h"

// Raises Refused "Please choose the main translation file" for an empty name, "The main translation
// file doesn't exist" for one that names no file.
void requireMainFile(TextView sMainFile);

// The new file's path: the main file's directory and extension, the entered name without its own.
// Raises Refused "Please write the name of the new file" for a name of blanks, "Please choose two
// different files" when the path is the main file's, in any case of letters or through a link.
[[nodiscard]] Text newTranslationPath(TextView sMainFile, TextView sEnteredName);

// Both replace a file of that name. They raise FileFailure "Error writing file" when they cannot; a
// copy that cannot be finished raises it, too, and leaves the file that was there.
void createEmptyTranslation(TextView sNewFile);
void createCopiedTranslation(TextView sMainFile, TextView sNewFile);
