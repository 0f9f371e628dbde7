#include "file/cStringBuilder2.h"

#include "platform/base/casemap.h"

namespace {

constexpr std::size_t kShortPiece = 1024;
constexpr std::size_t kShortPieceTail = 1024;  // a tail that long is merged by a short piece,
constexpr std::size_t kLongPieceTail = 8192;   // and one that long by a longer piece

Text replaced(TextView s, TextView searched, TextView find, TextView replacement) {
    Text result;
    std::size_t from = 0;
    for (std::size_t at; (at = searched.find(find, from)) != TextView::npos;) {
        result.append(s, from, at - from).append(replacement);
        from = at + find.size();
    }
    return result.append(s, from);
}

}  // namespace

Text cStringBuilder2::ToString() const& {
    Text all;
    all.reserve(Length());
    return all.append(m_sMain).append(m_sTail);
}

Text cStringBuilder2::ToString() && {
    mergeTail();
    return std::move(m_sMain);
}

void cStringBuilder2::TheString(Text s) {
    m_sMain = std::move(s);
    m_sTail.clear();
}

void cStringBuilder2::Append(TextView sThis) {
    const auto full = sThis.size() <= kShortPiece ? kShortPieceTail : kLongPieceTail;
    if (m_sTail.size() >= full) {
        mergeTail();
        m_sMain.append(sThis);
    } else {
        m_sTail.append(sThis);
    }
}

void cStringBuilder2::AppendWithNewLine(TextView sThis) {
    Append(sThis);
    Append(u"\r\n");
}

void cStringBuilder2::ReplaceString(TextView sFind, TextView sReplace, Compare compare) {
    mergeTail();
    if (sFind.empty()) return;
    if (compare == Compare::Exact) {
        m_sMain = replaced(m_sMain, m_sMain, sFind, sReplace);
    } else {  // lower-casing keeps the number of units, so positions agree
        m_sMain =
            replaced(m_sMain, platform::lowerCase(m_sMain), platform::lowerCase(sFind), sReplace);
    }
}

void cStringBuilder2::mergeTail() {
    m_sMain.append(m_sTail);
    m_sTail.clear();
}
