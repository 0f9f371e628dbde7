// file/clsUniFile.h: one open file with a read and a write cache of 16 KB each.
//
// An object holds at most one open file, is made for one job and dropped; dropping it saves what is
// pending. Booleans report success. The position that callers see is the logical one: the
// platform's position, less what stands unread in the read cache, plus what is pending in the write
// cache. Only opening raises, and only when a file is open already.
//
// The st_ members forward to the ufu_ functions of the same stem (ufu_text.h, ufu_paths.h,
// ufu_files.h), so that whoever has the class has the whole file layer.
#pragma once
#include "file/encodings.h"
#include "file/ufu_files.h"
#include "file/ufu_paths.h"
#include "file/ufu_text.h"
#include "platform/base/text.h"

#include <span>

enum FilePosFrom : std::int32_t { fpfStart = 0, fpfCurrent = 1, fpfEnd = 2 };

class clsUniFile {
public:
    clsUniFile() = default;
    ~clsUniFile() { CloseFile(); }
    clsUniFile(const clsUniFile&) = delete;
    clsUniFile& operator=(const clsUniFile&) = delete;

    [[nodiscard]] bool UseCache() const { return m_bUseCache; }
    // Switching off in mid-file writes what is pending and moves the real position to the logical
    // one. An equal value does nothing.
    void UseCache(bool b);

    [[nodiscard]] std::int32_t OpenedFileHandle() const { return m_hFile; }  // 0: no file is open
    [[nodiscard]] Text OpenedFileName() const { return IsFileOpen() ? m_sFileName : Text(); }
    [[nodiscard]] bool IsFileOpen() const { return m_hFile != 0; }

    // All open forms raise kOwnError, "clsUniFile.OpenFile", "A file is already open!" when one is;
    // that one then stays open. After a failed open the object is closed and can open another file.
    // The values are those of platform::CreateFileW.
    [[nodiscard]] bool OpenFileGeneric(TextView sPath, std::uint32_t iAccess,
                                       std::uint32_t iCreation, std::uint32_t iShare,
                                       std::uint32_t iFlags);
    [[nodiscard]] bool OpenFileRead(TextView sPath, bool bShared = false);
    [[nodiscard]] bool OpenFileWrite(TextView sPath, bool bShared = false);  // empties the file
    // For reading and writing at the end of an existing file, or for writing a new one. A caller
    // who mixes reads and writes places the position between them.
    [[nodiscard]] bool OpenFileAppend(TextView sPath);
    void CloseFile();  // whether pending data could be saved, only Flush tells

    bool SetEndOfFileHere();  // at the real position
    bool Flush();             // waits until the data is on the disk

    // Bytes in the file and pending ones. 0 without a file; -1 when the platform does not tell.
    [[nodiscard]] std::int64_t LOF() const;
    // iFrom as in FilePosFrom; fpfCurrent counts from the real position. Without a file nothing
    // happens; for a place before the start the real position stays, and what was read ahead of the
    // caller is given up all the same.
    void SetFilePos(std::int64_t cPos, std::int32_t iFrom = fpfStart);
    [[nodiscard]] std::int64_t RealFilePos() const;  // -1 without a file
    [[nodiscard]] std::int64_t GetFilePos() const;   // -1 without a file
    [[nodiscard]] bool Eof() const;                  // no byte is left to read, or no file is open

    // Typed values are little-endian, without padding. A read that fails can have changed a part of
    // its output. Arrays and counts of nothing give false and touch nothing.
    bool ReadByte(std::uint8_t& b) {
        if (m_lReadPos > m_lReadEnd || m_lWritePos >= 0) return ReadAny(&b, 1);
        b = m_abyReadCache[m_lReadPos++];
        return true;
    }
    bool WriteByte(std::uint8_t b);
    bool ReadAny(void* lPtrAny, std::int32_t lToRead);
    bool ReadBytes(Bytes& bytes) { return readBlock(bytes.data(), bytes.size()); }
    bool WriteBytes(const Bytes& bytes) { return writeBlock(bytes.data(), bytes.size()); }
    bool ReadLong(std::int32_t& lOut);
    bool ReadBool(bool& b);  // one byte; true only for the byte 1
    bool ReadDouble(double& dOut);
    bool ReadInt(std::int16_t& iOut);
    // A string behind a 32-bit count of its bytes, in the encoding iFileEnc. The empty string gives
    // false both ways, although its count is written; an unknown encoding writes nothing, and reads
    // the count only.
    bool WriteNumCharsAndString(TextView s, std::int32_t iFileEnc);
    bool ReadNumCharsAndString(Text& sRet, std::int32_t iFileEnc);
    bool WriteAny(const void* lPtrAny, std::int32_t lToWrite);
    bool WriteLong(std::int32_t lIn);
    bool WriteBool(bool b);
    bool WriteDouble(double d);
    bool WriteInt(std::int16_t iIn);

