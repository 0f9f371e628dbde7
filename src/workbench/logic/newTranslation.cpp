#include "workbench/logic/newTranslation.h"

#include "file/FileBytes.h"
#include "file/ufu_files.h"
#include "file/ufu_paths.h"
#include "file/ufu_text.h"
#include "langfile/foldedText.h"
#include "platform/base/casemap.h"
#include "platform/base/paths.h"

#include <filesystem>

namespace {

// Whether both names lead to one file, by whatever links.
bool isSameFile(TextView a, TextView b) {
    std::error_code none;  // what cannot be found is no same file
    return std::filesystem::equivalent(platform::pathToSystem(a), platform::pathToSystem(b), none);
}

}  // namespace

void requireMainFile(TextView sMainFile) {
    if (sMainFile.empty()) throw Refused(u"Please choose the main translation file");
    if (!ufu_FileExist(sMainFile)) throw Refused(u"The main translation file doesn't exist");
}

Text newTranslationPath(TextView sMainFile, TextView sEnteredName) {
    const TextView sName = trimBlanks(sEnteredName);
    if (sName.empty()) throw Refused(u"Please write the name of the new file");
    Text sNewFile =
        ufu_FilePath(sMainFile, true) + ufu_FileNameNoExt(sName) + u'.' + ufu_FileExt(sMainFile);
    if (equalFolded(sNewFile, sMainFile) || isSameFile(sNewFile, sMainFile)) {
        throw Refused(u"Please choose two different files");
    }
    return sNewFile;
}

void createEmptyTranslation(TextView sNewFile) {
    try {
        (void)ufu_StringToTextFile(sNewFile, {}, ufeAnsi, true);
    } catch (const Failure& failure) {
        throw FileFailure(failure, sNewFile);
    }
}

void createCopiedTranslation(TextView sMainFile, TextView sNewFile) {
    const FileBytes before(sNewFile);
    if (!ufu_CopyFile(sMainFile, sNewFile)) {
        before.putBack();
        throw FileFailure(Failure(kOwnError, u"", u"Error writing file"), sNewFile);
    }
}
