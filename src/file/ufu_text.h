// file/ufu_text.h: text files, read and written whole.
//
// The first byte of a file alone chooses its encoding. Line ends are not touched. A file is
// replaced in place, so a failure in mid-write leaves what was written so far.
#pragma once
#include "file/encodings.h"
#include "platform/base/text.h"

// ufeUnicode for the first byte FF, ufeUTF8 for EF; ufeAnsi for any other, for an empty file and
// for one that cannot be opened.
[[nodiscard]] ufeEncoding ufu_GetFileEncoding(TextView sFile);

// Bytes; 0 when the file cannot be opened.
[[nodiscard]] std::int64_t ufu_FileLen(TextView sFile);

// Reads a file, its mark aside, into sRetFile. On failure sRetFile is empty and the result false,
// or, with bRaiseError, it raises kOwnError, "ufu_TextFileToString", "Error reading file".
[[nodiscard]] bool ufu_TextFileToString(TextView sNomeFile, Text& sRetFile,
                                        bool bRaiseError = false);

// Writes the mark of the encoding and the text. False when the file could not be opened or the text
// not be written whole, and for an unknown encoding, for which no file is touched; with bRaiseError
// it then raises kOwnError, "ufu_StringToTextFile", "Error writing file".
[[nodiscard]] bool ufu_StringToTextFile(TextView vsPathFile, TextView vsText,
                                        std::int32_t iEncoding = ufeAnsi, bool bRaiseError = false);
