#include "workbench/product.h"

#include "file/ufu_files.h"

Text productVersion() {
    return fromUtf8(std::to_string(QUILLMERE_VERSION_MAJOR) + "." +
                    std::to_string(QUILLMERE_VERSION_MINOR) + "." +
                    std::to_string(QUILLMERE_VERSION_PATCH));
}

Text siteAddress() { return fromUtf8(QUILLMERE_SITE); }

Text helpPage() {
    if (Text address = fromUtf8(QUILLMERE_HELP_PAGE); !address.empty()) return address;
    const Text folder = ufu_UniAppPath();
    for (const TextView place :
         {u"\\..\\share\\quillmere\\help\\index.html", u"\\..\\..\\..\\docs\\help\\index.html"}) {
        Text page = folder + Text(place);
        if (ufu_FileExist(page)) return page;
    }
    return {};
}
