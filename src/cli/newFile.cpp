#include "cli/commands.h"
#include "workbench/logic/newTranslation.h"

namespace cli {

ExitCode newFile(const NewOptions& options) {
    requireMainFile(options.sMainFile);
    const Text sNewFile = newTranslationPath(options.sMainFile, options.sName);
    if (options.copy) {
        createCopiedTranslation(options.sMainFile, sNewFile);
        say(u"The file has been created!", sNewFile);
    } else {
        createEmptyTranslation(sNewFile);
    }
    return kDone;
}

}  // namespace cli