    // Lines. LF ends a line, a CR directly before it goes with it, any other CR is text. Reading
    // gives true when a line ending was reached, and false at the end of the file or on a failed
    // read, with what was read before it in sRet: look at sRet before dropping the last line.
    // Writing adds CR LF. An unknown encoding acts as ufeAnsi.
    bool ReadAnsiLine(Text& sRet);  // each byte alone, so double-byte characters are not joined
    bool WriteAnsiLine(TextView s);
    bool ReadUTF8Line(Text& sRet);
    bool WriteUTF8Line(TextView s);
    bool ReadLine(Text& sRet, std::int32_t iFileEnc);
    bool WriteLine(TextView s, std::int32_t iFileEnc);
    bool ReadUnicodeLine(Text& sRet);
    bool WriteUnicodeLine(TextView s);
    // The mark. Any other encoding than the three writes nothing and gives false; ufeAnsi has none.
    bool WriteBOM(std::int32_t iFileEnc);
    // Tells the encoding by the next byte alone, and consumes as many bytes as its mark has. For
    // ufeAnsi the position goes to the start of the file, or stays at its end.
    [[nodiscard]] ufeEncoding ReadBOM();

    // Text files (ufu_text.h).
    [[nodiscard]] static ufeEncoding st_GetFileEncoding(TextView sFile) {
        return ufu_GetFileEncoding(sFile);
    }
    [[nodiscard]] static std::int64_t st_FileLen(TextView sFile) { return ufu_FileLen(sFile); }
    [[nodiscard]] static bool st_TextFileToString(TextView sNomeFile, Text& sRetFile,
                                                  bool bRaiseError = false) {
        return ufu_TextFileToString(sNomeFile, sRetFile, bRaiseError);
    }
    [[nodiscard]] static bool st_StringToTextFile(TextView vsPathFile, TextView vsText,
                                                  std::int32_t iEncoding = ufeAnsi,
                                                  bool bRaiseError = false) {
        return ufu_StringToTextFile(vsPathFile, vsText, iEncoding, bRaiseError);
    }

    // Paths (ufu_paths.h).
    [[nodiscard]] static Text st_FilePath(TextView sPathFileName, bool bFinalBackSlash) {
        return ufu_FilePath(sPathFileName, bFinalBackSlash);
    }
    [[nodiscard]] static Text st_FileName(TextView sPathFileName) {
        return ufu_FileName(sPathFileName);
    }
    [[nodiscard]] static Text st_FileExt(TextView sPathFileName) {
        return ufu_FileExt(sPathFileName);
    }
    [[nodiscard]] static Text st_FileNameNoExt(TextView sPathFileName) {
        return ufu_FileNameNoExt(sPathFileName);
    }
    [[nodiscard]] static Text st_OneBackSlash(TextView s) { return ufu_OneBackSlash(s); }
    [[nodiscard]] static Text st_NoBackSlash(TextView s) { return ufu_NoBackSlash(s); }
    [[nodiscard]] static Text st_OneSlashWeb(TextView s) { return ufu_OneSlashWeb(s); }
    [[nodiscard]] static Text st_NoSlashWeb(TextView s) { return ufu_NoSlashWeb(s); }
    [[nodiscard]] static bool st_IsLocalPath(TextView s) { return ufu_IsLocalPath(s); }
    [[nodiscard]] static bool st_IsWebPath(TextView s) { return ufu_IsWebPath(s); }

