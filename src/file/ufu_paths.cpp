#include "file/ufu_paths.h"

#include "file/cStringBuilder2.h"
#include "file/pvWindowsVersion.h"
#include "platform/base/casemap.h"
#include "platform/base/failure.h"

#include <algorithm>

namespace {

constexpr TextView kLongPathPrefix = u"\\\\?\\";

void refuse(char16_t foreignMark, TextView s, TextView source, TextView message) {
    if (s.find(foreignMark) != TextView::npos) {
        throw Failure(kOwnError, Text(source), Text(message));
    }
}

void refuseWebPath(TextView s, TextView source) { refuse(u'/', s, source, u"Not a local path"); }

TextView withoutTrailing(char16_t mark, TextView s) {
    return s.substr(0, s.find_last_not_of(mark) + 1);  // npos + 1 is 0
}

Text withOneTrailing(char16_t mark, TextView s) {
    Text result(withoutTrailing(mark, s));
    if (!result.empty()) result += mark;
    return result;
}

// The position behind the last backslash, 0 without one.
std::size_t fileNameStart(TextView s) { return s.rfind(u'\\') + 1; }

bool isWebLink(TextView lowered) {
    constexpr TextView kSchemes[] = {u"http://",   u"https://",    u"ftp://",
                                     u"gopher://", u"mailto:",     u"news:",
                                     u"telnet:",   u"javascript:", u"project://"};
    return std::any_of(std::begin(kSchemes), std::end(kSchemes),
                       [&](TextView scheme) { return lowered.starts_with(scheme); });
}

}  // namespace

Text ufu_FilePath(TextView sPathFileName, bool bFinalBackSlash) {
    refuseWebPath(sPathFileName, u"ufu_FilePath");
    TextView directory = sPathFileName.substr(0, fileNameStart(sPathFileName));
    if (directory == u"\\") directory = u"\\.";  // the root keeps its name (see SearchInPath)
    return bFinalBackSlash ? ufu_OneBackSlash(directory) : ufu_NoBackSlash(directory);
}

Text ufu_FileName(TextView sPathFileName) {
    Text local = ufu_LocalizePath(sPathFileName, false);
    local.erase(0, fileNameStart(local));
    return local;
}

Text ufu_FileExt(TextView sPathFileName) {
    // Taking the name first is the same as comparing the places of the last dot and backslash.
    const Text name = ufu_FileName(sPathFileName);
    const std::size_t dot = name.rfind(u'.');
    return dot == Text::npos ? Text() : name.substr(dot + 1);
}

Text ufu_FileNameNoExt(TextView sPathFileName) {
    Text name = ufu_FileName(sPathFileName);
    const std::size_t dot = name.rfind(u'.');
    if (dot != Text::npos) name.resize(dot);
    return name;
}

Text ufu_OneBackSlash(TextView s) {
    refuseWebPath(s, u"ufu_OneBackSlash");
    return withOneTrailing(u'\\', s);
}

Text ufu_NoBackSlash(TextView s) {
    refuseWebPath(s, u"ufu_NoBackSlash");
    return Text(withoutTrailing(u'\\', s));
}

Text ufu_OneSlashWeb(TextView s) {
    refuse(u'\\', s, u"ufu_OneSlashWeb", u"Not a web path");
    return withOneTrailing(u'/', s);
}

Text ufu_NoSlashWeb(TextView s) {
    refuse(u'\\', s, u"ufu_NoSlashWeb", u"Not a web path");
    return Text(withoutTrailing(u'/', s));
}

bool ufu_IsLocalPath(TextView s) { return s.find(u'\\') != TextView::npos; }

bool ufu_IsWebPath(TextView s) { return s.find(u'/') != TextView::npos; }

bool ufu_IsUNCPath(TextView s) { return s.starts_with(u"\\\\"); }

Text ufu_LocalizePath(TextView s, bool bRaiseError) {
    // No scheme is longer; lower-casing keeps the number of units.
    const Text start = platform::lowerCase(s.substr(0, 16));
    if (start.starts_with(u"file://")) {
        TextView mark = u":///";
        std::size_t at = s.find(mark);
        if (at == TextView::npos) {
            mark = u"://";
            at = s.find(mark);
        }
        s.remove_prefix(at + mark.size());
    } else if (bRaiseError && isWebLink(start)) {
        throw Failure(kOwnError, u"ufu_LocalizePath", u"Cannot Localize Link!");
    }
    Text local(s);
    std::replace(local.begin(), local.end(), u'/', u'\\');
    std::replace(local.begin(), local.end(), u'|', u':');
    cStringBuilder2 unescaped;
    unescaped.TheString(std::move(local));
    unescaped.ReplaceString(u"%20", u" ", cStringBuilder2::Compare::Exact);
    unescaped.ReplaceString(u"&amp;", u"&", cStringBuilder2::Compare::Exact);
    return std::move(unescaped).ToString();
}

Text ufu_ExtendedPath(TextView s) {
    // A path that has the prefix already begins with two backslashes, too.
    if (pvWindowsVersion() < 7 || ufu_IsUNCPath(s)) return Text(s);
    return Text(kLongPathPrefix).append(s);
}
