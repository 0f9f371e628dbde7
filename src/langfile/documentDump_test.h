// langfile/documentDump_test.h: a document in one line, for tables of tests.
#pragma once
#include "langfile/clsFileIniEx.h"

// "plain[; note] sec[Main]{key[A]=[1] plain[]}"
inline std::string dump(const clsFileIniEx& document) {
    std::string all;
    bool inSection = false;
    document.forEachRow([&](const clsFileIniEx_Row& row) {
        if (row.cRows) {
            all += std::string(inSection     ? "} "
                               : all.empty() ? ""
                                             : " ") +
                   "sec" + toUtf8(row.sLine) + "{";
            inSection = true;
            return;
        }
        if (!all.empty() && all.back() != '{') all += ' ';
        if (row.sKey.empty()) {
            all += "plain[" + toUtf8(row.sLine) + "]";
        } else {
            all += "key[" + toUtf8(row.sKey) + "]=[" + toUtf8(row.sValue) + "]";
        }
    });
    return inSection ? all + "}" : all;
}