    // Files and directories (ufu_files.h).
    static bool st_MkDir(TextView sPath) { return ufu_MkDir(sPath); }
    static bool st_RmDir(TextView sPath) { return ufu_RmDir(sPath); }
    static bool st_RmDirRic(TextView sPath) { return ufu_RmDirRic(sPath); }
    static bool st_MakePath(TextView sAbsPath) { return ufu_MakePath(sAbsPath); }
    static bool st_RmFile(TextView sPath) { return ufu_RmFile(sPath); }
    static bool st_RmFiles(TextView sPathPattern) { return ufu_RmFiles(sPathPattern); }
    static bool st_CopyFile(TextView sFrom, TextView sTo, bool bFailIfExists = false) {
        return ufu_CopyFile(sFrom, sTo, bFailIfExists);
    }
    static bool st_MoveFile(TextView sFrom, TextView sTo, std::uint32_t iFlags = 0) {
        return ufu_MoveFile(sFrom, sTo, iFlags);
    }
    static bool st_CopyFolderContent(TextView sSourcePath, TextView sDestPath) {
        return ufu_CopyFolderContent(sSourcePath, sDestPath);
    }
    static bool st_MoveFolderContent(TextView sSourcePath, TextView sDestPath) {
        return ufu_MoveFolderContent(sSourcePath, sDestPath);
    }
    [[nodiscard]] static bool st_FileExist(TextView sFileName) { return ufu_FileExist(sFileName); }
    [[nodiscard]] static bool st_DirExist(TextView sPath) { return ufu_DirExist(sPath); }
    [[nodiscard]] static std::uint32_t st_GetFileAttr(TextView sPath) {
        return ufu_GetFileAttr(sPath);
    }
    static bool st_SetFileAttr(TextView sPath, std::uint32_t iAttrs) {
        return ufu_SetFileAttr(sPath, iAttrs);
    }
    [[nodiscard]] static bool st_FileHasAttribute(TextView sPath, std::uint32_t iAttr) {
        return ufu_FileHasAttribute(sPath, iAttr);
    }
    static void st_GetFileDate(TextView sPathFileName, std::int32_t iDateType, FileDate& date) {
        ufu_GetFileDate(sPathFileName, iDateType, date);
    }
    [[nodiscard]] static Text st_GetCurDir() { return ufu_GetCurDir(); }
    [[nodiscard]] static Text st_GetTempPath() { return ufu_GetTempPath(); }
    static bool st_SetCurDir(TextView sPath) { return ufu_SetCurDir(sPath); }
    [[nodiscard]] static Text st_UniAppPath() { return ufu_UniAppPath(); }
    [[nodiscard]] static Text st_UniCommandLine() { return ufu_UniCommandLine(); }

    // Blocks of any size, as ReadAny and WriteAny. A count of 0 gives false.
    bool readBlock(void* to, std::size_t count);
    bool writeBlock(const void* from, std::size_t count);

private:
    static constexpr std::int32_t kCacheSize = 16384;

    void pvClearReadCache();
    void pvClearWriteCache() { m_lWritePos = -1; }
    bool pvFlushWriteCache();
    bool pvFillReadCache();
    bool pvRawRead(void* to, std::int32_t count);
    bool pvRawWrite(const void* from, std::int32_t count);

    [[nodiscard]] std::int32_t unread() const { return m_lReadEnd - m_lReadPos + 1; }
    [[nodiscard]] std::int32_t pending() const { return m_lWritePos + 1; }
    void takeCached(void* to, std::int32_t count);
    void putCached(const void* from, std::int32_t count);
    // Consumes what the read cache holds of the current line, its LF included; empty when that is
    // nothing, or writes are pending. Valid until the next call on the object.
    std::span<const std::uint8_t> cachedLinePart();

    std::int32_t m_hFile = 0;  // 0 when no file is open
    Text m_sFileName;          // as given to the last successful open
    bool m_bUseCache = true;
    std::uint8_t m_abyReadCache[kCacheSize];  // not cleared: only what the indices cover is read
    std::int32_t m_lReadPos = 0;              // the next unread byte
    std::int32_t m_lReadEnd = -1;             // the last valid one; empty when before m_lReadPos
    std::uint8_t m_abyWriteCache[kCacheSize];
    std::int32_t m_lWritePos = -1;  // the last pending byte
};
